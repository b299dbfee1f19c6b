#include "Durability/SavedRecord.h"

#include "Templates/TemplateJSON.h"

#include <array>

namespace quorvel {

namespace {

std::string design(int layers) {
    CardTemplate result("Courier", CardSize(), {}, {});
    result.id = UUID();
    for (int i = 0; i < layers; ++i) {
        Layer layer("Layer " + std::to_string(i), LayerKind::text, Frame(), "**{{title}}** pays {{cost}} “apples”");
        layer.id = UUID();
        layer.rules.resize(2);
        result.front.push_back(layer);
    }
    return templateFileText(result);
}

}  // namespace

std::string savedRecord(std::uint64_t number) {
    static const std::array designs{design(15), design(120), design(30), design(60), design(20)};
    std::string text = "{\n  \"save\": " + std::to_string(number) + ",\n  \"template\": ";
    text += designs[number % designs.size()];
    text += "}\n";
    return text;
}

}  // namespace quorvel
