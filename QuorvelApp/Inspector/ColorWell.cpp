#include "Inspector/ColorWell.h"

#include "Controls/QuietShapes.h"
#include "Controls/Style.h"
#include "Controls/Wording.h"

#include <QColorDialog>
#include <QHideEvent>
#include <QPainter>
#include <QPainterPath>
#include <QScreen>
#include <QSignalBlocker>
#include <QStyleOption>
#include <algorithm>

namespace quorvel {

namespace {

constexpr QSize wellSize(44, 24);
constexpr int inset = 4;
constexpr double corner = 3;
constexpr int check = 4;  // of the pattern behind a colour that can be seen through

/// Where a dialog hides as little as it can of what its colours are seen on: right of the window, left of it, or over
/// its left edge.
QPoint placeBeside(const QRect& window, QSize dialog, const QRect& screen) {
    const int top = std::clamp(window.center().y() - dialog.height() / 2, screen.top(),
                               std::max(screen.top(), screen.bottom() + 1 - dialog.height()));
    if (window.right() + 1 + dialog.width() <= screen.right() + 1) return {window.right() + 1, top};
    return {std::max(screen.left(), window.left() - dialog.width()), top};
}

/// Whose dialog is open.
QPointer<ColorWell> opened;

QColor toQColor(const RGBA& color) {
    return {RGBA::byteOf(color.r), RGBA::byteOf(color.g), RGBA::byteOf(color.b), RGBA::byteOf(color.a)};
}

void paintChecks(QPainter& painter, const QRectF& area) {
    painter.fillRect(area, Qt::white);
    const int columns = int(area.width() / check) + 1;
    const int rows = int(area.height() / check) + 1;
    for (int row = 0; row < rows; ++row)
        for (int column = row % 2; column < columns; column += 2)
            painter.fillRect(QRectF(area.left() + column * check, area.top() + row * check, check, check),
                             QColor(0xcc, 0xcc, 0xcc));
}

}  // namespace

ColorWell::ColorWell(const QString& title, Opacity opacity, QWidget* parent)
    : QAbstractButton(parent), opacity_(opacity) {
    setAccessibleName(title);
    setAttribute(Qt::WA_Hover);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    setColor(RGBA::black);
    connect(this, &QAbstractButton::clicked, this, &ColorWell::openDialog);
}

ColorWell::~ColorWell() {
    closeDialog();
}

void ColorWell::setColor(const RGBA& color) {
    if (color != color_ || accessibleDescription().isEmpty()) {
        color_ = color;
        setAccessibleDescription(quorvel::text(color.hexString()));
        setToolTip(quorvel::text(color.hexString()));
        update();
    }
    if (!dialog_ || dialog_->currentColor() == toQColor(color)) return;
    const QSignalBlocker shown(dialog_);
    dialog_->setCurrentColor(toQColor(color));
}

void ColorWell::closeDialog() {
    QColorDialog* dialog = dialog_;
    dialog_.clear();
    if (!dialog) return;
    dialog->disconnect(this);
    dialog->close();  // and goes later: it may be what called
}

QSize ColorWell::sizeHint() const {
    return wellSize;
}

void ColorWell::openDialog() {
    if (dialog_) {
        dialog_->raise();
        dialog_->activateWindow();
        return;
    }
    if (opened) opened->closeDialog();
    opened = this;
    dialog_ = new QColorDialog(toQColor(color_), window());
    dialog_->setAttribute(Qt::WA_DeleteOnClose);
    // The keys of the window's menus go on working in it, Undo above all.
    dialog_->setWindowFlag(Qt::Tool);
    dialog_->setWindowTitle(accessibleName());
    // Without "OK" and "Cancel": what is chosen is seen on the card at once, and each choice can be undone.
    dialog_->setOptions(QColorDialog::NoButtons | QColorDialog::DontUseNativeDialog);
    dialog_->setOption(QColorDialog::ShowAlphaChannel, opacity_ == Opacity::offered);
    connect(dialog_, &QColorDialog::currentColorChanged, this, &ColorWell::pick);
    dialog_->adjustSize();
    const QRect frame = window()->frameGeometry();
    const QSize border = frame.size() - window()->size();  // the dialog will have the same
    dialog_->move(placeBeside(frame, dialog_->size() + border, screen()->availableGeometry()));
    dialog_->show();
}

void ColorWell::pick(const QColor& color) {
    const RGBA picked(double(color.redF()), double(color.greenF()), double(color.blueF()),
                      opacity_ == Opacity::offered ? double(color.alphaF()) : 1);
    if (picked != color_) Q_EMIT colorPicked(picked);
}

void ColorWell::hideEvent(QHideEvent* event) {
    QAbstractButton::hideEvent(event);
    // Not with a window that is only put away.
    if (!event->spontaneous()) closeDialog();
}

void ColorWell::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    const QColor line = Style::line(palette());
    const bool touched = underMouse() && isEnabled();
    QuietShapes::drawBox(painter, rect(), QuietShapes::corner, palette().color(QPalette::Button),
                         touched ? Style::secondary(palette()) : line);
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF area = QRectF(rect()).adjusted(inset, inset, -inset, -inset);
    QPainterPath shape;
    shape.addRoundedRect(area, corner, corner);
    painter.setClipPath(shape);
    if (color_.a < 1) paintChecks(painter, area);
    painter.fillRect(area, toQColor(color_));
    painter.setClipping(false);
    // So that white is seen on white.
    QColor edge = palette().color(QPalette::WindowText);
    edge.setAlphaF(0.25F);
    painter.setPen(QPen(edge, 1));
    painter.setBrush(Qt::NoBrush);
    painter.drawRoundedRect(area.adjusted(0.5, 0.5, -0.5, -0.5), corner - 0.5, corner - 0.5);
    QStyleOption option;
    option.initFrom(this);
    if (option.state.testFlag(QStyle::State_HasFocus) && option.state.testFlag(QStyle::State_KeyboardFocusChange))
        QuietShapes::drawRing(painter, rect(), QuietShapes::corner, Style::accent(palette()));
}

}  // namespace quorvel
