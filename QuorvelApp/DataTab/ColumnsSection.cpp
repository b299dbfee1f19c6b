#include "DataTab/ColumnsSection.h"

#include "Controls/Picker.h"
#include "Controls/Wording.h"
#include "DataTab/CellText.h"
#include "DataTab/ColumnListModel.h"

#include <array>

namespace quorvel {
namespace {

constexpr std::array<std::pair<Field, const char*>, 7> rows{{
    {Field::title, "Title"},
    {Field::text, "Text"},
    {Field::cost, "Cost"},
    {Field::type, "Type"},
    {Field::art, "Art"},
    {Field::icons, "Icons"},
    {Field::quantity, "Quantity"},
}};

}  // namespace

ColumnsSection::ColumnsSection(GroupedForm& form, AppModel& model)
    : model_(model), columns_(new ColumnListModel(&form)) {
    GroupedForm::Section section = form.addSection(shown("Columns"));
    for (const auto& [field, label] : rows) {
        auto* picker = new Picker(shown(label));
        picker->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
        picker->setModel(columns_);
        pickers_[field] = picker;
        QObject::connect(picker, &QComboBox::activated, &form,
                         [this, field = field](int index) { model_.setFieldColumn(field, columns_->columnAt(index)); });
        section.addRow(shown(label), picker);
    }
    section.setFooter(
        shown("Which column feeds each field. Matched by name when the spreadsheet is read; any column can also be "
              "used directly in a layer as `{{Column Name}}`."));
}

void ColumnsSection::refresh() {
    const std::shared_ptr<const DataTable>& table = model_.state().open._table;
    const bool isSameTable = !table_.owner_before(table) && !table.owner_before(table_);
    if (!isSameTable) {
        table_ = table;
        columns_->setHeaders(table ? table->headers : std::vector<std::string>());
    }
    const DeckProject* project = model_.currentProject();
    for (const auto& [field, picker] : pickers_) {
        const std::string column = project ? project->mapping.column(field).value_or("") : "";
        // Without its table a deck still knows its columns.
        picker->show(columns_->indexOf(column), CellText::oneLine(column));
    }
}

}  // namespace quorvel
