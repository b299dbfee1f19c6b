#include "TemplateTab/LayerRows.h"

#include "Controls/QuietShapes.h"
#include "Controls/ScreenReader.h"
#include "Controls/Style.h"
#include "TemplateTab/LayerRowsAccessible.h"

#include <QAbstractButton>
#include <QApplication>
#include <QKeyEvent>
#include <QPainter>
#include <QVBoxLayout>
#include <algorithm>
#include <utility>

namespace quorvel {

LayerRows::LayerRows(QWidget* parent) : QScrollArea(parent) {
    ScreenReader::represent<LayerRowsAccessible, LayerRows>();
    ScreenReader::represent<LayerRowAccessible, LayerRow>();
    setAccessibleName("Layers");
    setFrameShape(QFrame::NoFrame);
    setWidgetResizable(true);
    setFocusPolicy(Qt::StrongFocus);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    auto* content = new QWidget;
    content->setFocusPolicy(Qt::NoFocus);
    auto* all = new QVBoxLayout(content);
    all->setContentsMargins(0, 0, 0, Style::small);
    all->setSpacing(0);
    column_ = new QVBoxLayout;
    column_->setSpacing(0);
    all->addLayout(column_);
    all->addStretch();
    setWidget(content);
    content->setAutoFillBackground(false);
    viewport()->setAutoFillBackground(false);
}

// What is shown

void LayerRows::showLayers(const std::vector<LayerRow::Content>& layers, const std::optional<UUID>& selected) {
    const bool sameOrder = std::ranges::equal(
        rows_, layers, {}, [](const LayerRow* row) { return row->content().layer; }, &LayerRow::Content::layer);
    if (!sameOrder) arrange(layers);
    for (std::size_t i = 0; i < layers.size(); ++i)
        if (rows_[i]->content() != layers[i]) rows_[i]->setContent(layers[i]);
    const bool moved = selected != selected_ || !sameOrder;
    selected_ = selected;
    showSelection();
    if (!moved) return;
    if (LayerRow* row = selectedRow()) {
        setTabOrder(this, row->findChild<QAbstractButton*>());
        // A row that has just come has no place before it is laid out.
        widget()->layout()->activate();
        widget()->resize(widget()->width(), std::max(widget()->minimumSizeHint().height(), viewport()->height()));
        ensureWidgetVisible(row, 0, Style::small);
    }
    announceSelected();
}

void LayerRows::arrange(const std::vector<LayerRow::Content>& layers) {
    std::vector<LayerRow*> before = std::exchange(rows_, {});
    for (const LayerRow::Content& layer : layers) {
        const auto kept = std::ranges::find_if(
            before, [&](const LayerRow* row) { return row && row->content().layer == layer.layer; });
        rows_.push_back(kept == before.end() ? makeRow() : std::exchange(*kept, nullptr));
    }
    for (LayerRow* row : before)
        if (row) drop(row);
    for (int i = 0; i < int(rows_.size()); ++i) {
        LayerRow* row = rows_[std::size_t(i)];
        if (column_->indexOf(row) != i) column_->insertWidget(i, row);
    }
    ScreenReader::announceReordered(this);
}

LayerRow* LayerRows::makeRow() {
    auto* row = new LayerRow(widget());
    connect(row, &LayerRow::pressed, this, [this, row] {
        setFocus(Qt::MouseFocusReason);
        select(row->content().layer);
    });
    connect(row, &LayerRow::eyePressed, this, [this, row] { Q_EMIT eyePressed(row->content().layer); });
    row->show();
    return row;
}

void LayerRows::drop(LayerRow* row) {
    const bool hadKeyboard = row->isAncestorOf(QApplication::focusWidget());
    column_->removeWidget(row);
    row->hide();
    row->deleteLater();  // it may be what was clicked
    if (hadKeyboard) setFocus(Qt::OtherFocusReason);
}

LayerRow* LayerRows::selectedRow() const {
    const auto found = std::ranges::find_if(
        rows_, [&](const LayerRow* row) { return selected_ && row->content().layer == *selected_; });
    return found == rows_.end() ? nullptr : *found;
}

void LayerRows::showSelection() {
    const LayerRow* selected = selectedRow();
    for (LayerRow* row : rows_)
        row->setLook(row != selected ? LayerRow::Look::plain
                     : hasFocus()    ? LayerRow::Look::active
                                     : LayerRow::Look::selected);
    // Each movement of a drag comes by here: only what differs is drawn anew.
    const bool ringed = hasFocus() && !selected;
    if (std::exchange(ringed_, ringed) != ringed) viewport()->update();
}

void LayerRows::paintEvent(QPaintEvent* event) {
    QScrollArea::paintEvent(event);
    // Where no row stands out, all of the list shows that it has the keyboard.
    if (!ringed_) return;
    QPainter painter(viewport());
    const QRect ring = viewport()->rect().adjusted(Style::tight, 0, -Style::tight, -Style::tight);
    QuietShapes::drawRing(painter, ring, QuietShapes::corner, Style::accent(palette()));
}

void LayerRows::announceSelected() {
    if (const LayerRow* row = selectedRow(); row && hasFocus()) LayerRowsAccessible::announceFocus(*row);
}

// What the user does

void LayerRows::select(const std::optional<UUID>& layer) {
    if (layer != selected_) Q_EMIT selected(layer);
}

void LayerRows::mousePressEvent(QMouseEvent* event) {
    // Beside the rows: none.
    if (event->button() == Qt::LeftButton) select(std::nullopt);
}

void LayerRows::keyPressEvent(QKeyEvent* event) {
    const bool isPlain = !(event->modifiers() & ~Qt::KeypadModifier);
    const auto row = isPlain ? destination(event->key()) : std::nullopt;
    if (!row) return event->ignore();
    select(rows_[*row]->content().layer);
}

std::optional<std::size_t> LayerRows::destination(int key) const {
    if (rows_.empty()) return std::nullopt;
    const std::size_t last = rows_.size() - 1;
    const LayerRow* selected = selectedRow();
    const std::size_t at = std::size_t(std::ranges::find(rows_, selected) - rows_.begin());
    const std::size_t page = std::size_t(std::max(viewport()->height() / rows_.front()->height(), 1));
    switch (key) {
        case Qt::Key_Home:
            return 0;
        case Qt::Key_End:
            return last;
        case Qt::Key_Up:
            return !selected ? last : at - std::min<std::size_t>(at, 1);
        case Qt::Key_Down:
            return !selected ? 0 : std::min(at + 1, last);
        case Qt::Key_PageUp:
            return !selected ? last : at - std::min(at, page);
        case Qt::Key_PageDown:
            return !selected ? 0 : std::min(at + page, last);
        default:
            return std::nullopt;
    }
}

void LayerRows::focusInEvent(QFocusEvent* event) {
    QScrollArea::focusInEvent(event);
    showSelection();
    announceSelected();
}

void LayerRows::focusOutEvent(QFocusEvent* event) {
    QScrollArea::focusOutEvent(event);
    showSelection();
}

}  // namespace quorvel
