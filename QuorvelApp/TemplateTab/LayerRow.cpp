#include "TemplateTab/LayerRow.h"

#include "Controls/ElidedLabel.h"
#include "Controls/QuietShapes.h"
#include "Controls/Style.h"
#include "Controls/SymbolLabel.h"
#include "Controls/Symbols.h"
#include "Controls/Wording.h"
#include "Inspector/LayerKinds.h"
#include "TemplateTab/EyeButton.h"

#include <QHBoxLayout>
#include <QMouseEvent>
#include <QPainter>

namespace quorvel {

namespace {

constexpr int kindSize = 18;
constexpr int rulesSize = 16;
constexpr double selectedOpacity = 0.22;
constexpr double hoverOpacity = 0.08;

}  // namespace

LayerRow::Content LayerRow::Content::of(const Layer& layer) {
    return {layer.id, layer.kind, text(layer.name), !layer.rules.empty(), layer.hidden};
}

LayerRow::LayerRow(QWidget* parent) : QWidget(parent) {
    setAttribute(Qt::WA_Hover);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    name_ = new ElidedLabel(Qt::ElideRight);
    name_->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    rules_ = new SymbolLabel("paintpalette", rulesSize, [this](const QPalette&) { return symbolColor(); });
    rules_->setToolTip("Has conditional styling");
    rules_->setAccessibleName("Conditional styling");
    eye_ = new EyeButton;
    connect(eye_, &QAbstractButton::clicked, this, &LayerRow::eyePressed);
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(2 * Style::small + kindSize + Style::small, Style::tight, Style::small + Style::tight,
                            Style::tight);
    row->setSpacing(Style::tight);
    row->addWidget(name_, 1);
    row->addWidget(rules_);
    row->addWidget(eye_);
    setContent({});
    showColors();
}

void LayerRow::setContent(const Content& content) {
    content_ = content;
    setAccessibleName(content.name);
    name_->setText(content.name);
    rules_->setVisible(content.hasRules);
    eye_->showLayer(content.name, content.hidden);
    update();
}

void LayerRow::setLook(Look look) {
    if (look == look_) return;
    look_ = look;
    eye_->setFocusPolicy(look == Look::plain ? Qt::NoFocus : Qt::TabFocus);
    showColors();
    update();
}

QColor LayerRow::nameColor() const {
    return palette().color(look_ == Look::active ? QPalette::HighlightedText : QPalette::WindowText);
}

QColor LayerRow::symbolColor() const {
    return look_ == Look::active ? palette().color(QPalette::HighlightedText) : Style::secondary(palette());
}

void LayerRow::showColors() {
    name_->setColor(nameColor());
    eye_->setColor(symbolColor());
    rules_->update();
}

void LayerRow::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::PaletteChange) showColors();
}

void LayerRow::mousePressEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton) Q_EMIT pressed();
}

void LayerRow::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    QColor ground;
    if (look_ == Look::active)
        ground = Style::accent(palette());
    else if (look_ == Look::selected)
        ground = Style::panel(palette(), selectedOpacity);
    else if (underMouse())
        ground = Style::panel(palette(), hoverOpacity);
    if (ground.isValid())
        QuietShapes::drawBox(painter, rect().adjusted(Style::small, 1, -Style::small, -1), QuietShapes::corner, ground,
                             {});
    painter.drawPixmap(2 * Style::small, (height() - kindSize) / 2,
                       Symbols::pixmap(LayerKinds::symbol(content_.kind), kindSize, symbolColor(), devicePixelRatio()));
}

}  // namespace quorvel
