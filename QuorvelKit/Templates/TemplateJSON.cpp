#include "Templates/TemplateJSON.h"

#include "Foundation/JSONReader.h"

namespace quorvel {

namespace {

using std::expected;

void writeIfPresent(JSON& object, const char* key, const std::optional<RGBA>& color) {
    if (color) object[key] = color->hexString();
}

template <class T>
JSON listToJSON(const std::vector<T>& values, JSON (*elementToJSON)(const T&)) {
    JSON list = JSON::array();
    for (const T& value : values) list.push_back(elementToJSON(value));
    return list;
}

JSON sizeToJSON(const CardSize& size) {
    return {{"preset", textOf(size.preset)}, {"widthMM", size.widthMM}, {"heightMM", size.heightMM}};
}

expected<CardSize, JSONFailure> sizeFromJSON(const JSON& json) {
    JSONReader reader(json);
    CardSize size;
    reader.read("preset", size.preset);
    reader.read("widthMM", size.widthMM);
    reader.read("heightMM", size.heightMM);
    return reader.finish(size);
}

JSON frameToJSON(const Frame& frame) {
    return {{"x", frame.x}, {"y", frame.y}, {"width", frame.width}, {"height", frame.height}};
}

expected<Frame, JSONFailure> frameFromJSON(const JSON& json) {
    JSONReader reader(json);
    Frame frame;
    reader.read("x", frame.x);
    reader.read("y", frame.y);
    reader.read("width", frame.width);
    reader.read("height", frame.height);
    return reader.finish(frame);
}

JSON styleToJSON(const TextStyle& style) {
    return {
        {"fontFamily", style.fontFamily},
        {"size", style.size},
        {"color", style.color.hexString()},
        {"align", textOf(style.align)},
        {"verticalAlign", textOf(style.verticalAlign)},
        {"bold", style.bold},
        {"italic", style.italic},
        {"shrinkToFit", style.shrinkToFit},
        {"colorfulIcons", style.colorfulIcons},
    };
}

expected<TextStyle, JSONFailure> styleFromJSON(const JSON& json) {
    JSONReader reader(json);
    TextStyle style;
    reader.read("fontFamily", style.fontFamily);
    reader.read("size", style.size);
    reader.read("color", style.color);
    reader.read("align", style.align);
    reader.read("verticalAlign", style.verticalAlign);
    reader.read("bold", style.bold);
    reader.read("italic", style.italic);
    reader.read("shrinkToFit", style.shrinkToFit);
    reader.read("colorfulIcons", style.colorfulIcons);
    return reader.finish(std::move(style));
}

JSON ruleToJSON(const StyleRule& rule) {
    JSON json{
        {"id", rule.id.text()}, {"field", rule.field}, {"match", textOf(rule.match)},
        {"value", rule.value},  {"hide", rule.hide},
    };
    writeIfPresent(json, "fill", rule.fill);
    writeIfPresent(json, "stroke", rule.stroke);
    writeIfPresent(json, "textColor", rule.textColor);
    return json;
}

expected<StyleRule, JSONFailure> ruleFromJSON(const JSON& json) {
    JSONReader reader(json);
    StyleRule rule;
    reader.read("id", rule.id);
    reader.read("field", rule.field);
    reader.read("match", rule.match);
    reader.read("value", rule.value);
    reader.readIfPresent("fill", rule.fill);
    reader.readIfPresent("stroke", rule.stroke);
    reader.readIfPresent("textColor", rule.textColor);
    reader.read("hide", rule.hide);
    return reader.finish(std::move(rule));
}

JSON layerToJSON(const Layer& layer) {
    JSON json{
        {"id", layer.id.text()},
        {"name", layer.name},
        {"kind", textOf(layer.kind)},
        {"frame", frameToJSON(layer.frame)},
        {"content", layer.content},
        {"style", styleToJSON(layer.style)},
        {"strokeWidth", layer.strokeWidth},
        {"cornerRadiusMM", layer.cornerRadiusMM},
        {"shape", textOf(layer.shape)},
        {"imageFit", textOf(layer.imageFit)},
        {"iconSizeMM", layer.iconSizeMM},
        {"iconSpacingMM", layer.iconSpacingMM},
        {"opacity", layer.opacity},
        {"rules", listToJSON(layer.rules, ruleToJSON)},
        {"hidden", layer.hidden},
    };
    writeIfPresent(json, "fill", layer.fill);
    writeIfPresent(json, "stroke", layer.stroke);
    return json;
}

expected<Layer, JSONFailure> layerFromJSON(const JSON& json) {
    JSONReader reader(json);
    Layer layer;
    reader.read("id", layer.id);
    reader.read("name", layer.name);
    reader.read("kind", layer.kind);
    reader.read("frame", layer.frame, frameFromJSON);
    reader.read("content", layer.content);
    reader.read("style", layer.style, styleFromJSON);
    reader.readIfPresent("fill", layer.fill);
    reader.readIfPresent("stroke", layer.stroke);
    reader.read("strokeWidth", layer.strokeWidth);
    reader.read("cornerRadiusMM", layer.cornerRadiusMM);
    reader.read("shape", layer.shape);
    reader.read("imageFit", layer.imageFit);
    reader.read("iconSizeMM", layer.iconSizeMM);
    reader.read("iconSpacingMM", layer.iconSpacingMM);
    reader.read("opacity", layer.opacity);
    reader.readList("rules", layer.rules, ruleFromJSON);
    reader.read("hidden", layer.hidden);
    return reader.finish(std::move(layer));
}

}  // namespace

JSON toJSON(const CardTemplate& template_) {
    return {
        {"id", template_.id.text()},
        {"name", template_.name},
        {"size", sizeToJSON(template_.size)},
        {"bleedMM", template_.bleedMM},
        {"safeMM", template_.safeMM},
        {"cornerRadiusMM", template_.cornerRadiusMM},
        {"background", template_.background.hexString()},
        {"backBackground", template_.backBackground.hexString()},
        {"front", listToJSON(template_.front, layerToJSON)},
        {"back", listToJSON(template_.back, layerToJSON)},
    };
}

expected<CardTemplate, JSONFailure> cardTemplateFromJSON(const JSON& json) {
    JSONReader reader(json);
    CardTemplate template_;
    reader.read("id", template_.id);
    reader.read("name", template_.name);
    reader.read("size", template_.size, sizeFromJSON);
    reader.read("bleedMM", template_.bleedMM);
    reader.read("safeMM", template_.safeMM);
    reader.read("cornerRadiusMM", template_.cornerRadiusMM);
    reader.read("background", template_.background);
    reader.read("backBackground", template_.backBackground);
    reader.readList("front", template_.front, layerFromJSON);
    reader.readList("back", template_.back, layerFromJSON);
    return reader.finish(std::move(template_));
}

std::string templateFileText(const CardTemplate& template_) {
    return prettyJSON(toJSON(template_));
}

expected<CardTemplate, JSONFailure> templateFromFileText(std::string_view text) {
    const auto json = parseJSON(text);
    if (!json) return std::unexpected(json.error());
    auto template_ = cardTemplateFromJSON(*json);
    if (template_) template_->id = UUID::random();
    return template_;
}

}  // namespace quorvel
