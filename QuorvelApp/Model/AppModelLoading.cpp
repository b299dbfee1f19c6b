// How a spreadsheet becomes the open deck, and what a switch of decks leaves behind: nothing.

#include "Model/AppModel.h"
#include "Model/MissingArt.h"

#include <utility>

namespace quorvel {

void AppModel::resetDeckState() {
    loadCycle_.stopWatching();
    loadCycle_.cancel();
    whenLoaded_.clear();
    missingArtTask_.cancel();
    thumbnails_.clear();
    canvas_.cancel();
    sheet_.cancel();

    announcer_.note(Change::openDeck);
    announcer_.note(Change::editing);
    release(std::make_shared<const OpenDeck>(std::exchange(state_.open, {})));
    setCanvasImage(std::nullopt);
    setSheetImage(std::nullopt);
    state_._selectedLayer.reset();
    setCanvasCard(0);
    setSheetPage(0);
    setSheetBack(false);
    editing_.endLayerDrag();
    if (const auto stack = editing_.undoManager()) {
        stack->removeAllActions();
        announcer_.note(Change::undo);
    }

    if (currentProject()) return openCurrentDeck();
    renderCanvas();
    renderSheet();
}

void AppModel::openCurrentDeck(Then whenLoaded) {
    const DeckProject* current = currentProject();
    if (!current) return;
    const Announcer::Turn turn(announcer_);
    announcer_.note(Change::openDeck);
    DeckLoading::Files files = DeckLoading::find(*current);
    loadCycle_.cancel();
    // What waited for a load that this one takes the place of waits for this one.
    if (whenLoaded) whenLoaded_.push_back(std::move(whenLoaded));
    OpenDeck& open = state_.open;
    open._isLoading = false;

    if (current->source && !files.source) {
        open._loadError = DeckLoading::notFoundMessage(current->source->name);
        release(std::exchange(open._table, nullptr));
        release(std::exchange(open._deck, std::make_shared<const Deck>()));
        refreshMissingArt();
        renderAll();
        return endLoading();
    }

    // New ones each time, since what was not found is remembered for good.
    release(std::exchange(open._assets, std::make_shared<Assets>(files.pictureFolders, files.iconFolder)));
    open._sourceURL = files.source;
    commitProject(files.refreshed);
    if (!files.source) {
        renderAll();
        return endLoading();
    }
    open._isLoading = true;
    loadCycle_.start({files.refreshed.id, *files.source, files.refreshed.sheetIndex, files.refreshed.mapping});
}

void AppModel::storeLoaded(const LoadCycle::Request& request, DeckLoading::Loaded loaded) {
    const DeckProject* current = currentProject();
    if (!current || current->id != request.deck) return;
    const Announcer::Turn turn(announcer_);
    announcer_.note(Change::openDeck);
    DeckProject next = *current;
    state_.open._isLoading = false;
    if (loaded.wasRead) {
        state_.open._sheetNames = std::move(loaded.sheetNames);
        next.sheetIndex = loaded.sheetIndex;
    }
    if (loaded.result)
        storeTable(std::move(*loaded.result), next.mapping);
    else
        state_.open._loadError = loaded.result.error();
    commitProject(next);
    if (state_._canvasCard >= std::int64_t(state_.open._deck->cards.size())) setCanvasCard(0);
    refreshMissingArt();
    // A file that could be read but not understood stays watched, so that its repair is seen.
    if (loaded.wasRead) loadCycle_.startWatching(request.url, std::move(loaded.stamp));
    renderAll();
    endLoading();
}

void AppModel::endLoading() {
    for (const Then& then : std::exchange(whenLoaded_, {})) then();
}

void AppModel::storeTable(DeckLoading::Cards cards, FieldMapping& mapping) {
    OpenDeck& open = state_.open;
    // The mapping may have been edited while the file was read.
    mapping = DeckLoading::mappingFor(mapping, cards.table->headers);
    if (mapping != cards.mapping) cards.deck = std::make_shared<const Deck>(cards.table, mapping);
    release(std::exchange(open._table, std::move(cards.table)));
    release(std::exchange(open._deck, std::move(cards.deck)));
    open._loadError.reset();
    open._lastLoaded = scheduler_.now();
}

void AppModel::reloadAfterSave() {
    const auto url = state_.open._sourceURL;
    openCurrentDeck([this, url] {
        if (url) setNotice("Reloaded “" + url->filename().string() + "”.");
    });
}

void AppModel::refreshMissingArt() {
    missingArtTask_.cancel();
    if (!currentProject() || state_.open._deck->cards.empty()) {
        announcer_.note(Change::openDeck);
        state_.open._missingArt.clear();
        return;
    }
    missingArtTask_ = inBackground(
        scheduler_,
        [assets = state_.open._assets, design = template_(), deck = state_.open._deck] {
            return assets->missing(MissingArt::pictureNames(design, deck->cards));
        },
        [this](std::vector<std::string> names) {
            const Announcer::Turn turn(announcer_);
            announcer_.note(Change::openDeck);
            state_.open._missingArt = std::move(names);
        });
}

void AppModel::release(std::shared_ptr<const void> last) {
    if (!last) return;
    scheduler_
        .inBackground([last = std::move(last)]() mutable {
            last.reset();
            return Scheduler::Job();
        })
        .detach();
}

}  // namespace quorvel
