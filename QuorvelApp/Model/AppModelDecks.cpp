// What the user does to decks and to the files that they refer to.

#include "Model/AppModel.h"
#include "Model/DeckOperations.h"
#include "Model/Storable.h"
#include "Samples/SampleDeck.h"
#include "Spreadsheet/DataLoader.h"

#include <algorithm>
#include <utility>

namespace quorvel {
namespace {

FileType spreadsheetType() {
    FileType type{"Spreadsheets", {}};
    for (const std::string_view extension : DataLoader::spreadsheetExtensions) type.extensions.emplace_back(extension);
    // They can't be read, but choosing one brings the sentence that says what to do.
    type.extensions.insert(type.extensions.end(), {"numbers", "xls"});
    return type;
}

}  // namespace

// Storing

void AppModel::commitProject(const DeckProject& project) {
    DeckProject* current = openProject();
    if (!current || project == *current) return;
    announcer_.note(Change::decks);
    *current = project;
    saveSoon(project);
}

void AppModel::saveSoon(const DeckProject& project) {
    if (persist_ == Persist::yes) delayedSave_.schedule(project);
}

void AppModel::saveAtOnce(const DeckProject& project) {
    if (persist_ == Persist::no) return;
    delayedSave_.forget(project.id);
    writer_.save(project);
}

void AppModel::updateProject(DeckProject project) {
    DeckProject* current = openProject();
    if (!current || current->id != project.id || project == *current || !isStorable(project)) return;
    const Announcer::Turn turn(announcer_);
    announcer_.note(Change::decks);
    const DeckProject old = std::exchange(*current, std::move(project));
    saveSoon(*current);

    const bool newMapping = current->mapping != old.mapping;
    if (!newMapping && current->template_ == old.template_) {
        if (current->sheet != old.sheet) renderSheet();
        return;
    }
    if (newMapping && state_.open._table) {
        announcer_.note(Change::openDeck);
        release(std::exchange(state_.open._deck, std::make_shared<const Deck>(state_.open._table, current->mapping)));
        refreshMissingArt();
    }
    renderAll();
}

void AppModel::finishSaving(Scheduler::Job done) {
    delayedSave_.flush();
    writer_.whenIdle(std::move(done));
}

// The list of decks

void AppModel::addDeck(DeckProject project) {
    const UUID id = project.id;
    announcer_.note(Change::decks);
    saveAtOnce(project);
    state_._decks.push_back(std::move(project));
    setSelection(id);
}

void AppModel::newDeck(SampleTemplates::Kind kind, std::string_view name) {
    const Announcer::Turn turn(announcer_);
    addDeck(DeckOperations::newDeck(kind, name, now()));
    setTab(Tab::data);
}

void AppModel::openSampleDeck(SampleTemplates::Kind kind) {
    // A second click, while nothing has come of the first, is no wish for two.
    if (state_._isPaintingSample) return;
    const Announcer::Turn turn(announcer_);
    announcer_.note(Change::status);
    state_._isPaintingSample = true;
    const UUID id = UUID::random();
    const std::filesystem::path parent =
        persist_ == Persist::yes ? library_.sampleFolder() : desktop_.temporaryFolder() / "Showcase";
    const std::filesystem::path folder = parent / id.text();
    sampleTask_ = inBackground(
        scheduler_,
        [folder] {
            std::error_code ignored;
            std::filesystem::remove_all(folder, ignored);
            return SampleDeck::write(folder);
        },
        // A sample that couldn't be written is a deck that says what it misses.
        [this, kind, id, folder](const auto&) {
            const Announcer::Turn later(announcer_);
            announcer_.note(Change::status);
            state_._isPaintingSample = false;
            addDeck(DeckOperations::sampleDeck(kind, id, folder, now()));
            setTab(Tab::cards);
        });
}

void AppModel::renameDeck(UUID id, std::string_view name) {
    DeckProject* deck = project(id);
    auto renamed = DeckOperations::renamed(name);
    if (!deck || !renamed) return;
    const Announcer::Turn turn(announcer_);
    announcer_.note(Change::decks);
    deck->name = std::move(*renamed);
    saveAtOnce(*deck);
}

void AppModel::duplicateDeck(UUID id) {
    const DeckProject* deck = project(id);
    if (!deck) return;
    const Announcer::Turn turn(announcer_);
    addDeck(DeckOperations::duplicate(*deck, now()));
}

void AppModel::deleteDeck(UUID id) {
    const auto found = std::ranges::find(state_._decks, id, &DeckProject::id);
    if (found == state_._decks.end()) return;
    const Announcer::Turn turn(announcer_);
    announcer_.note(Change::decks);
    const DeckProject deleted = std::move(*found);
    state_._decks.erase(found);
    delayedSave_.forget(id);
    if (state_._selection == id)
        setSelection(state_._decks.empty() ? std::nullopt : std::optional(state_._decks.front().id));
    if (persist_ == Persist::no) return;
    writer_.remove(id, DeckOperations::folderToRemove(deleted, state_._decks, library_));
}

// The files of the open deck

void AppModel::useSpreadsheet(const std::filesystem::path& url) {
    const Announcer::Turn turn(announcer_);
    if (!currentProject()) newDeck(SampleTemplates::Kind::classic, url.stem().string());
    auto bookmark = Bookmark::make(url);
    if (!bookmark)
        return setError(std::string(appName) + " couldn’t keep access to “" + url.filename().string() + "”.");
    announcer_.note(Change::decks);
    DeckProject& current = *openProject();
    current = DeckOperations::withSpreadsheet(std::move(current), std::move(*bookmark));
    saveAtOnce(current);
    loadCycle_.stopWatching();  // a late save of the old file is no news
    whenLoaded_.clear();        // nor is what its reload would have told
    openCurrentDeck([this] {
        if (!state_.open._loadError) setTab(Tab::cards);
    });
}

void AppModel::chooseSpreadsheet() {
    const auto shownFor = state_._selection;
    const auto file = desktop_.chooseFile({"Choose the Spreadsheet of Cards",
                                           "CSV, TSV or Excel (.xlsx). In Numbers, use File › Export To › CSV first.",
                                           {spreadsheetType()}});
    // Jobs went on while the panel was shown: the answer isn't meant for a deck that was opened by one.
    if (file && state_._selection == shownFor) useSpreadsheet(*file);
}

void AppModel::reopenWith(const DeckProject& project) {
    const Announcer::Turn turn(announcer_);
    commitProject(project);
    openCurrentDeck();
}

void AppModel::chooseFolder(FolderKind kind) {
    if (!currentProject()) return;
    FolderPanel panel{"Choose the Art Folder",
                      "The folder with the pictures your spreadsheet’s art column names (usually the spreadsheet’s own "
                      "folder).",
                      "Use Folder",
                      {}};
    if (kind == FolderKind::icons) {
        panel.title = "Choose the Icons Folder";
        panel.message = "Pictures here named like the icon (coin.png, coin.pdf) replace the built-in icons.";
    }
    if (state_.open._sourceURL) panel.start = state_.open._sourceURL->parent_path();
    const auto shownFor = state_._selection;
    const auto folder = desktop_.chooseFolder(panel);
    if (!folder || state_._selection != shownFor) return;
    const DeckProject* current = currentProject();
    if (!current) return;
    auto bookmark = Bookmark::make(*folder);
    if (!bookmark) return;
    DeckProject next = *current;
    (kind == FolderKind::icons ? next.iconFolder : next.artFolder) = std::move(*bookmark);
    reopenWith(next);
}

void AppModel::clearIconFolder() {
    const DeckProject* current = currentProject();
    if (!current) return;
    DeckProject next = *current;
    next.iconFolder.reset();
    reopenWith(next);
}

void AppModel::chooseSheet(std::int64_t index) {
    const DeckProject* current = currentProject();
    if (!current || current->sheetIndex == index) return;
    DeckProject next = *current;
    next.sheetIndex = index;
    next.mapping = {};  // columns of another worksheet are other columns
    reopenWith(next);
}

void AppModel::setFieldColumn(Field field, const std::string& column) {
    const DeckProject* current = currentProject();
    if (!current) return;
    DeckProject next = *current;
    next.mapping.setColumn(field, column.empty() ? std::nullopt : std::optional(column));
    updateProject(std::move(next));
}

}  // namespace quorvel
