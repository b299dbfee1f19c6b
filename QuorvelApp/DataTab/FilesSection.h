#pragma once

#include "Controls/GroupedForm.h"
#include "Model/AppModel.h"

class QLabel;
class QPushButton;

namespace quorvel {

class FileRow;
class Picker;
class SymbolLabel;

/// The section "Files": where the deck's spreadsheet, pictures and icons are.
class FilesSection {
public:
    /// Both outlive it; the form owns the widgets.
    FilesSection(GroupedForm& form, AppModel& model);

    /// Shows what the model has now.
    void refresh();

private:
    void refreshSpreadsheet();
    void refreshSheets();
    void refreshFolders();
    void refreshMissingArt();

    AppModel& model_;
    GroupedForm::Section section_;
    FileRow* spreadsheet_;
    SymbolLabel* watching_;
    QPushButton* reload_;
    Picker* sheet_;
    FileRow* artFolder_;
    FileRow* iconFolder_;
    QPushButton* removeIcons_;
    QLabel* missingArt_;
};

}  // namespace quorvel
