#include "Inspector/RulesSection.h"

#include "Controls/Style.h"
#include "Controls/Wording.h"

#include <QPainter>
#include <QPushButton>
#include <QVBoxLayout>
#include <algorithm>
#include <utility>

namespace quorvel {

namespace {

/// The rules below each other, with a hairline between any two.
class RuleList : public QWidget {
public:
    RuleList() {
        auto* rows = new QVBoxLayout(this);
        rows->setContentsMargins(0, 0, 0, 0);
        rows->setSpacing(2 * Style::medium + 1);
    }

    QVBoxLayout& rows() { return *static_cast<QVBoxLayout*>(layout()); }

protected:
    void paintEvent(QPaintEvent*) override {
        QPainter painter(this);
        for (int index = 1; index < layout()->count(); ++index)
            painter.fillRect(0, layout()->itemAt(index)->geometry().top() - Style::medium - 1, width(), 1,
                             Style::line(palette()));
    }
};

const StyleRule* find(const std::vector<StyleRule>& rules, const UUID& id) {
    const auto found = std::ranges::find(rules, id, &StyleRule::id);
    return found == rules.end() ? nullptr : &*found;
}

StyleRule newRule(LayerKind kind, std::string type) {
    const auto fill = kind == LayerKind::text ? std::nullopt : std::optional(RGBA(0.55, 0.3, 0.5, 1));
    return {"type", StyleRule::Match::equals, std::move(type), fill, std::nullopt, std::nullopt, false};
}

}  // namespace

RulesSection::RulesSection(GroupedForm& form, LayerKind kind, Actions actions)
    : form_(form),
      kind_(kind),
      actions_(std::move(actions)),
      section_(form.addSection(text("Conditional style"))),
      list_(new RuleList),
      add_(new QPushButton(text("Add Rule"))) {
    section_.addRow(list_);
    section_.addRow(add_);
    section_.setFooter(
        text("When a card’s field matches, this layer changes colour or hides. Of several matching rules, the first "
             "one sets each colour."));
    section_.setRowVisible(list_, false);
    QObject::connect(add_, &QPushButton::clicked, list_, [this] { addRule(); });
}

void RulesSection::refresh() {
    const Layer* layer = actions_.layer();
    const std::vector<StyleRule> rules = layer ? layer->rules : std::vector<StyleRule>();
    if (!std::ranges::equal(rows_, rules, {}, &RuleRow::id, &StyleRule::id)) arrange(rules);
    isOther_ = false;
    if (rows_.empty()) return;
    const std::vector<std::string> fields = actions_.fieldNames();
    for (RuleRow* row : rows_) row->setRule(*find(rules, row->id()), fields);
}

void RulesSection::letGo() {
    for (RuleRow* row : rows_) row->letGo();
    isOther_ = true;
}

void RulesSection::arrange(const std::vector<StyleRule>& rules) {
    std::vector<RuleRow*> spare = std::exchange(rows_, {});
    QVBoxLayout& places = static_cast<RuleList*>(list_)->rows();
    for (const StyleRule& rule : rules) {
        // Nothing is being worked on in the rows of another layer: any will do.
        const auto known = isOther_ ? spare.begin() : std::ranges::find(spare, rule.id, &RuleRow::id);
        RuleRow* row = known == spare.end() ? makeRow() : *known;
        if (known != spare.end()) spare.erase(known);
        row->setId(rule.id);
        row->setAccessibleName(text("Rule ") + QString::number(rows_.size() + 1));
        if (places.indexOf(row) != int(rows_.size())) places.insertWidget(int(rows_.size()), row);
        row->show();
        rows_.push_back(row);
    }
    for (RuleRow* row : spare) {
        QWidget* focus = row->window()->focusWidget();
        if (focus && row->isAncestorOf(focus)) add_->setFocus();
        places.removeWidget(row);
        row->hide();
        row->deleteLater();  // it may be what called
    }
    section_.setRowVisible(list_, !rows_.empty());
    list_->update();
    actions_.rowsChanged();
}

RuleRow* RulesSection::makeRow() {
    const auto find = [this](const UUID& id) {
        const Layer* layer = actions_.layer();
        return layer ? quorvel::find(layer->rules, id) : nullptr;
    };
    return new RuleRow(
        kind_, {find, [this](const StyleRule& rule) { replace(rule); }, [this](const UUID& id) { remove(id); }}, list_);
}

void RulesSection::addRule() {
    const Layer* layer = actions_.layer();
    if (!layer) return;
    Layer changed = *layer;
    changed.rules.push_back(newRule(kind_, actions_.firstType()));
    actions_.update(changed);
    // When it has its place: what was added is to be seen, and one more can follow.
    const auto show = [this] {
        if (!rows_.empty()) form_.ensureWidgetVisible(rows_.back());
        form_.ensureWidgetVisible(add_);
    };
    QMetaObject::invokeMethod(&form_, show, Qt::QueuedConnection);
}

void RulesSection::replace(const StyleRule& rule) {
    const Layer* layer = actions_.layer();
    if (!layer) return;
    Layer changed = *layer;
    const auto found = std::ranges::find(changed.rules, rule.id, &StyleRule::id);
    if (found != changed.rules.end()) *found = rule;
    actions_.update(changed);
}

void RulesSection::remove(const UUID& id) {
    const Layer* layer = actions_.layer();
    if (!layer) return;
    Layer changed = *layer;
    std::erase_if(changed.rules, [&](const StyleRule& rule) { return rule.id == id; });
    actions_.update(changed);
}

}  // namespace quorvel
