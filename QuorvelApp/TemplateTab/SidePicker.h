#pragma once

#include "Controls/SegmentedPicker.h"
#include "Model/AppModel.h"

namespace quorvel {

/// The side on the canvas, front or back.
class SidePicker : public SegmentedPicker {
    Q_OBJECT
public:
    /// The model outlives it.
    explicit SidePicker(AppModel& model, QWidget* parent = nullptr);

    /// Shows what the model has now.
    void refresh();

private:
    AppModel& model_;
};

}  // namespace quorvel
