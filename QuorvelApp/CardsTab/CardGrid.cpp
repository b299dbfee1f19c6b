#include "CardsTab/CardGrid.h"

#include "CardsTab/CardGridAccessible.h"
#include "Controls/ScreenReader.h"
#include "Controls/Style.h"

#include <QAccessible>
#include <QContextMenuEvent>
#include <QKeyEvent>
#include <QMenu>
#include <QPaintEvent>
#include <QPainter>
#include <algorithm>
#include <utility>

namespace quorvel {
namespace {

constexpr int margin = Style::large;  // around the tiles, where their shadows and the ring have room
constexpr int spinnerInterval = 50;   // ms
constexpr double spinnerStep = 0.05;  // of a turn

double aspectOf(const CardTemplate& design) {
    return design.size.widthMM / design.size.heightMM;
}

std::optional<GridLayout::Step> stepFor(int key) {
    using Step = GridLayout::Step;
    switch (key) {
        case Qt::Key_Left:
            return Step::left;
        case Qt::Key_Right:
            return Step::right;
        case Qt::Key_Up:
            return Step::up;
        case Qt::Key_Down:
            return Step::down;
        case Qt::Key_PageUp:
            return Step::pageUp;
        case Qt::Key_PageDown:
            return Step::pageDown;
        case Qt::Key_Home:
            return Step::first;
        case Qt::Key_End:
            return Step::last;
        default:
            return std::nullopt;
    }
}

}  // namespace

CardGrid::CardGrid(AppModel& model, QWidget* parent)
    : QWidget(parent),
      model_(model),
      shownTiles_([&model](int index) { model.cardAppeared(index); },
                  [&model](int index) { model.cardDisappeared(index); }) {
    ScreenReader::represent<CardGridAccessible, CardGrid>();
    setFocusPolicy(Qt::StrongFocus);
    setAccessibleName(QStringLiteral("Cards"));
    QSizePolicy policy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    policy.setHeightForWidth(true);
    setSizePolicy(policy);
    readLook();
    arrange();
}

CardGrid::~CardGrid() {
    shownTiles_.show({});
}

// What is shown

void CardGrid::refresh(Changes changes) {
    if (changes.has(Change::selection)) {
        // Another deck's tiles, even where they have the same numbers.
        shownTiles_.show({});
        current_.reset();
    }
    if (changes.has(Change::selection) || changes.has(Change::openDeck) || changes.has(Change::decks)) {
        readLook();
        arrange();
        update();
    } else if (changes.has(Change::thumbnails)) {
        updateChangedPictures();
    }
}

void CardGrid::setSeen(const QRect& seen) {
    seen_ = seen;
    tellShown();
}

QPoint CardGrid::tilesAt() {
    return {margin, margin};
}

CardTile CardGrid::tile(int index) const {
    const Card& card = model_.state().open._deck->cards[std::size_t(index)];
    const auto& images = model_.thumbnails();
    const auto image = images.find(card.id);
    return {card, image == images.end() ? std::nullopt : std::optional(image->second), aspectOf(model_.template_()),
            card.quantity};
}

GridLayout CardGrid::layoutFor(int width) const {
    return {int(model_.state().open._deck->cards.size()), width - 2 * margin, aspectOf(model_.template_()),
            QFontMetrics(painter_.look().captionFont).height()};
}

int CardGrid::heightForWidth(int width) const {
    return std::min(layoutFor(width).height() + 2 * margin, QWIDGETSIZE_MAX);
}

QSize CardGrid::sizeHint() const {
    const int width = 3 * GridLayout::maximumColumn + 2 * GridLayout::columnGap + 2 * margin;
    return {width, heightForWidth(width)};
}

void CardGrid::arrange() {
    const GridLayout layout = layoutFor(width());
    if (layout == layout_) return;
    const int before = layout_.count();
    layout_ = layout;
    if (current_ && *current_ >= count()) current_ = count() > 0 ? std::optional(count() - 1) : std::nullopt;
    update();
    // At once, not when the new size has come: a card that is gone must have disappeared before it may come back.
    tellShown();
    if (before != count() && QAccessible::isActive()) {
        CardGridAccessible::forgetFrom(*this, count());
        ScreenReader::announceReordered(this);
    }
}

TileRange CardGrid::onScreen() const {
    if (!isVisible()) return {};
    const int top = seen_.top() - tilesAt().y();
    return layout_.visible(top, top + seen_.height());
}

void CardGrid::tellShown() {
    shownTiles_.show(onScreen());
    painter_.keep(shownTiles_.shown());
}

void CardGrid::resizeEvent(QResizeEvent*) {
    arrange();
}

void CardGrid::showEvent(QShowEvent*) {
    isCalm_ = Style::reduceMotion();
    tellShown();
}

void CardGrid::hideEvent(QHideEvent*) {
    tellShown();
    runSpinners();
}

// Drawing

void CardGrid::readLook() {
    const CardTemplate& design = model_.template_();
    const double scale = layout_.columnWidth() / design.size.widthMM;
    painter_.setLook(
        {palette(), Style::font(Style::TextSize::caption), Style::font(Style::TextSize::caption, QFont::Bold),
         std::clamp(design.cornerRadiusMM * scale, 0.0, layout_.columnWidth() / 2.0), devicePixelRatioF()});
}

CardTilePainter::Place CardGrid::place(int index) const {
    return {layout_.picture(index).translated(tilesAt()), layout_.caption(index).translated(tilesAt())};
}

void CardGrid::paintEvent(QPaintEvent* event) {
    readLook();
    QPainter painter(this);
    painter_.begin();
    const QRegion& region = event->region();
    const QRect bounds = region.boundingRect();
    const int reach = CardTilePainter::overhang;
    const int top = bounds.top() - tilesAt().y() - reach;
    const TileRange range = layout_.visible(top, top + bounds.height() + 2 * reach);
    for (int index = range.first; index < range.end; ++index) {
        if (!region.intersects(tileRect(index).adjusted(-reach, -reach, reach, reach))) continue;
        const auto focus = hasFocus() && current_ == index ? CardTilePainter::Focus::yes : CardTilePainter::Focus::no;
        if (!painter_.paint(painter, place(index), tile(index), focus, turn_)) updateTile(index);
    }
    runSpinners();
}

void CardGrid::updateTile(int index) {
    const int reach = CardTilePainter::overhang;
    update(tileRect(index).adjusted(-reach, -reach, reach, reach));
}

void CardGrid::updateChangedPictures() {
    const auto& images = model_.thumbnails();
    const TileRange shown = shownTiles_.shown();
    for (int index = shown.first; index < shown.end; ++index) {
        const auto image = images.find(index);
        if (painter_.drawnImage(index) != (image == images.end() ? 0 : image->second.id())) updateTile(index);
    }
}

void CardGrid::runSpinners() {
    const auto& images = model_.thumbnails();
    const TileRange shown = shownTiles_.shown();
    bool any = false;
    for (int index = shown.first; index < shown.end && !any; ++index) any = !images.contains(index);
    if (any && !spinnerTimer_ && !isCalm_) spinnerTimer_ = startTimer(spinnerInterval);
    if (!any && spinnerTimer_) killTimer(std::exchange(spinnerTimer_, 0));
}

void CardGrid::timerEvent(QTimerEvent*) {
    turn_ += spinnerStep;
    if (turn_ >= 1) turn_ -= 1;
    const auto& images = model_.thumbnails();
    const TileRange shown = shownTiles_.shown();
    for (int index = shown.first; index < shown.end; ++index)
        if (!images.contains(index)) update(CardTilePainter::spinner(place(index).picture));
    runSpinners();
}

void CardGrid::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() != QEvent::PaletteChange && event->type() != QEvent::FontChange &&
        event->type() != QEvent::StyleChange && event->type() != QEvent::ApplicationFontChange)
        return;
    readLook();
    arrange();
    updateGeometry();
    update();
}

// Using it

void CardGrid::setCurrent(int index) {
    if (index < 0 || index >= count()) return;
    const QRect part = tileRect(index).adjusted(-margin, -margin, margin, margin);
    if (current_ != index) {
        if (current_) updateTile(*current_);
        current_ = index;
        updateTile(index);
        announceCurrent();
    }
    Q_EMIT revealRequested(part);
}

void CardGrid::editTemplateWith(int index) {
    if (index < 0 || index >= count()) return;
    if (index == model_.state()._canvasCard) model_.refreshCanvas();
    model_.setCanvasCard(index);
    model_.setTab(Tab::template_);
}

std::optional<int> CardGrid::firstSeen() const {
    const TileRange range = onScreen();
    if (range.isEmpty()) return count() > 0 ? std::optional(0) : std::nullopt;
    // One that is seen as a whole, if there is any.
    for (int index = range.first; index < range.end; ++index)
        if (seen_.contains(tileRect(index))) return index;
    return range.first;
}

bool CardGrid::event(QEvent* event) {
    // Return edits the card, even where a dialog or a menu would like to have it.
    if (event->type() == QEvent::ShortcutOverride) {
        const auto* const key = static_cast<QKeyEvent*>(event);
        if (current_ && key->modifiers() == Qt::NoModifier && key->key() == Qt::Key_Return) event->accept();
    }
    return QWidget::event(event);
}

void CardGrid::keyPressEvent(QKeyEvent* event) {
    const bool isPlain = (event->modifiers() & ~Qt::KeypadModifier) == Qt::NoModifier;
    if (isPlain && (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) && current_)
        return editTemplateWith(*current_);
    const auto step = stepFor(event->key());
    if (!isPlain || !step || count() == 0) return QWidget::keyPressEvent(event);
    const bool leads = current_ || *step == GridLayout::Step::first || *step == GridLayout::Step::last;
    const int pageRows = std::max(seen_.height() / layout_.rowPitch(), 1);
    // The first key only shows where one is.
    setCurrent(leads ? layout_.moved(current_.value_or(0), *step, pageRows) : *firstSeen());
}

void CardGrid::focusInEvent(QFocusEvent* event) {
    QWidget::focusInEvent(event);
    if (!current_ && event->reason() != Qt::MouseFocusReason) current_ = firstSeen();
    if (!current_) return;
    updateTile(*current_);
    announceCurrent();
}

void CardGrid::focusOutEvent(QFocusEvent* event) {
    QWidget::focusOutEvent(event);
    if (current_) updateTile(*current_);
}

void CardGrid::mousePressEvent(QMouseEvent* event) {
    const auto index = at(event->position().toPoint());
    if (index) setCurrent(*index);
}

void CardGrid::mouseDoubleClickEvent(QMouseEvent* event) {
    const auto index = at(event->position().toPoint());
    if (index && event->button() == Qt::LeftButton) editTemplateWith(*index);
}

void CardGrid::contextMenuEvent(QContextMenuEvent* event) {
    const bool byKey = event->reason() == QContextMenuEvent::Keyboard;
    const auto index = byKey ? current_ : at(event->pos());
    if (!index) return event->ignore();
    setCurrent(*index);
    auto* const menu = new QMenu(this);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    menu->addAction(QStringLiteral("Edit Template with This Card"), this, [this, index] { editTemplateWith(*index); });
    menu->popup(byKey ? mapToGlobal(tileRect(*index).center()) : event->globalPos());
}

void CardGrid::announceCurrent() {
    if (!QAccessible::isActive() || !current_) return;
    QAccessibleEvent selected(this, QAccessible::Selection);
    selected.setChild(*current_);
    QAccessible::updateAccessibility(&selected);
    if (!hasFocus()) return;
    QAccessibleEvent focused(this, QAccessible::Focus);
    focused.setChild(*current_);
    QAccessible::updateAccessibility(&focused);
}

}  // namespace quorvel
