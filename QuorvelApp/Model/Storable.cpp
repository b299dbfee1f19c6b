#include "Model/Storable.h"

#include <algorithm>
#include <cmath>
#include <initializer_list>

namespace quorvel {
namespace {

bool areFinite(std::initializer_list<double> numbers) {
    return std::ranges::all_of(numbers, [](double number) { return std::isfinite(number); });
}

bool isStorable(const Layer& layer) {
    return areFinite({layer.frame.x, layer.frame.y, layer.frame.width, layer.frame.height, layer.style.size,
                      layer.strokeWidth, layer.cornerRadiusMM, layer.iconSizeMM, layer.iconSpacingMM, layer.opacity});
}

bool areStorable(const std::vector<Layer>& layers) {
    return std::ranges::all_of(layers, [](const Layer& layer) { return isStorable(layer); });
}

bool isStorable(const SheetSettings& sheet) {
    return areFinite({sheet.gutterMM, sheet.marginMM, sheet.backOffsetXMM, sheet.backOffsetYMM});
}

}  // namespace

bool isStorable(const CardTemplate& template_) {
    return areFinite({template_.size.widthMM, template_.size.heightMM, template_.bleedMM, template_.safeMM,
                      template_.cornerRadiusMM}) &&
           areStorable(template_.front) && areStorable(template_.back);
}

bool isStorable(const DeckProject& project) {
    return areFinite({project.created}) && isStorable(project.sheet) && isStorable(project.template_);
}

}  // namespace quorvel
