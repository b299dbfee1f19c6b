#include "Library/Library.h"

#include "Foundation/AtomicFile.h"
#include "Foundation/FileBytes.h"
#include "Foundation/Parallel.h"
#include "Library/DeckProjectJSON.h"

#include <algorithm>
#include <new>
#include <unistd.h>

namespace quorvel {

namespace {

namespace fs = std::filesystem;

/// The records of the folder, sorted by name, since a folder lists its files in an order of its own.
std::vector<fs::path> recordFiles(const fs::path& folder) {
    std::vector<fs::path> files;
    std::error_code error;
    for (fs::directory_iterator entry(folder, error), end; !error && entry != end; entry.increment(error))
        if (entry->path().extension() == ".json") files.push_back(entry->path());
    std::ranges::sort(files);
    return files;
}

std::optional<DeckProject> readDeck(const fs::path& file) {
    try {
        const auto bytes = FileBytes::read(file, Library::largestRecord);
        if (!bytes) return std::nullopt;
        const auto json = parseJSON(*bytes);
        if (!json) return std::nullopt;
        auto project = deckProjectFromJSON(*json);
        return project ? std::optional(std::move(*project)) : std::nullopt;
    } catch (const std::bad_alloc&) {
        return std::nullopt;  // a text can ask for many times its size
    }
}

}  // namespace

fs::path Library::deckFile(const UUID& id) const {
    return decksFolder() / (id.text() + ".json");
}

std::vector<DeckProject> Library::loadDecks() const {
    AtomicFile::sweep(decksFolder());
    const std::vector<fs::path> files = recordFiles(decksFolder());
    std::vector<std::optional<DeckProject>> read(files.size());
    std::vector<DeckProject> decks;
    const auto produce = [&](std::size_t i) { read[i] = readDeck(files[i]); };
    const auto consume = [&](std::size_t i) {
        if (read[i]) decks.push_back(std::move(*read[i]));
        read[i].reset();
        return true;
    };
    forEachInOrder(files.size(), produce, consume, processorCount(), files.size());
    std::ranges::stable_sort(decks, {}, &DeckProject::created);
    return decks;
}

std::expected<void, FileFailure> Library::saveDeck(const DeckProject& project) const {
    std::error_code error;
    fs::create_directories(decksFolder(), error);
    if (error) return std::unexpected(FileFailure{decksFolder(), error.value(), FileFailure::Operation::makeFolder});
    return AtomicFile::write(deckFile(project.id), prettyJSON(toJSON(project)));
}

void Library::deleteDeck(const UUID& id) const {
    ::unlink(deckFile(id).c_str());  // unlike std::filesystem::remove it leaves a folder of that name alone
}

}  // namespace quorvel
