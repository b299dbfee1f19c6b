#pragma once

#include "Model/AppModel.h"

#include <QWidget>
#include <map>
#include <optional>

class QStackedLayout;

namespace quorvel {

class GroupedForm;
class LayerInspector;
class TemplateSettings;

/// The right column of the Template tab: the selected layer's properties, or the template's own while none is selected.
class Inspector : public QWidget {
    Q_OBJECT
public:
    /// The model outlives it.
    explicit Inspector(AppModel& model, QWidget* parent = nullptr);

protected:
    void showEvent(QShowEvent* event) override;

private:
    /// What the form is for.
    struct Subject {
        std::optional<UUID> deck;
        Side side = Side::front;
        std::optional<UUID> layer;
        std::optional<LayerKind> kind;
        bool operator==(const Subject&) const = default;
    };

    void refresh();
    void turnTo(const Subject& subject);
    void letGo();
    /// The form of a kind of layer, made when it is needed first, if not before.
    LayerInspector& form(LayerKind kind);
    /// Makes one of those that are still missing, between two events, and sees to the next: a click on a layer is
    /// answered at once.
    void prepareForm();
    void addPage(GroupedForm& page);

    AppModel& model_;
    QStackedLayout* pages_ = nullptr;
    TemplateSettings* settings_ = nullptr;
    std::map<LayerKind, LayerInspector*> forms_;
    Subject subject_;
    Announcer::Subscription subscription_;
};

}  // namespace quorvel
