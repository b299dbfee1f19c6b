#include "QtDesktop/FilePanels.h"

#include "QtPlatform/QtText.h"

#include <QFileDialog>
#include <QLabel>
#include <QLayout>
#include <QMessageBox>
#include <QPushButton>
#include <algorithm>

namespace quorvel::FilePanels {

namespace {

/// A dialog that Qt draws itself has a layout from the start; the system's own is behind an empty one.
bool isDrawnByQt(const QFileDialog& dialog) {
    return dialog.layout() != nullptr;
}

void setTitle(QFileDialog& dialog, const std::string& title, const std::string& message) {
    dialog.setWindowTitle(toQString(title));
    if (message.empty()) return;
    if (isDrawnByQt(dialog)) {
        auto* label = new QLabel(toQString(message), &dialog);
        label->setObjectName("message");
        label->setWordWrap(true);
        label->setTextFormat(Qt::PlainText);
        label->setMargin(dialog.layout()->contentsMargins().left());
        dialog.layout()->setMenuBar(label);
    } else {
        // The one place in it that is ours to write on.
        dialog.setWindowTitle(toQString(title + " – " + message));
    }
}

std::optional<Path> run(QFileDialog& dialog) {
    if (dialog.exec() != QDialog::Accepted) return std::nullopt;
    const QStringList files = dialog.selectedFiles();
    if (files.isEmpty() || files.front().isEmpty()) return std::nullopt;
    return toPath(files.front());
}

bool mayReplace(const Path& path, QWidget* window) {
    QMessageBox question(QMessageBox::Warning, {}, {}, QMessageBox::NoButton, window);
    question.setWindowTitle(toQString(std::string(appName)));
    question.setTextFormat(Qt::PlainText);
    question.setText(toQString("“" + path.filename().string() + "” already exists. Do you want to replace it?"));
    question.setInformativeText("Replacing it overwrites its current contents.");
    auto* replace = question.addButton("Replace", QMessageBox::DestructiveRole);
    question.setDefaultButton(question.addButton(QMessageBox::Cancel));
    question.exec();
    return question.clickedButton() == replace;
}

/// ASCII, as extensions are.
std::string inLowerCase(std::string text) {
    std::ranges::transform(text, text.begin(), [](char each) { return 'A' <= each && each <= 'Z' ? each + 32 : each; });
    return text;
}

std::string inUpperCase(std::string text) {
    std::ranges::transform(text, text.begin(), [](char each) { return 'a' <= each && each <= 'z' ? each - 32 : each; });
    return text;
}

}  // namespace

QString filter(const FileType& type) {
    std::string patterns;
    for (const std::string& extension : type.extensions)
        patterns += " *." + inLowerCase(extension) + " *." + inUpperCase(extension);
    return toQString(type.name + " (" + (patterns.empty() ? "*" : patterns.substr(1)) + ")");
}

Path withExtension(const Path& path, const FileType& type) {
    const std::string name = inLowerCase(path.filename().string());
    const bool hasOne = std::ranges::any_of(type.extensions, [&](const std::string& extension) {
        const std::string ending = "." + inLowerCase(extension);
        return name.size() > ending.size() && name.ends_with(ending);
    });
    if (hasOne || type.extensions.empty()) return path;
    return Path(path.string() + "." + type.extensions.front());
}

std::optional<Path> chooseFile(const OpenPanel& panel, const Path& folder, QWidget* window) {
    QFileDialog dialog(window);
    setTitle(dialog, panel.title, panel.message);
    dialog.setAcceptMode(QFileDialog::AcceptOpen);
    dialog.setFileMode(QFileDialog::ExistingFile);
    dialog.setDirectory(toQString(folder));
    QStringList filters;
    FileType every;
    for (const FileType& type : panel.types) {
        filters.append(filter(type));
        every.extensions.insert(every.extensions.end(), type.extensions.begin(), type.extensions.end());
    }
    // What is asked for is any of them; one alone is for a crowded folder.
    every.name = "All of these";
    if (filters.size() > 1) filters.prepend(filter(every));
    if (!filters.isEmpty()) dialog.setNameFilters(filters);
    return run(dialog);
}

std::optional<Path> chooseFolder(const FolderPanel& panel, const Path& folder, QWidget* window) {
    QFileDialog dialog(window);
    setTitle(dialog, panel.title, panel.message);
    dialog.setAcceptMode(QFileDialog::AcceptOpen);
    dialog.setFileMode(QFileDialog::Directory);
    dialog.setOption(QFileDialog::ShowDirsOnly);
    dialog.setDirectory(toQString(panel.start.value_or(folder)));
    if (!panel.prompt.empty()) dialog.setLabelText(QFileDialog::Accept, toQString(panel.prompt));
    return run(dialog);
}

std::optional<Path> chooseSaveFile(const SavePanel& panel, const Path& folder, QWidget* window) {
    Path proposed = folder / panel.fileName;
    for (;;) {
        QFileDialog dialog(window);
        setTitle(dialog, panel.title, {});
        dialog.setAcceptMode(QFileDialog::AcceptSave);
        dialog.setFileMode(QFileDialog::AnyFile);
        dialog.setNameFilter(filter(panel.type));
        dialog.setDirectory(toQString(proposed.parent_path()));
        dialog.selectFile(toQString(proposed.filename()));
        const auto typed = run(dialog);
        if (!typed) return std::nullopt;
        const Path path = withExtension(*typed, panel.type);
        // The dialog has asked about the name that was typed, not about the one it has become.
        std::error_code ignored;
        if (path == *typed || !std::filesystem::exists(path, ignored) || mayReplace(path, window)) return path;
        proposed = path;
    }
}

}  // namespace quorvel::FilePanels
