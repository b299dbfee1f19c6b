#include "Controls/Symbols.h"
#include "Inspector/LayerKinds.h"

#include <gtest/gtest.h>

namespace quorvel {

TEST(LayerKinds, HaveTheirLabelsAndSymbols) {
    const struct {
        LayerKind kind;
        const char* label;
        const char* symbol;
    } cases[] = {{LayerKind::text, "Text", "textformat"},
                 {LayerKind::image, "Picture", "photo"},
                 {LayerKind::shape, "Shape", "square.on.circle"},
                 {LayerKind::icons, "Icon Row", "star.square.on.square"}};
    for (const auto& each : cases) {
        EXPECT_EQ(LayerKinds::label(each.kind), each.label);
        EXPECT_EQ(LayerKinds::symbol(each.kind), each.symbol);
        EXPECT_TRUE(Symbols::names().contains(each.symbol));
    }
}

}  // namespace quorvel
