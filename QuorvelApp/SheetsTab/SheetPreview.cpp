#include "SheetsTab/SheetPreview.h"

#include "Controls/SegmentedPicker.h"
#include "Controls/Style.h"
#include "Controls/SymbolButton.h"
#include "Controls/Wording.h"
#include "SheetsTab/SheetPicture.h"
#include "SheetsTab/SheetSummary.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QPainter>
#include <QVBoxLayout>
#include <QWheelEvent>
#include <algorithm>

namespace quorvel {

namespace {

constexpr int inset = 16;
constexpr int symbolSize = 14;
constexpr int wheelStep = 120;  // one notch

QString captionText(std::int64_t page, std::int64_t count) {
    return text("Sheet %1 of %2").arg(page).arg(count);
}

}  // namespace

SheetPreview::SheetPreview(AppModel& model, QWidget* parent)
    : QWidget(parent), model_(model), picture_(new SheetPicture) {
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(makePageBar());
    // The sheet's shadow falls on the inset.
    picture_->setContentsMargins(inset, inset, inset, inset);
    column->addWidget(picture_, 1);
    refresh();
}

QWidget* SheetPreview::makePageBar() {
    previous_ = SymbolButton::inRow(u"chevron.left", "Previous Page", "Previous Page", symbolSize);
    next_ = SymbolButton::inRow(u"chevron.right", "Next Page", "Next Page", symbolSize);
    caption_ = new QLabel;
    caption_->setAlignment(Qt::AlignCenter);
    side_ = new SegmentedPicker(text("Side"), {text("Front"), text("Back")});
    // The pages stay in the middle whether the sides are shown or not.
    QSizePolicy keepsPlace = side_->sizePolicy();
    keepsPlace.setRetainSizeWhenHidden(true);
    side_->setSizePolicy(keepsPlace);

    auto* pages = new QHBoxLayout;
    pages->setSpacing(Style::tight);
    pages->addWidget(previous_);
    pages->addWidget(caption_);
    pages->addWidget(next_);

    auto* bar = new QWidget;
    auto* row = new QGridLayout(bar);
    row->setContentsMargins(inset, inset, inset, 0);
    row->addLayout(pages, 0, 1, Qt::AlignCenter);
    row->addWidget(side_, 0, 2, Qt::AlignRight | Qt::AlignVCenter);
    row->setColumnStretch(0, 1);
    row->setColumnStretch(2, 1);

    connect(previous_, &QToolButton::clicked, this, &SheetPreview::previousPage);
    connect(next_, &QToolButton::clicked, this, &SheetPreview::nextPage);
    connect(side_, &SegmentedPicker::activated, this, [this](int index) { model_.setSheetBack(index == 1); });
    return bar;
}

void SheetPreview::refresh() {
    const AppState& state = model_.state();
    const DeckProject* current = model_.currentProject();
    const Deck& deck = *state.open._deck;
    const auto summary = current ? SheetSummary::make(current->template_, current->sheet, deck) : std::nullopt;
    const std::int64_t page = state._sheetPage + 1;
    refreshPageBar(page, summary ? summary->pages : 0);
    side_->setVisible(current && current->sheet.duplex);
    side_->setCurrentIndex(state._sheetBack ? 1 : 0);

    QString name = deck.cards.empty() ? text("No cards yet.") : text("Making the preview…");
    if (state._sheetImage && summary) {
        picture_->showSheet(*state._sheetImage, {summary->pageSize.width, summary->pageSize.height});
        name = text("Preview of sheet %1").arg(page);
    } else {
        picture_->showText(name);
    }
    picture_->setAccessibleName(name);
}

void SheetPreview::refreshPageBar(std::int64_t page, std::int64_t count) {
    caption_->setText(count == 0 ? QString() : captionText(page, count));
    // As wide as its widest, so that the buttons stay where they are while one goes from page to page.
    const QString widest = captionText(std::max(page, count), count);
    caption_->setMinimumWidth(caption_->fontMetrics().horizontalAdvance(widest) + 2 * Style::small);
    previous_->setEnabled(canGoBack());
    next_->setEnabled(canGoOn());
}

// Which page

bool SheetPreview::canGoBack() const {
    return model_.state()._sheetPage > 0;
}

bool SheetPreview::canGoOn() const {
    return model_.state()._sheetPage + 1 < model_.sheetPageCount();
}

void SheetPreview::previousPage() {
    if (canGoBack()) model_.setSheetPage(model_.state()._sheetPage - 1);
}

void SheetPreview::nextPage() {
    if (canGoOn()) model_.setSheetPage(model_.state()._sheetPage + 1);
}

void SheetPreview::keyPressEvent(QKeyEvent* event) {
    switch (event->key()) {
        case Qt::Key_PageUp:
        case Qt::Key_Up:
        case Qt::Key_Left:
            return previousPage();
        case Qt::Key_PageDown:
        case Qt::Key_Down:
        case Qt::Key_Right:
            return nextPage();
        case Qt::Key_Home:
            if (canGoBack()) model_.setSheetPage(0);
            return;
        case Qt::Key_End:
            if (canGoOn()) model_.setSheetPage(model_.sheetPageCount() - 1);
            return;
        default:
            QWidget::keyPressEvent(event);
    }
}

void SheetPreview::wheelEvent(QWheelEvent* event) {
    event->accept();
    const QPoint turned = event->angleDelta();
    const int delta = std::abs(turned.y()) >= std::abs(turned.x()) ? turned.y() : turned.x();
    // What was turned one way doesn't count for the other.
    if ((wheel_ > 0) != (delta > 0)) wheel_ = 0;
    for (wheel_ += delta; wheel_ >= wheelStep; wheel_ -= wheelStep) previousPage();
    for (; wheel_ <= -wheelStep; wheel_ += wheelStep) nextPage();
}

void SheetPreview::paintEvent(QPaintEvent*) {
    QPainter(this).fillRect(rect(), Style::underPage(palette()));
}

}  // namespace quorvel
