#pragma once

#include "Controls/GroupedForm.h"
#include "Model/AppModel.h"

#include <map>
#include <memory>

namespace quorvel {

class ColumnListModel;
class Picker;

/// The section "Columns": which column feeds each field.
class ColumnsSection {
public:
    /// Both outlive it; the form owns the widgets.
    ColumnsSection(GroupedForm& form, AppModel& model);

    /// Shows what the model has now.
    void refresh();

private:
    AppModel& model_;
    ColumnListModel* columns_;
    std::map<Field, Picker*> pickers_;
    std::weak_ptr<const DataTable> table_;  // whose headers the list has
};

}  // namespace quorvel
