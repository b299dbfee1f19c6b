#include "TemplateTab/CardSurface.h"

#include "Cards/Markup.h"
#include "Controls/ScreenReader.h"
#include "Controls/Wording.h"
#include "TemplateTab/CardSurfaceAccessible.h"

#include <QGuiApplication>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QPainter>
#include <QStyleHints>
#include <QToolTip>
#include <cmath>

namespace quorvel {

namespace {

constexpr double nudge = 0.5;     // millimetres
constexpr double largeNudge = 2;  // with Shift
constexpr QSize least(200, 200);

Point toPoint(const QPointF& point) {
    return {point.x(), point.y()};
}

bool isDelete(int key) {
    return key == Qt::Key_Delete || key == Qt::Key_Backspace;
}

/// Which way an arrow key goes.
std::optional<Point> direction(int key) {
    switch (key) {
        case Qt::Key_Left:
            return Point{-1, 0};
        case Qt::Key_Right:
            return Point{1, 0};
        case Qt::Key_Up:
            return Point{0, -1};
        case Qt::Key_Down:
            return Point{0, 1};
        default:
            return std::nullopt;
    }
}

}  // namespace

CardSurface::CardSurface(AppModel& model, QWidget* parent) : QWidget(parent), model_(model), drag_(model) {
    ScreenReader::represent<CardSurfaceAccessible, CardSurface>();
    // The keyboard comes with Tab or a click, and no ring shows it: the selected layer's outline is what keys act on.
    setFocusPolicy(Qt::TabFocus);
    setMouseTracking(true);
    setAttribute(Qt::WA_OpaquePaintEvent);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    setAccessibleName("Card");
    setToolTip("Click a layer to select it. Drag to move, drag the corner to resize, arrow keys nudge (Shift: 2 mm).");
    refresh({~0U});
}

void CardSurface::setGuides(bool shown) {
    scene_.guides = shown;
    update();
}

void CardSurface::setOutlines(Outlines outlines) {
    outlines_ = outlines;
    showDesign();
}

QSize CardSurface::sizeHint() const {
    return 2 * least;
}

QSize CardSurface::minimumSizeHint() const {
    return least;
}

// What is shown

void CardSurface::refresh(Changes changes) {
    // What is dragged is of the deck that was open.
    if (changes.has(Change::selection)) interrupt();
    const bool otherDeck = changes.has(Change::selection) || changes.has(Change::openDeck);
    if (otherDeck || changes.has(Change::decks) || changes.has(Change::editing)) {
        showDesign();
        describe();
    }
    if (changes.has(Change::canvas)) showPicture();
}

void CardSurface::showDesign() {
    const CanvasGeometry before = scene_.geometry;
    scene_.surface = size();
    scene_.geometry = CanvasGeometry(model_.template_(), {double(width()), double(height())});
    auto overlays =
        layerOverlays(model_.layers(model_.state()._side), model_.selectedLayerValue(), outlines_, scene_.geometry);
    overlays.swap(scene_.overlays);
    const auto& now = scene_.overlays;
    if (scene_.geometry != before) update();
    // Where overlays lie above each other, both are drawn: it doesn't matter which of them changed.
    QRegion changed;
    const std::size_t most = std::max(overlays.size(), now.size());
    for (std::size_t i = 0; i < most; ++i) {
        if (i < overlays.size() && i < now.size() && overlays[i] == now[i]) continue;
        if (i < overlays.size()) changed += CanvasPainter::reach(overlays[i]);
        if (i < now.size()) changed += CanvasPainter::reach(now[i]);
    }
    update(changed);
    if (overlays.size() != now.size()) ScreenReader::announceReordered(this);
}

void CardSurface::showPicture() {
    const auto& picture = model_.state()._canvasImage;
    const auto id = [](const std::optional<Image>& image) { return image ? image->id() : 0; };
    if (id(picture) == id(scene_.picture)) return;
    scene_.picture = picture;
    update();
}

void CardSurface::describe() {
    const auto card = model_.canvasCardValue();
    const QString title = card ? text(Markup::plainText(card->title())) : QString("No card");
    const QString words = "Card preview: " + title + ", " + text(textOf(model_.state()._side));
    // Screen readers are told of each setting.
    if (words != accessibleDescription()) setAccessibleDescription(words);
}

void CardSurface::paintEvent(QPaintEvent* event) {
    scene_.pixelRatio = devicePixelRatioF();
    scene_.palette = palette();
    QPainter painter(this);
    painter_.paint(painter, scene_, event->region());
}

void CardSurface::resizeEvent(QResizeEvent*) {
    showDesign();
}

void CardSurface::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::PaletteChange || event->type() == QEvent::StyleChange) update();
}

// The mouse

bool CardSurface::event(QEvent* event) {
    switch (event->type()) {
        case QEvent::WindowDeactivate:
        case QEvent::WindowBlocked:
            // The end of the drag may never be told.
            interrupt();
            break;
        case QEvent::ToolTip: {
            const auto* help = static_cast<QHelpEvent*>(event);
            if (!isOnHandle(toPoint(help->pos()))) break;
            QToolTip::showText(help->globalPos(), "Drag to resize", this);
            return true;
        }
        case QEvent::ShortcutOverride: {
            const auto* key = static_cast<QKeyEvent*>(event);
            if (wantsKey(*key)) event->accept();
            break;
        }
        default:
            break;
    }
    return QWidget::event(event);
}

void CardSurface::hideEvent(QHideEvent*) {
    interrupt();
}

void CardSurface::interrupt() {
    drag_.end();
    pressed_.reset();
}

void CardSurface::mousePressEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton) return;
    // First: a field that loses the keyboard may still change the design.
    setFocus(Qt::MouseFocusReason);
    const Point point = toPoint(event->position());
    pressed_ = point;
    if (const auto grip = gripAt(point, scene_.overlays)) drag_.press(*grip, point);
}

void CardSurface::mouseMoveEvent(QMouseEvent* event) {
    const Point point = toPoint(event->position());
    if (!event->buttons().testFlag(Qt::LeftButton)) {
        interrupt();
        return showCursor(point);
    }
    drag_.moveTo(point, scene_.geometry);
    const int tolerance = QGuiApplication::styleHints()->startDragDistance();
    const bool isClick = pressed_ && std::hypot(point.x - pressed_->x, point.y - pressed_->y) <= tolerance;
    if (drag_.isUnderWay() || !isClick) pressed_.reset();
}

void CardSurface::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton) return;
    const auto pressed = pressed_;
    interrupt();
    if (pressed) click(*pressed);
    showCursor(toPoint(event->position()));
}

void CardSurface::click(Point point) {
    const Layer* hit = scene_.geometry.hit(point, model_.layers(model_.state()._side));
    model_.selectLayer(hit ? std::optional(hit->id) : std::nullopt);
}

bool CardSurface::isOnHandle(Point point) const {
    const auto grip = gripAt(point, scene_.overlays);
    return grip && grip->kind == Grip::Kind::resize;
}

void CardSurface::showCursor(Point point) {
    if (isOnHandle(point))
        setCursor(Qt::SizeFDiagCursor);
    else
        unsetCursor();
}

// The keyboard

bool CardSurface::wantsKey(const QKeyEvent& event) const {
    const bool isPlain = !(event.modifiers() & ~(Qt::ShiftModifier | Qt::KeypadModifier));
    return isPlain && model_.selectedLayerValue() && (isDelete(event.key()) || direction(event.key()));
}

bool CardSurface::takeKey(const QKeyEvent& event) {
    if (!wantsKey(event)) return false;
    const auto towards = direction(event.key());
    if (!towards) {
        model_.deleteSelectedLayer();
        return true;
    }
    const double by = event.modifiers().testFlag(Qt::ShiftModifier) ? largeNudge : nudge;
    model_.nudgeSelectedLayer(by * towards->x, by * towards->y);
    return true;
}

void CardSurface::keyPressEvent(QKeyEvent* event) {
    if (!takeKey(*event)) QWidget::keyPressEvent(event);
}

}  // namespace quorvel
