#pragma once

#include <QFile>
#include <QString>
#include <filesystem>
#include <string>

/// Between the kit's texts, UTF-8, and Qt's.
namespace quorvel {

inline QString toQString(const std::string& text) {
    return QString::fromStdString(text);
}

inline QString toQString(const std::filesystem::path& path) {
    return QFile::decodeName(QByteArray::fromStdString(path.string()));
}

inline std::filesystem::path toPath(const QString& path) {
    return QFile::encodeName(path).toStdString();
}

}  // namespace quorvel
