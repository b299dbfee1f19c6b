#include "AppModelTest.h"

#include <algorithm>
#include <fcntl.h>
#include <fstream>
#include <sys/stat.h>

namespace quorvel {

AppModel& AppModelTest::start(AppModel::Persist persist) {
    owned = std::make_unique<AppModel>(scheduler, desktop, persist);
    owned->setUndoManager(undo);
    return *owned;
}

AppModel& AppModelTest::restart() {
    owned->finishSaving([] {});
    settle();
    owned.reset();
    undo = std::make_shared<UndoStack>();
    return start();
}

DeckProject AppModelTest::deckNamed(const std::string& name) {
    DeckProject project;
    project.id = UUID::random();
    project.name = name;
    return project;
}

AppModelTest::Path AppModelTest::write(const std::string& name, std::string_view text) {
    const Path path = desktop.folder.path() / name;
    std::filesystem::create_directories(path.parent_path());
    {
        std::ofstream file(path, std::ios::binary | std::ios::trunc);
        file << text;
    }
    // Two writes within one tick of the file system's clock would have the same stamp.
    timespec times[2]{{0, UTIME_OMIT}, {1'700'000'000 + ++writes_, 0}};
    EXPECT_EQ(::utimensat(AT_FDCWD, path.c_str(), times, 0), 0);
    return path;
}

std::string AppModelTest::table(const std::vector<std::string>& names) {
    std::string text = "Name,Qty\n";
    for (const std::string& name : names) text += name + ",1\n";
    return text;
}

void AppModelTest::settle() {
    do scheduler.settle();
    while (scheduler.pollDescriptors() > 0);
}

void AppModelTest::settle(Milliseconds time) {
    for (; time > Milliseconds(0); time -= Milliseconds(5)) {
        settle();
        scheduler.advance(std::min(time, Milliseconds(5)));
    }
    settle();
}

AppModel& AppModelTest::withSpreadsheet(const std::string& name, std::string_view text) {
    if (!owned) start();
    model().useSpreadsheet(write(name, text));
    settle(Milliseconds(6000));
    return model();
}

std::optional<DeckProject> AppModelTest::saved() {
    for (DeckProject& project : library().loadDecks())
        if (project.id == state()._selection) return std::move(project);
    return std::nullopt;
}

std::vector<std::string> AppModelTest::titles() {
    std::vector<std::string> titles;
    for (const Card& card : state().open._deck->cards) titles.emplace_back(card.title());
    return titles;
}

}  // namespace quorvel
