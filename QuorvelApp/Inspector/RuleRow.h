#pragma once

#include "Inspector/BoundControls.h"
#include "Templates/Layer.h"

#include <QWidget>
#include <functional>
#include <string>
#include <vector>

class QLayout;

namespace quorvel {

/// One conditional change of a layer: when it holds, and what it changes.
class RuleRow : public QWidget {
    Q_OBJECT
public:
    struct Actions {
        /// The rule of an id as the layer has it now; null when it is gone.
        std::function<const StyleRule*(const UUID& id)> find;
        /// Puts the rule in the place of that with its id.
        std::function<void(const StyleRule&)> replace;
        std::function<void(const UUID& id)> remove;
    };

    RuleRow(LayerKind kind, Actions actions, QWidget* parent = nullptr);

    /// Which rule it is for; it is shown with the next `setRule`.
    void setId(const UUID& id) { rule_.id = id; }
    const UUID& id() const { return rule_.id; }
    /// Shows the rule as the layer has it. `fields` are the names to choose from.
    void setRule(const StyleRule& rule, const std::vector<std::string>& fields);

    /// What it shows is about to be another layer's rule.
    void letGo() { controls_.letGo(); }

private:
    template <class Value>
    Binding<Value> field(Value StyleRule::* place);
    void change(const std::function<void(StyleRule&)>& edit);
    void refresh();
    void showFields();
    QLayout* makeCondition();

    Actions actions_;
    StyleRule rule_;  ///< as it was when last seen
    std::vector<std::string> fields_;
    std::vector<std::string> offered_;  ///< in the picker: `fields_`, and that of the rule
    BoundControls controls_;
    Picker* when_ = nullptr;
    TextField* value_ = nullptr;
};

}  // namespace quorvel
