#pragma once

#include "Controls/GroupedForm.h"
#include "Inspector/BoundControls.h"
#include "Inspector/RulesSection.h"
#include "Model/AppModel.h"

#include <functional>
#include <memory>

namespace quorvel {

/// Everything about one layer of a kind. Each control reads the layer by its id on the side that is shown, and writes
/// one field of it through the model, an undo step of its own. A layer that is gone shows as an empty one, and nothing
/// is written.
class LayerInspector : public GroupedForm {
    Q_OBJECT
public:
    LayerInspector(AppModel& model, LayerKind kind, QWidget* parent = nullptr);

    /// Which layer it is for. Another one wants a `letGo` before.
    void setLayer(const UUID& id) { id_ = id; }

    /// Shows what the layer is now.
    void refresh();

    /// Drops what is typed and not stored, and closes what is open.
    void letGo();

private:
    const Layer* layer() const;

    template <class Value>
    Binding<Value> field(Value Layer::* place);
    template <class Part, class Value>
    Binding<Value> field(Part Layer::* part, Value Part::* place);
    void change(const std::function<void(Layer&)>& edit);

    void addLayer(LayerKind kind);
    void addPosition();
    void addText();
    void addFont();
    void addBox();
    void addPicture();
    void addShape();
    void addIconRow();
    void addRules(LayerKind kind);

    // Rows that several sections have.
    void addContent(Section& section, bool offersIcons);
    void addNumber(Section& section, const QString& title, const QString& unit, Binding<double> binding);
    void addCheckBox(Section& section, const QString& title, Binding<bool> binding);
    void addFontFamily(Section& section);
    void addTextColor(Section& section);
    void addAlignment(Section& section);
    void addShapeKind(Section& section);
    void addFill(Section& section, const QString& title, const RGBA& fallback);
    void addLine(Section& section);

    AppModel& model_;
    UUID id_;
    BoundControls controls_;
    std::unique_ptr<RulesSection> rules_;
};

}  // namespace quorvel
