#include "Model/UndoStack.h"

#include <gtest/gtest.h>
#include <random>

namespace quorvel {
namespace {

CardTemplate design(std::string name) {
    CardTemplate result;
    result.name = std::move(name);
    return result;
}

/// A design behind a gate like the application's: what changes nothing registers nothing.
struct Editor {
    UndoStack stack;
    CardTemplate current = design("0");
    int restores = 0;

    void set(const CardTemplate& next, const std::string& step = "Edit") {
        if (next == current) return;
        stack.registerStep(step, current);
        current = next;
    }
    void edit(std::string name, const std::string& step = "Edit") { set(design(std::move(name)), step); }

    UndoStack::Restore restore() {
        return [this](const CardTemplate& before) {
            ++restores;
            set(before);
        };
    }
    void undo() { stack.undo(restore()); }
    void redo() { stack.redo(restore()); }
};

using Name = std::optional<std::string>;

TEST(UndoStack, startsEmpty) {
    Editor editor;
    EXPECT_FALSE(editor.stack.canUndo());
    EXPECT_FALSE(editor.stack.canRedo());
    EXPECT_EQ(editor.stack.undoName(), Name());
    EXPECT_EQ(editor.stack.redoName(), Name());
    editor.undo();
    editor.redo();
    EXPECT_EQ(editor.restores, 0);
}

TEST(UndoStack, goesBackAndForthStepByStep) {
    Editor editor;
    for (const char* name : {"1", "2", "3"}) editor.edit(name);
    for (int round = 0; round < 3; ++round) {
        for (const char* name : {"2", "1", "0"}) {
            editor.undo();
            EXPECT_EQ(editor.current.name, name);
        }
        EXPECT_FALSE(editor.stack.canUndo());
        editor.undo();
        for (const char* name : {"1", "2", "3"}) {
            editor.redo();
            EXPECT_EQ(editor.current.name, name);
        }
        EXPECT_FALSE(editor.stack.canRedo());
        editor.redo();
        EXPECT_EQ(editor.current.name, "3");
    }
}

TEST(UndoStack, aNewStepForgetsWhatCouldBeRedone) {
    Editor editor;
    editor.edit("1");
    editor.edit("2");
    editor.undo();
    EXPECT_TRUE(editor.stack.canRedo());
    editor.edit("3");
    EXPECT_FALSE(editor.stack.canRedo());
    editor.undo();
    EXPECT_EQ(editor.current.name, "1");
    editor.redo();
    EXPECT_EQ(editor.current.name, "3");
}

TEST(UndoStack, undoingAndRedoingForgetNothing) {
    Editor editor;
    for (const char* name : {"1", "2", "3"}) editor.edit(name);
    editor.undo();
    editor.undo();
    editor.redo();
    EXPECT_EQ(editor.current.name, "2");
    EXPECT_TRUE(editor.stack.canRedo());
    editor.redo();
    EXPECT_EQ(editor.current.name, "3");
    EXPECT_EQ(editor.stack.undoCount(), 3u);
}

TEST(UndoStack, anInverseBearsTheNameItWasRegisteredWith) {
    Editor editor;
    editor.edit("1", "Move");
    EXPECT_EQ(editor.stack.undoName(), "Move");
    EXPECT_EQ(editor.stack.redoName(), Name());
    editor.undo();
    EXPECT_EQ(editor.stack.undoName(), Name());
    EXPECT_EQ(editor.stack.redoName(), "Edit");
    editor.redo();
    EXPECT_EQ(editor.stack.undoName(), "Edit");
    EXPECT_EQ(editor.stack.redoName(), Name());
}

TEST(UndoStack, tellsTheNamesOfTheNewestSteps) {
    Editor editor;
    editor.edit("1", "First");
    editor.edit("2", "Second");
    EXPECT_EQ(editor.stack.undoName(), "Second");
    editor.undo();
    EXPECT_EQ(editor.stack.undoName(), "First");
    EXPECT_EQ(editor.stack.redoName(), "Edit");
}

TEST(UndoStack, aStepThatChangesNothingLeavesNoInverse) {
    Editor editor;
    editor.edit("1");
    editor.stack.registerStep("Move", editor.current);
    editor.undo();
    EXPECT_EQ(editor.restores, 1);
    EXPECT_EQ(editor.current.name, "1");
    EXPECT_FALSE(editor.stack.canRedo());
    editor.undo();
    EXPECT_EQ(editor.current.name, "0");
    EXPECT_EQ(editor.stack.redoName(), "Edit");
}

TEST(UndoStack, stepsAreCopiesOfTheWholeDesign) {
    Editor editor;
    CardTemplate before("Design", CardSize::tarot, {Layer("a", LayerKind::text, {1, 2, 3, 4}, "words")},
                        {Layer("b", LayerKind::image, {}, "{{art}}")});
    before.bleedMM = 1;
    editor.current = before;
    CardTemplate after = before;
    after.front.clear();
    after.bleedMM = 2;
    editor.set(after);
    editor.undo();
    EXPECT_EQ(editor.current, before);
    editor.redo();
    EXPECT_EQ(editor.current, after);
}

TEST(UndoStack, everythingCanBeForgotten) {
    Editor editor;
    editor.edit("1");
    editor.edit("2");
    editor.undo();
    editor.stack.removeAllActions();
    EXPECT_FALSE(editor.stack.canUndo());
    EXPECT_FALSE(editor.stack.canRedo());
    EXPECT_EQ(editor.stack.undoCount(), 0u);
    editor.edit("3");
    editor.undo();
    EXPECT_EQ(editor.current.name, "1");
}

TEST(UndoStack, everythingCanBeForgottenWhileAStepRuns) {
    for (const bool undoing : {true, false}) {
        Editor editor;
        for (const char* name : {"1", "2", "3"}) editor.edit(name);
        if (!undoing) editor.undo();
        const std::string expected = undoing ? "2" : "3";
        std::string restored;
        const auto restore = [&](const CardTemplate& before) {
            editor.stack.registerStep("inverse", editor.current);
            editor.stack.removeAllActions();
            restored = before.name;  // the step itself lives until it has run
        };
        undoing ? editor.stack.undo(restore) : editor.stack.redo(restore);
        EXPECT_EQ(restored, expected);
        EXPECT_FALSE(editor.stack.canUndo());
        EXPECT_FALSE(editor.stack.canRedo());
        editor.edit("4");
        EXPECT_EQ(editor.stack.undoCount(), 1u);
        EXPECT_FALSE(editor.stack.canRedo());
    }
}

TEST(UndoStack, afterForgettingAStepThatRunsRegistersNewOnes) {
    for (const bool undoing : {true, false}) {
        Editor editor;
        editor.edit("1");
        if (!undoing) editor.undo();
        const auto restore = [&](const CardTemplate&) {
            editor.stack.removeAllActions();
            editor.stack.registerStep("of the next deck", editor.current);
        };
        undoing ? editor.stack.undo(restore) : editor.stack.redo(restore);
        EXPECT_EQ(editor.stack.undoName(), "of the next deck");
        EXPECT_FALSE(editor.stack.canRedo());
    }
}

TEST(UndoStack, aStepThatRunsStartsNoOther) {
    Editor editor;
    for (const char* name : {"1", "2", "3"}) editor.edit(name);
    int inner = 0;
    editor.stack.undo([&](const CardTemplate& before) {
        editor.set(before);
        const auto count = [&](const CardTemplate&) { ++inner; };
        editor.stack.undo(count);
        editor.stack.redo(count);
        editor.stack.removeAllActions();
        editor.edit("x");
        editor.stack.undo(count);
    });
    EXPECT_EQ(inner, 0);
    EXPECT_EQ(editor.stack.undoCount(), 1u);
}

/// Against a list of all designs with a place in it.
TEST(UndoStack, followsAModelThroughRandomUse) {
    std::mt19937 random(5);
    for (int round = 0; round < 50; ++round) {
        Editor editor;
        std::vector<std::string> history{"0"};
        std::size_t place = 0;
        for (int step = 0; step < 200; ++step) {
            switch (random() % 5) {
                case 0:
                case 1: {
                    const std::string name = std::to_string(random() % 3);
                    editor.edit(name);
                    if (name == history[place]) break;
                    history.resize(++place);
                    history.push_back(name);
                    break;
                }
                case 2:
                case 3:
                    editor.undo();
                    if (place > 0) --place;
                    break;
                default:
                    editor.redo();
                    if (place + 1 < history.size()) ++place;
            }
            ASSERT_EQ(editor.current.name, history[place]);
            ASSERT_EQ(editor.stack.undoCount(), place);
            ASSERT_EQ(editor.stack.canRedo(), place + 1 < history.size());
        }
    }
}

}  // namespace
}  // namespace quorvel
