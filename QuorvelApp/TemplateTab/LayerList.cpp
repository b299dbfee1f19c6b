#include "TemplateTab/LayerList.h"

#include "Controls/Style.h"
#include "Controls/SymbolButton.h"
#include "Controls/Symbols.h"
#include "Controls/Wording.h"
#include "Inspector/LayerKinds.h"
#include "TemplateTab/LayerRows.h"
#include "TemplateTab/SidePicker.h"
#include "Templates/TemplateEdits.h"

#include <QHBoxLayout>
#include <QMenu>
#include <QPainter>
#include <QVBoxLayout>
#include <ranges>

namespace quorvel {

namespace {

constexpr int pickerInset = 10;
constexpr int symbolSize = 16;

/// A line over the whole width.
class Divider : public QWidget {
public:
    Divider() { setFixedHeight(1); }

protected:
    void paintEvent(QPaintEvent*) override { QPainter(this).fillRect(rect(), Style::line(palette())); }
};

}  // namespace

LayerList::LayerList(AppModel& model, QWidget* parent) : QWidget(parent), model_(model) {
    setMinimumWidth(narrowest);
    setMaximumWidth(widest);
    side_ = new SidePicker(model_);
    side_->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    auto* top = new QHBoxLayout;
    top->setContentsMargins(pickerInset, pickerInset, pickerInset, pickerInset);
    top->addWidget(side_);
    rows_ = new LayerRows;
    connect(rows_, &LayerRows::selected, this, [this](const auto& layer) { model_.selectLayer(layer); });
    connect(rows_, &LayerRows::eyePressed, this, &LayerList::flipHidden);

    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addLayout(top);
    column->addWidget(rows_, 1);
    column->addWidget(new Divider);
    column->addWidget(makeTools());

    subscription_ = model_.subscribe([this](Changes changes) { refresh(changes); });
    refresh({~0U});
}

QWidget* LayerList::makeTools() {
    auto* add = SymbolButton::inRow(u"plus", "Add Layer", "Add a layer", symbolSize);
    add->setPopupMode(SymbolButton::InstantPopup);
    auto* menu = new QMenu("Add Layer", add);
    for (const auto& [kind, name] : EnumText<LayerKind>::cases)
        menu->addAction(Symbols::icon(LayerKinds::symbol(kind)), text(LayerKinds::label(kind)), this,
                        [this, kind = kind] { model_.addLayer(kind); });
    add->setMenu(menu);

    auto* tools = new QWidget;
    auto* row = new QHBoxLayout(tools);
    row->setContentsMargins(Style::small, Style::small, Style::small, Style::small);
    row->setSpacing(Style::tight);
    row->addWidget(add);
    const auto addForSelected = [&](QStringView symbol, const QString& name, const QString& tip, auto act) {
        auto* button = SymbolButton::inRow(symbol, name, tip, symbolSize);
        connect(button, &SymbolButton::clicked, this, act);
        row->addWidget(button);
        forSelected_.push_back(button);
    };
    addForSelected(u"minus", "Delete Layer", "Delete the layer", [this] { model_.deleteSelectedLayer(); });
    addForSelected(u"plus.square.on.square", "Duplicate Layer", "Duplicate the layer",
                   [this] { model_.duplicateSelectedLayer(); });
    addForSelected(u"arrow.up", "Bring Forward", "Bring forward", [this] { model_.moveSelectedLayer(1); });
    addForSelected(u"arrow.down", "Send Backward", "Send backward", [this] { model_.moveSelectedLayer(-1); });
    row->addStretch();
    return tools;
}

void LayerList::refresh(Changes changes) {
    if (!changes.has(Change::decks) && !changes.has(Change::editing) && !changes.has(Change::selection)) return;
    side_->refresh();
    std::vector<LayerRow::Content> layers;
    for (const Layer& layer : model_.layers(model_.state()._side) | std::views::reverse)
        layers.push_back(LayerRow::Content::of(layer));
    rows_->showLayers(layers, model_.state()._selectedLayer);

    const bool isSelected = model_.selectedLayerValue();
    for (SymbolButton* button : forSelected_) {
        // The keyboard stays in this column.
        if (!isSelected && button->hasFocus()) rows_->setFocus(Qt::OtherFocusReason);
        button->setEnabled(isSelected);
    }
}

void LayerList::flipHidden(const UUID& layer) {
    const Side side = model_.state()._side;
    const Layer* found = TemplateEdits::find(model_.template_(), side, layer);
    if (!found) return;
    Layer next = *found;
    next.hidden = !next.hidden;
    model_.setTemplate(TemplateEdits::replacing(model_.template_(), side, std::move(next)));
}

}  // namespace quorvel
