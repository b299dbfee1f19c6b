#include "CardsTab/Banners.h"

#include "Controls/LinkButton.h"
#include "Controls/ScreenReader.h"
#include "Controls/Style.h"
#include "Controls/SymbolLabel.h"
#include "Controls/TintedPanel.h"
#include "Controls/Wording.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QVBoxLayout>
#include <algorithm>
#include <utility>

namespace quorvel {
namespace {

constexpr int symbolSize = 16;
constexpr int gap = 10;  // between symbol and text
constexpr double panelOpacity = 0.08;

}  // namespace

Banners::Banners(QWidget* parent) : QWidget(parent) {
    rows_ = new QVBoxLayout(this);
    rows_->setSpacing(Style::small);
    rows_->setContentsMargins(0, 0, 0, 0);
}

void Banners::setBanners(std::vector<Banner> banners) {
    if (banners == banners_) return;
    // Rows that say the same stay, with the focus that they may have.
    std::vector<QWidget*> kept(banners.size(), nullptr);
    for (std::size_t old = banners_.size(); old-- > 0;) {
        QWidget* const widget = rows_->itemAt(int(old))->widget();
        rows_->removeWidget(widget);
        const auto same = std::ranges::find(banners, banners_[old]);
        if (same != banners.end()) {
            kept[std::size_t(same - banners.begin())] = widget;
        } else {
            widget->hide();
            widget->deleteLater();
        }
    }
    for (std::size_t i = 0; i < banners.size(); ++i) rows_->addWidget(kept[i] ? kept[i] : row(banners[i]));
    banners_ = std::move(banners);
    updateGeometry();
}

QWidget* Banners::row(const Banner& banner) {
    auto* const panel = new TintedPanel(panelOpacity, this);
    ScreenReader::makeAlert(panel);
    panel->setAccessibleName(banner.text);
    auto* const line = new QHBoxLayout(panel);
    line->setContentsMargins(gap, gap, gap, gap);
    // Texts stand as far in as that of a link, which has room for its ring.
    line->setSpacing(gap - Style::hair);
    line->addWidget(new SymbolLabel(banner.symbol, symbolSize,
                                    banner.tone == Banner::Tone::warning ? Style::warning : Style::secondary, panel),
                    0, Qt::AlignTop);
    auto* const words = new QVBoxLayout;
    words->setSpacing(Style::hair);
    auto* const label = new QLabel(breakable(banner.text), panel);
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    label->setTextInteractionFlags(Qt::TextSelectableByMouse);
    label->setContentsMargins(Style::hair, 0, 0, 0);
    words->addWidget(label);
    if (banner.action != Banner::Action::none) {
        auto* const button = new LinkButton(Banner::title(banner.action), panel);
        words->addWidget(button, 0, Qt::AlignLeft);
        connect(button, &QAbstractButton::clicked, this, [this, action = banner.action] { Q_EMIT activated(action); });
    }
    line->addLayout(words, 1);
    panel->show();
    ScreenReader::speak(panel);
    return panel;
}

}  // namespace quorvel
