// What the start of the program waits for: reading all deck records, and looking for files that were renamed.

#include "Library/DeckProjectJSON.h"
#include "Library/Library.h"
#include "Samples/SampleTemplates.h"

#include <benchmark/benchmark.h>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

namespace {

using namespace quorvel;
namespace fs = std::filesystem;

class Folder {
public:
    Folder() {
        std::string pattern = (fs::temp_directory_path() / "quorvel-benchmark-XXXXXX").string();
        if (!mkdtemp(pattern.data())) std::abort();
        path = pattern;
    }
    ~Folder() { fs::remove_all(path); }

    fs::path path;
};

/// The classic design grown to `layers` layers, with all references set.
DeckProject deck(std::size_t layers) {
    DeckProject project;
    project.id = UUID::random();
    project.name = "The Glass Orchard";
    project.template_ = SampleTemplates::make(SampleTemplates::Kind::classic, project.name);
    auto& front = project.template_.front;
    const std::size_t own = front.size();
    while (front.size() + project.template_.back.size() < layers) {
        front.push_back(front[front.size() % own]);
        front.back().id = UUID::random();
    }
    for (const char* field : {"title", "type", "text", "art", "cost", "quantity"})
        project.mapping.columns[field] = field;
    project.source = Bookmark::make("/usr/bin/env").value_or(Bookmark());
    project.artFolder = Bookmark::make("/usr/bin").value_or(Bookmark());
    return project;
}

void loadDecks(benchmark::State& state) {
    const Folder folder;
    const Library library{folder.path};
    fs::create_directories(library.decksFolder());
    // Written without the library's care for crashes, which takes a second for so many.
    for (std::int64_t i = 0; i < state.range(0); ++i) {
        DeckProject project = deck(20);
        project.created = static_cast<double>(i * 7919 % 1000);
        std::ofstream(library.deckFile(project.id)) << prettyJSON(toJSON(project));
    }
    std::size_t count = 0;
    for (auto _ : state) count = library.loadDecks().size();
    state.counters["decks"] = static_cast<double>(count);
}
BENCHMARK(loadDecks)->Arg(500)->Unit(benchmark::kMillisecond)->UseRealTime();

void encodeDeck(benchmark::State& state) {
    const DeckProject project = deck(20);
    std::size_t size = 0;
    for (auto _ : state) size = prettyJSON(toJSON(project)).size();
    state.counters["bytes"] = static_cast<double>(size);
}
BENCHMARK(encodeDeck)->Unit(benchmark::kMicrosecond);

void makeFiles(const fs::path& folder, int count) {
    fs::create_directories(folder);
    for (int i = 0; i < count; ++i) std::ofstream(folder / ("picture " + std::to_string(i) + ".png"));
}

/// A file that can't be found, in a folder that makes the search as long as it can be.
void measureLostFile(benchmark::State& state, const fs::path& file) {
    fs::create_directories(file.parent_path());
    std::ofstream(file) << "Name\n";
    const auto bookmark = Bookmark::make(file);
    fs::remove(file);
    for (auto _ : state) benchmark::DoNotOptimize(bookmark->resolve());
}

void lostFileAmongFiles(benchmark::State& state) {
    const Folder folder;
    makeFiles(folder.path / "a/b/c", 20'000);
    measureLostFile(state, folder.path / "a/b/c/cards.csv");
}
BENCHMARK(lostFileAmongFiles)->Unit(benchmark::kMillisecond);

void lostFileAmongFolders(benchmark::State& state) {
    const Folder folder;
    for (int i = 0; i < 5'000; ++i) fs::create_directories(folder.path / "a/b/c" / ("game " + std::to_string(i)));
    measureLostFile(state, folder.path / "a/b/c/cards.csv");
}
BENCHMARK(lostFileAmongFolders)->Unit(benchmark::kMillisecond);

void lostFileInATree(benchmark::State& state) {
    const Folder folder;
    for (int i = 0; i < 30; ++i)
        for (int j = 0; j < 10; ++j)
            makeFiles(folder.path / "a/b" / ("game " + std::to_string(i)) / std::to_string(j), 20);
    measureLostFile(state, folder.path / "a/b/c/cards.csv");
}
BENCHMARK(lostFileInATree)->Unit(benchmark::kMillisecond);

void lostFolderAmongFolders(benchmark::State& state) {
    const Folder folder;
    for (int i = 0; i < 5'000; ++i) fs::create_directories(folder.path / "a/b/c" / ("game " + std::to_string(i)));
    const fs::path lost = folder.path / "a/b/c/lost";
    fs::create_directories(lost);
    std::ofstream(lost / "cards.csv") << "Name\n";
    const auto bookmark = Bookmark::make(lost / "cards.csv");
    fs::remove_all(lost);
    for (auto _ : state) benchmark::DoNotOptimize(bookmark->resolve());
}
BENCHMARK(lostFolderAmongFolders)->Unit(benchmark::kMillisecond);

}  // namespace
