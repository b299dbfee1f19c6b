#include "TemplateTab/LayerOverlay.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace quorvel {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class LayerOverlayTest : public testing::Test {
protected:
    CanvasGeometry geometry{CardTemplate("Poker", CardSize::poker, {}, {}), {500, 500}};
    std::vector<Layer> layers{{"low", LayerKind::shape, {10, 10, 30, 30}, ""},
                              {"middle", LayerKind::text, {20, 20, 30, 30}, ""},
                              {"high", LayerKind::image, {30, 30, 30, 30}, ""}};

    std::vector<LayerOverlay> overlays(const Layer* selected, Outlines outlines = Outlines::all) const {
        return layerOverlays(layers, selected, outlines, geometry);
    }
    std::vector<std::string> names(const Layer* selected, Outlines outlines = Outlines::all) const {
        std::vector<std::string> names;
        for (const LayerOverlay& each : overlays(selected, outlines)) names.push_back(each.name);
        return names;
    }
    Point middle(std::size_t index) const {
        const Rect rect = geometry.rect(layers[index].frame);
        return {rect.midX(), rect.midY()};
    }
};

TEST_F(LayerOverlayTest, EveryVisibleLayerHasOneInOrder) {
    EXPECT_THAT(names(nullptr), ElementsAre("low", "middle", "high"));
    layers[1].hidden = true;
    EXPECT_THAT(names(nullptr), ElementsAre("low", "high"));
    EXPECT_THAT(names(&layers[1]), ElementsAre("low", "high")) << "selected and hidden";
}

TEST_F(LayerOverlayTest, WithoutOutlinesOnlyTheSelectedLayerHasOne) {
    EXPECT_THAT(names(nullptr, Outlines::selectedOnly), IsEmpty());
    EXPECT_THAT(names(&layers[1], Outlines::selectedOnly), ElementsAre("middle"));
}

TEST_F(LayerOverlayTest, OnlyTheSelectedLayerHasAHandle) {
    for (const LayerOverlay& each : overlays(&layers[1])) {
        EXPECT_EQ(each.isSelected(), each.name == "middle");
        if (each.handle) {
            EXPECT_EQ(*each.handle, geometry.handle(layers[1].frame));
        }
    }
}

TEST_F(LayerOverlayTest, TheTopmostIsGrabbed) {
    const Rect low = geometry.rect(layers[0].frame);
    const auto all = overlays(nullptr);
    EXPECT_EQ(gripAt(middle(2), all), (Grip{Grip::Kind::move, layers[2].id}));
    EXPECT_EQ(gripAt({low.minX() + 1, low.minY() + 1}, all), (Grip{Grip::Kind::move, layers[0].id}));
    EXPECT_EQ(gripAt({low.minX() - 1, low.minY() + 1}, all), std::nullopt) << "drags know no margin";
    EXPECT_EQ(gripAt({1, 1}, all), std::nullopt);
    // Also when one below is the selected one.
    EXPECT_EQ(gripAt(middle(1), overlays(&layers[0])), (Grip{Grip::Kind::move, layers[2].id}));
}

TEST_F(LayerOverlayTest, TheHandleIsGrabbedWhateverLiesOverIt) {
    const Rect handle = geometry.handle(layers[0].frame);
    EXPECT_EQ(gripAt({handle.midX(), handle.midY()}, overlays(&layers[0])), (Grip{Grip::Kind::resize, layers[0].id}));
    EXPECT_EQ(gripAt({handle.midX(), handle.midY()}, overlays(nullptr)), (Grip{Grip::Kind::move, layers[2].id}));
}

TEST_F(LayerOverlayTest, ALayerWithoutHeightCanBeGrabbed) {
    layers = {{"line", LayerKind::shape, {10, 50, 40, 0}, ""}};
    const Rect line = geometry.rect(layers[0].frame);
    EXPECT_TRUE(gripAt({line.midX(), line.y + 1.5}, overlays(nullptr)));
    EXPECT_FALSE(gripAt({line.midX(), line.y + 2.5}, overlays(nullptr)));
}

}  // namespace
}  // namespace quorvel
