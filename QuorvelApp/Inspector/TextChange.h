#pragma once

#include <QString>

namespace quorvel {

/// The one stretch in which two texts differ.
struct TextChange {
    qsizetype start = 0;
    qsizetype removed = 0;
    QString inserted;

    /// From one text to another. It begins and ends between whole characters of Unicode.
    static TextChange between(const QString& before, const QString& after);

    qsizetype end() const { return start + inserted.size(); }
};

}  // namespace quorvel
