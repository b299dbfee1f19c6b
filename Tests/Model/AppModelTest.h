#pragma once

#include "Model/AppModel.h"
#include "Support/Desktop/FakeDesktop.h"
#include "Support/Desktop/ManualScheduler.h"

#include <chrono>
#include <filesystem>
#include <gtest/gtest.h>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quorvel {

/// A model with a clock moved by hand, a desktop without a screen, and real files in a folder of their own.
class AppModelTest : public testing::Test {
protected:
    using Milliseconds = std::chrono::milliseconds;
    using Path = std::filesystem::path;

    ManualScheduler scheduler;
    FakeDesktop desktop;
    std::shared_ptr<UndoStack> undo = std::make_shared<UndoStack>();
    std::unique_ptr<AppModel> owned;

    /// Starts the program, without letting anything run.
    AppModel& start(AppModel::Persist persist = AppModel::Persist::yes);
    /// Ends it and starts it again on the same files.
    AppModel& restart();
    AppModel& model() { return *owned; }
    const AppState& state() { return owned->state(); }

    static DeckProject deckNamed(const std::string& name);

    /// Writes a file of the user's, as a program does that overwrites in place. The time of change always moves on.
    Path write(const std::string& name, std::string_view text);
    /// A header line "Name,Qty" and a line for each of `names`.
    static std::string table(const std::vector<std::string>& names);

    /// Lets everything run that is due now, and reads what the watched files tell.
    void settle();
    /// The same with time passing.
    void settle(Milliseconds time);
    /// A model with one deck on this spreadsheet, loaded and at rest, nothing left to save.
    AppModel& withSpreadsheet(const std::string& name, std::string_view text);

    Library library() { return {desktop.applicationSupport()}; }
    /// What is on disk of the open deck.
    std::optional<DeckProject> saved();
    std::vector<std::string> titles();

private:
    int writes_ = 0;
};

}  // namespace quorvel
