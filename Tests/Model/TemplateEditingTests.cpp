#include "Model/TemplateEditing.h"

#include <gtest/gtest.h>

namespace quorvel {
namespace {

CardTemplate named(const std::string& name) {
    CardTemplate design;
    design.name = name;
    return design;
}

TEST(TemplateEditing, AChangeThatChangesNothingIsNotAdmitted) {
    const auto stack = std::make_shared<UndoStack>();
    TemplateEditing editing;
    editing.setUndoManager(stack);
    EXPECT_FALSE(editing.admits(named("a"), named("a")));
    EXPECT_FALSE(stack->canUndo());
    EXPECT_TRUE(editing.admits(named("a"), named("b")));
    EXPECT_EQ(stack->undoName(), "Edit Template");
}

TEST(TemplateEditing, ADragIsOneStepHoweverManyChangesItMakes) {
    const auto stack = std::make_shared<UndoStack>();
    TemplateEditing editing;
    editing.setUndoManager(stack);
    editing.beginLayerDrag(named("a"));
    editing.beginLayerDrag(named("b"));
    EXPECT_TRUE(editing.admits(named("a"), named("b")));
    EXPECT_TRUE(editing.admits(named("b"), named("c")));
    EXPECT_EQ(stack->undoCount(), 1u);
    EXPECT_EQ(stack->undoName(), "Move Layer");
    editing.endLayerDrag();
    EXPECT_TRUE(editing.admits(named("c"), named("d")));
    EXPECT_EQ(stack->undoCount(), 2u);
}

TEST(TemplateEditing, WithoutAStackNothingIsUndoableAndNothingFails) {
    TemplateEditing editing;
    editing.beginLayerDrag(named("a"));
    EXPECT_TRUE(editing.coalescing());
    EXPECT_TRUE(editing.admits(named("a"), named("b")));
    {
        const auto gone = std::make_shared<UndoStack>();
        editing.setUndoManager(gone);
    }
    editing.endLayerDrag();
    EXPECT_TRUE(editing.admits(named("a"), named("b")));
    EXPECT_EQ(editing.undoManager(), nullptr);
}

}  // namespace
}  // namespace quorvel
