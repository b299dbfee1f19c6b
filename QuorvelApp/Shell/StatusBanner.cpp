#include "Shell/StatusBanner.h"

#include "Controls/ElidedLabel.h"
#include "Controls/ScreenReader.h"
#include "Controls/Spinner.h"
#include "Controls/Style.h"
#include "Controls/SymbolLabel.h"
#include "Controls/Wording.h"

#include <QEvent>
#include <QGraphicsOpacityEffect>
#include <QHBoxLayout>
#include <QPainter>
#include <QProgressBar>
#include <QVariantAnimation>
#include <cmath>

namespace quorvel {
namespace {

constexpr int shadow = 6;
constexpr int progressWidth = 120;
constexpr int progressHeight = 6;

int between(int from, int to, double part) {
    return int(std::lround(from + (to - from) * part));
}

QRect between(const QRect& from, const QRect& to, double part) {
    return {between(from.x(), to.x(), part), between(from.y(), to.y(), part), between(from.width(), to.width(), part),
            between(from.height(), to.height(), part)};
}

}  // namespace

StatusBanner::StatusBanner(AppModel& model, QWidget* parent) : QWidget(parent), model_(model) {
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setFocusPolicy(Qt::NoFocus);
    ScreenReader::makeAlert(this);

    content_ = new QWidget(this);
    spinner_ = new Spinner;
    check_ = new SymbolLabel("checkmark.circle", 16, Style::good);
    words_ = new ElidedLabel(Qt::ElideMiddle);
    progress_ = new QProgressBar;
    progress_->setAccessibleName("Progress");
    progress_->setTextVisible(false);
    progress_->setRange(0, 100);
    progress_->setFixedSize(progressWidth, progressHeight);
    auto* row = new QHBoxLayout(content_);
    row->setContentsMargins(Style::medium + shadow, Style::small + shadow, Style::medium + Style::tight + shadow,
                            Style::small + shadow);
    row->setSpacing(Style::small);
    row->addWidget(spinner_);
    row->addWidget(check_);
    row->addWidget(words_);
    row->addSpacing(Style::tight);
    row->addWidget(progress_);
    contentOpacity_ = new QGraphicsOpacityEffect(content_);
    contentOpacity_->setEnabled(false);
    content_->setGraphicsEffect(contentOpacity_);

    fade_ = new QVariantAnimation(this);
    fade_->setDuration(fadeTime);
    fade_->setEasingCurve(QEasingCurve::InOutQuad);
    fade_->setStartValue(0.0);
    fade_->setEndValue(1.0);
    connect(fade_, &QVariantAnimation::valueChanged, this, [this](const QVariant& part) { move(part.toDouble()); });

    QWidget::hide();
    parent->installEventFilter(this);
    subscription_ = model_.subscribe([this](Changes changes) { refresh(changes); });
    refresh({unsigned(Change::status)});
}

void StatusBanner::refresh(Changes changes) {
    if (changes.has(Change::exports)) showProgress();
    if (!changes.has(Change::status)) return;
    const AppState& state = model_.state();
    if (state._busy)
        say({text(*state._busy), true});
    else if (state._notice)
        say({text(*state._notice), false});
    else
        say({});
}

void StatusBanner::say(const Message& message) {
    if (message == message_) return;
    lastPlace_ = geometry();
    from_ = opacity_;
    last_ = {};
    if (!message_.text.isEmpty()) {
        last_ = QPixmap(content_->size() * devicePixelRatio());
        last_.setDevicePixelRatio(devicePixelRatio());
        last_.fill(Qt::transparent);
        content_->render(&last_, {}, {}, DrawChildren);
    }
    message_ = message;
    show(message);

    fade_->stop();
    if (from_ == 0) lastPlace_ = place();
    if (Style::reduceMotion()) return move(1);
    move(0);
    fade_->start();
}

void StatusBanner::show(const Message& message) {
    setAccessibleName(message.text);
    if (message.text.isEmpty()) return;
    spinner_->setVisible(message.busy);
    check_->setVisible(!message.busy);
    words_->setText(message.text);
    showProgress();
    raise();
    QWidget::show();
    ScreenReader::speak(this);
}

void StatusBanner::showProgress() {
    const auto& runs = model_.exports();
    const bool wasShown = progress_->isVisibleTo(content_);
    const bool isShown = message_.busy && !runs.empty();
    progress_->setVisible(isShown);
    // The words are those of the export begun last.
    if (isShown) progress_->setValue(int(runs.back().fraction * 100));
    if (isShown != wasShown && fade_->state() != QAbstractAnimation::Running && opacity_ > 0) setGeometry(place());
}

QRect StatusBanner::place() const {
    if (message_.text.isEmpty()) return lastPlace_;
    const QSize room = parentWidget()->size() - QSize(2 * (distance - shadow), 2 * (distance - shadow));
    const QSize size = content_->sizeHint().boundedTo(room);
    return {QPoint((parentWidget()->width() - size.width()) / 2,
                   parentWidget()->height() - distance + shadow - size.height()),
            size};
}

void StatusBanner::move(double part) {
    const double to = message_.text.isEmpty() ? 0 : 1;
    opacity_ = from_ + (to - from_) * part;
    setGeometry(between(lastPlace_, place(), part));
    content_->setVisible(to > 0);
    contentOpacity_->setEnabled(part < 1);
    contentOpacity_->setOpacity(part);
    if (part == 1) {
        last_ = {};
        if (to == 0) QWidget::hide();
    }
    update();
}

bool StatusBanner::eventFilter(QObject* object, QEvent* event) {
    if (object == parentWidget() && event->type() == QEvent::Resize && !message_.text.isEmpty()) {
        lastPlace_ = place();
        setGeometry(place());
    }
    return QWidget::eventFilter(object, event);
}

void StatusBanner::resizeEvent(QResizeEvent*) {
    // The words keep their own size while the surface is on its way to it.
    QRect inside({}, message_.text.isEmpty() ? size() : place().size());
    inside.moveCenter(rect().center());
    content_->setGeometry(inside);
}

void StatusBanner::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setOpacity(opacity_);
    painter.setPen(Qt::NoPen);
    const QRectF surface = QRectF(rect()).adjusted(shadow, shadow, -shadow, -shadow);
    const double corner = std::min(surface.height() / 2, 2.0 * Style::radius);
    for (int ring = shadow; ring > 0; --ring) {
        painter.setBrush(QColor(0, 0, 0, 5));
        const double grown = ring - 1;
        painter.drawRoundedRect(surface.adjusted(-grown, -grown + 1, grown, grown + 1), corner + grown, corner + grown);
    }
    QColor material = palette().color(QPalette::Active, QPalette::Base);
    if (Style::isDark(palette())) material = palette().color(QPalette::Active, QPalette::Button);
    material.setAlphaF(0.94F);
    painter.setBrush(material);
    painter.setPen(QPen(Style::line(palette()), 1));
    painter.drawRoundedRect(surface.adjusted(0.5, 0.5, -0.5, -0.5), corner, corner);

    if (last_.isNull()) return;
    painter.setOpacity(from_ * (1 - fade_->currentValue().toDouble()));
    const QSizeF size = last_.deviceIndependentSize();
    painter.drawPixmap(QPointF((width() - size.width()) / 2, (height() - size.height()) / 2), last_);
}

}  // namespace quorvel
