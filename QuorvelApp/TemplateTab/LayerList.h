#pragma once

#include "Model/AppModel.h"

#include <QWidget>

namespace quorvel {

class LayerRows;
class SidePicker;
class SymbolButton;

/// The left column: the side, its layers with the topmost first, and what can be done with the selected one.
class LayerList : public QWidget {
    Q_OBJECT
public:
    static constexpr int narrowest = 190;
    static constexpr int ideal = 220;
    static constexpr int widest = 280;

    /// The model outlives it.
    explicit LayerList(AppModel& model, QWidget* parent = nullptr);

private:
    QWidget* makeTools();
    void refresh(Changes changes);
    void flipHidden(const UUID& layer);

    AppModel& model_;
    SidePicker* side_ = nullptr;
    LayerRows* rows_ = nullptr;
    std::vector<SymbolButton*> forSelected_;
    Announcer::Subscription subscription_;
};

}  // namespace quorvel
