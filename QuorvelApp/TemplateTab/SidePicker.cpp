#include "TemplateTab/SidePicker.h"

namespace quorvel {

SidePicker::SidePicker(AppModel& model, QWidget* parent)
    : SegmentedPicker("Side", QStringList{"Front", "Back"}, parent), model_(model) {
    connect(this, &SegmentedPicker::activated, this,
            [this](int index) { model_.setSide(index == 0 ? Side::front : Side::back); });
    refresh();
}

void SidePicker::refresh() {
    setCurrentIndex(model_.state()._side == Side::front ? 0 : 1);
}

}  // namespace quorvel
