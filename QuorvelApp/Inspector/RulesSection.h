#pragma once

#include "Controls/GroupedForm.h"
#include "Inspector/RuleRow.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

class QPushButton;

namespace quorvel {

/// The section "Conditional style": the rules of a layer, in order. A row stays as long as its rule does, so that
/// nothing that is worked on goes away under the hand.
class RulesSection {
public:
    struct Actions {
        /// The layer as the design has it now; null when it is gone.
        std::function<const Layer*()> layer;
        std::function<void(const Layer&)> update;
        std::function<std::vector<std::string>()> fieldNames;
        /// The type of the first card; empty with no cards.
        std::function<std::string()> firstType;
        /// There are other rows than before.
        std::function<void()> rowsChanged;
    };

    /// The form outlives it and owns the widgets.
    RulesSection(GroupedForm& form, LayerKind kind, Actions actions);

    /// Shows the rules that the layer has now.
    void refresh();

    /// The next refresh is for another layer.
    void letGo();

private:
    void arrange(const std::vector<StyleRule>& rules);
    RuleRow* makeRow();
    void addRule();
    void replace(const StyleRule& rule);
    void remove(const UUID& id);

    GroupedForm& form_;
    LayerKind kind_;
    Actions actions_;
    GroupedForm::Section section_;
    QWidget* list_ = nullptr;
    QPushButton* add_ = nullptr;
    std::vector<RuleRow*> rows_;
    bool isOther_ = false;  ///< the rows are those of a layer that is no longer shown
};

}  // namespace quorvel
