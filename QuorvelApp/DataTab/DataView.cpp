#include "DataTab/DataView.h"

#include "Controls/SideColumn.h"

#include <QHBoxLayout>
#include <QStackedWidget>

namespace quorvel {
namespace {

constexpr SideColumn::Widths formWidths{.least = 340, .ideal = 380, .most = 460};
constexpr int narrowestTable = 360;

}  // namespace

DataView::DataView(AppModel& model, QWidget* parent)
    : QWidget(parent),
      model_(model),
      form_(new GroupedForm),
      files_(*form_, model),
      columns_(*form_, model),
      right_(new QStackedWidget),
      withoutTable_(new QWidget),
      table_(new DataTableView) {
    right_->addWidget(withoutTable_);
    right_->addWidget(table_);
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(new SideColumn(form_, formWidths, right_, narrowestTable));

    subscription_ = model.subscribe([this](Changes changes) { refresh(changes); });
    Changes everything;
    everything.add(Change::openDeck);
    refresh(everything);
}

void DataView::refresh(Changes changes) {
    if (!changes.has(Change::decks) && !changes.has(Change::selection) && !changes.has(Change::openDeck)) return;
    form_->setEnabled(model_.currentProject() != nullptr);
    files_.refresh();
    columns_.refresh();
    refreshTable();
}

void DataView::refreshTable() {
    const OpenDeck& open = model_.state().open;
    const DeckProject* project = model_.currentProject();
    if (!table_->shows(open._table)) {
        const Origin origin{model_.state()._selection, open._sourceURL, project ? project->sheetIndex : 0};
        table_->setTable(open._table, origin == origin_ ? DataTableView::Places::kept : DataTableView::Places::dropped);
        origin_ = origin;
    }
    right_->setCurrentWidget(open._table ? static_cast<QWidget*>(table_) : withoutTable_);
}

}  // namespace quorvel
