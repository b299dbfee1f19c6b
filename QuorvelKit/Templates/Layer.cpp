#include "Templates/Layer.h"

#include <utility>

namespace quorvel {

Layer::Layer(std::string layerName, LayerKind layerKind, Frame place, std::string text)
    : id(UUID::random()), name(std::move(layerName)), kind(layerKind), frame(place), content(std::move(text)) {}

Layer Layer::resolved(const Card* card) const {
    Layer result = *this;
    if (!card) return result;

    std::optional<RGBA> newFill;
    std::optional<RGBA> newStroke;
    std::optional<RGBA> newTextColor;
    const auto keepFirst = [](std::optional<RGBA>& kept, const std::optional<RGBA>& offered) {
        if (!kept) kept = offered;
    };
    for (const StyleRule& rule : rules) {
        if (!rule.matches(*card)) continue;
        if (rule.hide) result.hidden = true;
        keepFirst(newFill, rule.fill);
        keepFirst(newStroke, rule.stroke);
        keepFirst(newTextColor, rule.textColor);
    }
    if (newFill) result.fill = newFill;
    if (newStroke) result.stroke = newStroke;
    if (newTextColor) result.style.color = *newTextColor;
    return result;
}

}  // namespace quorvel
