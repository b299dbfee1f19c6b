#include "DataTab/FilesSection.h"

#include "Controls/Picker.h"
#include "Controls/Style.h"
#include "Controls/SymbolLabel.h"
#include "Controls/Wording.h"
#include "DataTab/FileRow.h"
#include "Model/DeckLoading.h"

#include <QLabel>
#include <QPushButton>
#include <algorithm>

namespace quorvel {
namespace {

constexpr std::size_t namedPictures = 4;
constexpr qsizetype longestName = 80;
constexpr int longestPiece = 16;  // of a name on one line, where the column is narrowest

QString middleCut(const QString& name) {
    if (name.size() <= longestName) return name;
    return name.left(longestName / 2) + u'…' + name.right(longestName / 2);
}

}  // namespace

FilesSection::FilesSection(GroupedForm& form, AppModel& model)
    : model_(model),
      section_(form.addSection(shown("Files"))),
      spreadsheet_(new FileRow),
      watching_(new SymbolLabel(QStringLiteral("eye"), 16, &Style::good)),
      sheet_(new Picker(shown("Sheet"))),
      artFolder_(new FileRow),
      iconFolder_(new FileRow),
      missingArt_(new QLabel) {
    // On the right, as wide as those of the columns below.
    sheet_->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    missingArt_->setTextFormat(Qt::PlainText);
    missingArt_->setWordWrap(true);
    Style::makeWarning(missingArt_);
    watching_->setAccessibleName(shown("Watching for changes"));
    watching_->setToolTip(shown("Save the spreadsheet and the cards update by themselves"));
    spreadsheet_->addSign(watching_);
    const auto onClick = [&form](QPushButton* button, auto action) {
        QObject::connect(button, &QPushButton::clicked, &form, action);
        return button;
    };
    reload_ =
        onClick(spreadsheet_->addButton(shown("Reload"), shown("Reload")), [&model] { model.reloadSpreadsheet(); });
    onClick(spreadsheet_->addButton(shown("Choose…"), shown("Choose Spreadsheet…")),
            [&model] { model.chooseSpreadsheet(); });
    onClick(artFolder_->addButton(shown("Choose…"), shown("Choose Art Folder…")),
            [&model] { model.chooseFolder(AppModel::FolderKind::art); });
    removeIcons_ = onClick(iconFolder_->addButton(shown("Remove"), shown("Remove Icons Folder")),
                           [&model] { model.clearIconFolder(); });
    onClick(iconFolder_->addButton(shown("Choose…"), shown("Choose Icons Folder…")),
            [&model] { model.chooseFolder(AppModel::FolderKind::icons); });
    QObject::connect(sheet_, &QComboBox::activated, &form, [&model](int index) { model.chooseSheet(index); });

    section_.addRow(shown("Spreadsheet"), spreadsheet_);
    section_.addRow(shown("Sheet"), sheet_);
    section_.addRow(shown("Art folder"), artFolder_);
    section_.addRow(shown("Icons folder"), iconFolder_);
    section_.addRow(missingArt_);
}

void FilesSection::refresh() {
    refreshSpreadsheet();
    refreshSheets();
    refreshFolders();
    refreshMissingArt();
}

void FilesSection::refreshSpreadsheet() {
    const DeckProject* project = model_.currentProject();
    const std::optional<std::string>& error = model_.state().open._loadError;
    const bool hasSource = project && project->source;
    const bool isLost = hasSource && error == DeckLoading::notFoundMessage(project->source->name);
    spreadsheet_->setName(hasSource ? text(project->source->name) : QString(),
                          isLost ? FileRow::Look::warning : FileRow::Look::normal,
                          hasSource && error ? text(*error) : QString());
    watching_->setVisible(model_.isWatching());
    reload_->setEnabled(hasSource);
}

void FilesSection::refreshSheets() {
    const std::vector<std::string>& names = model_.state().open._sheetNames;
    QStringList items;
    for (const std::string& name : names) items += text(name);
    QStringList old;
    for (int index = 0; index < sheet_->count(); ++index) old += sheet_->itemText(index);
    if (items != old) {
        sheet_->clear();
        sheet_->addItems(items);
    }
    if (const DeckProject* project = model_.currentProject())
        sheet_->show(project->sheetIndex < sheet_->count() ? int(project->sheetIndex) : -1);
    section_.setRowVisible(sheet_, names.size() >= 2);
}

void FilesSection::refreshFolders() {
    const DeckProject* project = model_.currentProject();
    if (project && project->artFolder)
        artFolder_->setName(text(project->artFolder->name), FileRow::Look::normal);
    else if (project && project->source)
        artFolder_->setSentence(shown("The spreadsheet’s folder (needs permission)"));
    else
        artFolder_->setName({}, FileRow::Look::normal);
    const bool hasIcons = project && project->iconFolder;
    if (hasIcons)
        iconFolder_->setName(text(project->iconFolder->name), FileRow::Look::normal);
    else
        iconFolder_->setSentence(shown("Built-in icons only"));
    removeIcons_->setVisible(hasIcons);
}

void FilesSection::refreshMissingArt() {
    const std::vector<std::string>& missing = model_.state().open._missingArt;
    QStringList names;
    for (std::size_t i = 0; i < std::min(missing.size(), namedPictures); ++i) names += middleCut(text(missing[i]));
    const QString sentence = QString::number(missing.size()) + shown(" pictures not found: ") + names.join(u", ");
    // Without the places for breaks.
    missingArt_->setAccessibleName(sentence);
    missingArt_->setText(breakable(sentence, longestPiece));
    section_.setRowVisible(missingArt_, !missing.empty());
}

}  // namespace quorvel
