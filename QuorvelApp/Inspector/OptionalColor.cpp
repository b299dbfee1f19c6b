#include "Inspector/OptionalColor.h"

#include "Controls/Style.h"
#include "Inspector/ColorWell.h"

#include <QCheckBox>
#include <QHBoxLayout>
#include <QPointer>

namespace quorvel {

OptionalColor::OptionalColor(const QString& title, const RGBA& fallback, QWidget* parent)
    : QWidget(parent), isPresent_(new QCheckBox(title)), well_(new ColorWell(title, ColorWell::Opacity::offered)) {
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(Style::small);
    row->addWidget(isPresent_);
    row->addStretch();
    row->addWidget(well_);
    // The row keeps its height when the colour goes.
    QSizePolicy policy = well_->sizePolicy();
    policy.setRetainSizeWhenHidden(true);
    well_->setSizePolicy(policy);
    well_->hide();
    connect(isPresent_, &QCheckBox::clicked, this,
            [this, fallback](bool checked) { pick(checked ? std::optional(fallback) : std::nullopt); });
    connect(well_, &ColorWell::colorPicked, this, [this](const RGBA& color) { pick(color); });
}

void OptionalColor::setValue(const std::optional<RGBA>& value) {
    value_ = value;
    isPresent_->setChecked(value.has_value());
    if (value) well_->setColor(*value);
    if (well_->isHidden() == value.has_value()) well_->setVisible(value.has_value());
}

void OptionalColor::closeDialog() {
    well_->closeDialog();
}

void OptionalColor::pick(const std::optional<RGBA>& value) {
    const QPointer<OptionalColor> alive(this);
    Q_EMIT valuePicked(value);
    if (alive) setValue(value_);
}

}  // namespace quorvel
