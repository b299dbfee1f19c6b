#include "CardsTab/LoadingView.h"

#include "Controls/Spinner.h"
#include "Controls/Style.h"
#include "Controls/Wording.h"

#include <QLabel>
#include <QTimer>
#include <QVBoxLayout>

namespace quorvel {

LoadingView::LoadingView(QWidget* parent) : QWidget(parent) {
    constexpr int spinnerSize = 24;
    sign_ = new QWidget(this);
    auto* const column = new QVBoxLayout(sign_);
    column->setSpacing(Style::medium);
    column->addWidget(new Spinner(sign_, spinnerSize), 0, Qt::AlignHCenter);
    words_ = new QLabel(sign_);
    words_->setTextFormat(Qt::PlainText);
    words_->setAlignment(Qt::AlignCenter);
    words_->setWordWrap(true);
    Style::makeSecondary(words_);
    column->addWidget(words_);
    auto* const page = new QVBoxLayout(this);
    page->addStretch(2);
    page->addWidget(sign_);
    page->addStretch(3);
    sign_->hide();
    timer_ = new QTimer(this);
    timer_->setSingleShot(true);
    timer_->setInterval(moment);
    connect(timer_, &QTimer::timeout, sign_, &QWidget::show);
}

void LoadingView::setFileName(const QString& name) {
    words_->setText(breakable(QStringLiteral("Reading “%1”…").arg(name)));
}

void LoadingView::showEvent(QShowEvent*) {
    timer_->start();
}

void LoadingView::hideEvent(QHideEvent*) {
    timer_->stop();
    sign_->hide();
}

}  // namespace quorvel
