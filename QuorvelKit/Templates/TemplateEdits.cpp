#include "Templates/TemplateEdits.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace quorvel::TemplateEdits {

namespace {

constexpr double copyOffsetMM = 2;

std::vector<Layer>& layersOf(CardTemplate& template_, Side side) {
    return side == Side::front ? template_.front : template_.back;
}

auto firstWith(std::vector<Layer>& layers, const UUID& id) {
    return std::ranges::find(layers, id, &Layer::id);
}

CardTemplate resized(CardTemplate template_, const CardSize& size) {
    // A file may hold any size. From none at all there is nothing to scale by.
    const auto factor = [](double after, double before) { return before > 0 ? after / before : 1; };
    const double sx = factor(size.widthMM, template_.size.widthMM);
    const double sy = factor(size.heightMM, template_.size.heightMM);
    for (const Side side : {Side::front, Side::back}) {
        std::vector<Layer>& layers = layersOf(template_, side);
        layers = scaleLayers(std::move(layers), sx, sy);
    }
    template_.size = size;
    return template_;
}

}  // namespace

Layer newLayer(LayerKind kind, const CardSize& size) {
    const double w = size.widthMM;
    const double h = size.heightMM;
    const auto centered = [](std::string family) {
        return TextStyle(std::move(family), 10, RGBA::black, TextAlign::center, VerticalAlign::middle);
    };
    switch (kind) {
        case LayerKind::text: {
            Layer layer("Text", kind, {0.15 * w, 0.4 * h, 0.7 * w, 0.15 * h}, "{{title}}");
            layer.style = centered("Helvetica Neue");
            return layer;
        }
        case LayerKind::image:
            return {"Picture", kind, {0.1 * w, 0.2 * h, 0.8 * w, 0.35 * h}, "{{art}}"};
        case LayerKind::shape: {
            Layer layer("Shape", kind, {0.25 * w, 0.3 * h, 0.5 * w, 0.2 * h}, "");
            layer.fill = RGBA(0.85, 0.75, 0.5);
            layer.cornerRadiusMM = 1.5;
            return layer;
        }
        case LayerKind::icons: {
            Layer layer("Icons", kind, {0.1 * w, 0.8 * h, 0.8 * w, 6}, "{{icons}}");
            layer.style = centered("");
            return layer;
        }
    }
    return {};
}

const Layer* find(const CardTemplate& template_, Side side, const UUID& id) {
    const std::vector<Layer>& layers = template_.layers(side);
    const auto found = std::ranges::find(layers, id, &Layer::id);
    return found == layers.end() ? nullptr : &*found;
}

CardTemplate replacing(CardTemplate template_, Side side, Layer layer) {
    std::vector<Layer>& layers = layersOf(template_, side);
    if (const auto found = firstWith(layers, layer.id); found != layers.end()) *found = std::move(layer);
    return template_;
}

CardTemplate adding(CardTemplate template_, Side side, Layer layer) {
    layersOf(template_, side).push_back(std::move(layer));
    return template_;
}

CardTemplate removing(CardTemplate template_, Side side, const UUID& id) {
    std::erase_if(layersOf(template_, side), [&](const Layer& each) { return each.id == id; });
    return template_;
}

Layer copyOf(const Layer& layer) {
    Layer copy = layer;
    copy.id = UUID::random();
    copy.name += " copy";
    copy.frame.x += copyOffsetMM;
    copy.frame.y += copyOffsetMM;
    return copy;
}

CardTemplate addingAbove(CardTemplate template_, Side side, const UUID& source, Layer copy) {
    std::vector<Layer>& layers = layersOf(template_, side);
    const auto found = firstWith(layers, source);
    layers.insert(found == layers.end() ? found : found + 1, std::move(copy));
    return template_;
}

CardTemplate moving(CardTemplate template_, Side side, const UUID& id, std::int64_t delta) {
    std::vector<Layer>& layers = layersOf(template_, side);
    const auto found = firstWith(layers, id);
    if (found == layers.end()) return template_;
    const std::int64_t below = found - layers.begin();
    const std::int64_t above = layers.end() - found - 1;
    const auto target = found + std::clamp(delta, -below, above);
    if (target != found) std::swap(*found, *target);
    return template_;
}

CardTemplate nudging(CardTemplate template_, Side side, const UUID& id, double dx, double dy) {
    std::vector<Layer>& layers = layersOf(template_, side);
    if (const auto found = firstWith(layers, id); found != layers.end()) {
        found->frame.x += dx;
        found->frame.y += dy;
    }
    return template_;
}

std::vector<Layer> scaleLayers(std::vector<Layer> layers, double sx, double sy) {
    const auto scale = [](double& length, double factor) {
        if (const double scaled = length * factor; std::isfinite(scaled)) length = scaled;
    };
    for (Layer& layer : layers) {
        scale(layer.frame.x, sx);
        scale(layer.frame.width, sx);
        scale(layer.frame.y, sy);
        scale(layer.frame.height, sy);
        scale(layer.iconSizeMM, std::min(sx, sy));
    }
    return layers;
}

CardTemplate withPreset(CardTemplate template_, CardSize::Preset preset) {
    if (CardSize::dimensions(preset)) return resized(std::move(template_), CardSize(preset));
    template_.size.preset = preset;
    return template_;
}

CardTemplate withSize(CardTemplate template_, double widthMM, double heightMM) {
    const CardSize old = template_.size;
    const auto typed = [](double value, double before) { return std::isinf(value) ? before : value; };
    return resized(std::move(template_), CardSize::custom(typed(widthMM, old.widthMM), typed(heightMM, old.heightMM)));
}

}  // namespace quorvel::TemplateEdits
