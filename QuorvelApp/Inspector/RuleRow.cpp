#include "Inspector/RuleRow.h"

#include "Controls/Picker.h"
#include "Controls/Style.h"
#include "Controls/Symbols.h"
#include "Controls/Wording.h"
#include "Inspector/FieldLabel.h"
#include "Inspector/OptionalColor.h"
#include "Inspector/TextField.h"

#include <QCheckBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QToolButton>
#include <QVBoxLayout>
#include <algorithm>

namespace quorvel {

template <class Value>
Binding<Value> RuleRow::field(Value StyleRule::* place) {
    return {[this, place] { return rule_.*place; },
            [this, place](Value value) { change([&](StyleRule& rule) { rule.*place = std::move(value); }); }};
}

RuleRow::RuleRow(LayerKind kind, Actions actions, QWidget* parent) : QWidget(parent), actions_(std::move(actions)) {
    auto* rows = new QVBoxLayout(this);
    rows->setContentsMargins(0, 0, 0, 0);
    rows->setSpacing(Style::small);

    when_ = new Picker(text("When"));
    connect(when_, &QComboBox::activated, this,
            [this](int index) { change([&](StyleRule& rule) { rule.field = offered_[std::size_t(index)]; }); });
    controls_.onLetGo([this] { when_->hidePopup(); });
    auto* label = new QLabel(text("When"));
    auto* remove = new QToolButton;
    remove->setIcon(Symbols::icon(u"trash"));
    remove->setAutoRaise(true);
    remove->setToolTip(text("Remove the rule"));
    remove->setAccessibleName(text("Remove Rule"));
    connect(remove, &QToolButton::clicked, this, [this] { actions_.remove(UUID(rule_.id)); });
    auto* head = new QHBoxLayout;
    head->setSpacing(Style::small);
    head->addWidget(label);
    head->addWidget(when_, 1);
    head->addWidget(remove);
    rows->addLayout(head);
    rows->addLayout(makeCondition());

    rows->addWidget(controls_.optionalColor(text("Fill"), RGBA::white, field(&StyleRule::fill)));
    if (kind == LayerKind::text || kind == LayerKind::icons)
        rows->addWidget(controls_.optionalColor(text("Text colour"), RGBA::black, field(&StyleRule::textColor)));
    rows->addWidget(controls_.optionalColor(text("Line"), RGBA::black, field(&StyleRule::stroke)));
    rows->addWidget(controls_.checkBox(text("Hide the layer"), field(&StyleRule::hide)));
}

QLayout* RuleRow::makeCondition() {
    auto* match =
        controls_.picker(text("Match"), {text("is"), text("contains"), text("is empty"), text("is not empty")},
                         byIndex(field(&StyleRule::match)));
    value_ = controls_.text(text("Value"), field(&StyleRule::value));
    value_->setPlaceholderText(text("Value"));
    auto* condition = new QHBoxLayout;
    condition->setSpacing(Style::small);
    condition->addWidget(match, 1);
    condition->addWidget(value_, 1);
    return condition;
}

void RuleRow::setRule(const StyleRule& rule, const std::vector<std::string>& fields) {
    rule_ = rule;
    fields_ = fields;
    refresh();
}

void RuleRow::change(const std::function<void(StyleRule&)>& edit) {
    // What is gone is not changed, but can still be shown.
    if (const StyleRule* current = actions_.find(rule_.id)) {
        StyleRule changed = *current;
        edit(changed);
        actions_.replace(changed);
    }
    if (const StyleRule* current = actions_.find(rule_.id)) rule_ = *current;
    refresh();
}

void RuleRow::refresh() {
    showFields();
    controls_.refresh();
    const bool compares = rule_.match == StyleRule::Match::equals || rule_.match == StyleRule::Match::contains;
    if (value_->isHidden() == compares) value_->setVisible(compares);
}

void RuleRow::showFields() {
    std::vector<std::string> offered = fields_;
    if (std::ranges::find(offered, rule_.field) == offered.end()) offered.push_back(rule_.field);
    if (offered != offered_) {
        offered_ = std::move(offered);
        QStringList labels;
        for (const std::string& name : offered_) labels += FieldLabel::inPicker(name);
        when_->clear();
        when_->addItems(labels);
    }
    when_->show(int(std::ranges::find(offered_, rule_.field) - offered_.begin()));
}

}  // namespace quorvel
