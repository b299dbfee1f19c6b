#pragma once

#include "Controls/GroupedForm.h"
#include "Inspector/BoundControls.h"
#include "Model/AppModel.h"

#include <functional>

namespace quorvel {

/// What a design has besides its layers: name, size, grounds, and the files it comes from and goes to. Each change is
/// an undo step of its own.
class TemplateSettings : public GroupedForm {
    Q_OBJECT
public:
    explicit TemplateSettings(AppModel& model, QWidget* parent = nullptr);

    /// Shows what the design is now, and the ground of the side that is shown.
    void refresh();

    /// Drops what is typed and not stored, and closes what is open.
    void letGo() { controls_.letGo(); }

private:
    template <class Value>
    Binding<Value> field(Value CardTemplate::* place);
    void change(const std::function<CardTemplate(CardTemplate)>& edit);

    void addName();
    void addSize();
    void addGround();
    void addFiles();
    QWidget* addNumber(Section& section, const QString& title, Binding<double> binding);

    AppModel& model_;
    BoundControls controls_;
};

}  // namespace quorvel
