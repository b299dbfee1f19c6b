#include "Model/AppModel.h"

#include "Model/FieldNames.h"
#include "Model/MissingArt.h"
#include "Model/Previews.h"
#include "Templates/TemplateEdits.h"

#include <algorithm>
#include <utility>

namespace quorvel {
namespace {

const std::string lastDeck = "lastDeck";

}  // namespace

AppModel::AppModel(Scheduler& scheduler, Desktop& desktop, Persist persist)
    : scheduler_(scheduler),
      desktop_(desktop),
      persist_(persist),
      yourGame_(SampleTemplates::make(SampleTemplates::Kind::classic, "Your Game")),
      library_{desktop.applicationSupport()},
      writer_(scheduler, persist == Persist::yes ? std::optional(library_) : std::nullopt),
      delayedSave_(scheduler, [this](DeckProject project) { writer_.save(std::move(project)); }),
      loadCycle_(
          scheduler,
          [this](const LoadCycle::Request& request, DeckLoading::Loaded loaded) {
              storeLoaded(request, std::move(loaded));
          },
          [this] { reloadAfterSave(); }),
      thumbnails_(
          scheduler,
          [this] { return Thumbnails::Input{state_.open._deck, renderer(CardRenderer::MissingPictures::mark)}; },
          [this] {
              const Announcer::Turn turn(announcer_);
              announcer_.note(Change::thumbnails);
          }),
      canvas_(scheduler, Previews::canvasDelay,
              [this](std::optional<Image> image) { setCanvasImage(std::move(image)); }),
      sheet_(scheduler, Previews::sheetDelay, [this](std::optional<Image> image) { setSheetImage(std::move(image)); }),
      exports_(scheduler, desktop,
               {[this](std::optional<std::string> busy) {
                    const Announcer::Turn turn(announcer_);
                    announcer_.note(Change::status);
                    state_._busy = std::move(busy);
                },
                [this](std::string notice) { setNotice(std::move(notice)); },
                [this](std::string error) { setError(std::move(error)); },
                [this] {
                    const Announcer::Turn turn(announcer_);
                    announcer_.note(Change::exports);
                }}) {
    if (persist_ == Persist::no) return;
    state_._decks = library_.loadDecks();
    std::optional<UUID> start;
    if (const auto text = desktop_.userDefault(lastDeck))
        if (const auto id = UUID::parse(*text); id && project(*id)) start = id;
    if (!start && !state_._decks.empty()) start = state_._decks.front().id;
    setSelection(start);
    // Once more, whether the selection changed or not: what is shown without a deck is drawn, too.
    const Announcer::Turn turn(announcer_);
    resetDeckState();
}

AppModel::~AppModel() = default;

Announcer::Subscription AppModel::subscribe(Announcer::Listener listener) {
    return announcer_.subscribe(std::move(listener));
}

// Reading

const DeckProject* AppModel::project(const UUID& id) const {
    const auto found = std::ranges::find(state_._decks, id, &DeckProject::id);
    return found == state_._decks.end() ? nullptr : &*found;
}

const DeckProject* AppModel::currentProject() const {
    return state_._selection ? project(*state_._selection) : nullptr;
}

const CardTemplate& AppModel::template_() const {
    const DeckProject* current = currentProject();
    return current ? current->template_ : yourGame_;
}

const Layer* AppModel::selectedLayerValue() const {
    if (!state_._selectedLayer) return nullptr;
    return TemplateEdits::find(template_(), state_._side, *state_._selectedLayer);
}

std::optional<Card> AppModel::canvasCardValue() const {
    const std::vector<Card>& cards = state_.open._deck->cards;
    const std::int64_t index = state_._canvasCard;
    if (index < 0 || index >= std::int64_t(cards.size())) return std::nullopt;
    return cards[std::size_t(index)];
}

std::vector<std::string> AppModel::knownFieldNames() const {
    return quorvel::knownFieldNames(state_.open._table.get());
}

std::int64_t AppModel::sheetPageCount() const {
    const DeckProject* current = currentProject();
    if (!current) return 0;
    const auto layout = Previews::layout(current->template_, current->sheet);
    return layout ? Previews::pageCount(*layout, state_.open._deck->cards) : 0;
}

// What is shown

void AppModel::setSelection(std::optional<UUID> id) {
    if (id == state_._selection) return;
    const Announcer::Turn turn(announcer_);
    announcer_.note(Change::selection);
    state_._selection = id;
    if (persist_ == Persist::yes) desktop_.setUserDefault(lastDeck, id ? std::optional(id->text()) : std::nullopt);
    resetDeckState();
}

void AppModel::setTab(Tab tab) {
    if (tab == state_._tab) return;
    const Announcer::Turn turn(announcer_);
    announcer_.note(Change::tab);
    state_._tab = tab;
}

void AppModel::setShowNewDeck(bool shown) {
    if (shown == state_._showNewDeck) return;
    const Announcer::Turn turn(announcer_);
    announcer_.note(Change::newDeck);
    state_._showNewDeck = shown;
}

void AppModel::setCanvasCard(std::int64_t index) {
    if (index == state_._canvasCard) return;
    const Announcer::Turn turn(announcer_);
    announcer_.note(Change::editing);
    state_._canvasCard = index;
    renderCanvas();
}

void AppModel::setSheetPage(std::int64_t page) {
    if (page == state_._sheetPage) return;
    const Announcer::Turn turn(announcer_);
    announcer_.note(Change::editing);
    state_._sheetPage = page;
    renderSheet();
}

void AppModel::setSheetBack(bool back) {
    if (back == state_._sheetBack) return;
    const Announcer::Turn turn(announcer_);
    announcer_.note(Change::editing);
    state_._sheetBack = back;
    renderSheet();
}

void AppModel::setSide(Side side) {
    if (side == state_._side) return;
    const Announcer::Turn turn(announcer_);
    announcer_.note(Change::editing);
    state_._side = side;
    state_._selectedLayer.reset();
    renderCanvas();
}

void AppModel::selectLayer(std::optional<UUID> id) {
    if (id == state_._selectedLayer) return;
    const Announcer::Turn turn(announcer_);
    announcer_.note(Change::editing);
    state_._selectedLayer = id;
}

void AppModel::cardAppeared(std::int64_t id) {
    thumbnails_.cardAppeared(id);
}

void AppModel::cardDisappeared(std::int64_t id) {
    thumbnails_.cardDisappeared(id);
}

void AppModel::setNotice(std::string notice) {
    // The same words again don't begin the time anew.
    if (notice == state_._notice) return;
    const Announcer::Turn turn(announcer_);
    announcer_.note(Change::status);
    state_._notice = std::move(notice);
    noticeTask_ = scheduler_.later(noticeTime, [this] {
        const Announcer::Turn later(announcer_);
        announcer_.note(Change::status);
        state_._notice.reset();
    });
}

void AppModel::setError(std::string error) {
    const Announcer::Turn turn(announcer_);
    announcer_.note(Change::status);
    state_._error = std::move(error);
}

void AppModel::clearError() {
    if (!state_._error) return;
    const Announcer::Turn turn(announcer_);
    announcer_.note(Change::status);
    state_._error.reset();
}

// Pictures

CardRenderer AppModel::renderer(CardRenderer::MissingPictures missingPictures) const {
    return {template_(), state_.open._assets, missingPictures};
}

void AppModel::renderAll() {
    thumbnails_.invalidateThumbnails(std::int64_t(state_.open._deck->cards.size()));
    renderCanvas();
    renderSheet();
}

void AppModel::renderCanvas() {
    canvas_.restart(Previews::canvas(renderer(CardRenderer::MissingPictures::mark), canvasCardValue(), state_._side));
}

void AppModel::renderSheet() {
    const DeckProject* current = currentProject();
    auto draw = current ? Previews::sheet(renderer(CardRenderer::MissingPictures::mark), state_.open._deck,
                                          current->sheet, state_._sheetPage, state_._sheetBack)
                        : std::nullopt;
    if (draw) return sheet_.restart(std::move(*draw));
    sheet_.cancel();
    setSheetImage(std::nullopt);
}

void AppModel::setCanvasImage(std::optional<Image> image) {
    const Announcer::Turn turn(announcer_);
    announcer_.note(Change::canvas);
    state_._canvasImage = std::move(image);
}

void AppModel::setSheetImage(std::optional<Image> image) {
    const Announcer::Turn turn(announcer_);
    announcer_.note(Change::sheet);
    state_._sheetImage = std::move(image);
}

// Exports

std::optional<ExportFlow::Input> AppModel::exportInput() const {
    const DeckProject* current = currentProject();
    if (!current) return std::nullopt;
    return ExportFlow::Input{*current, state_.open._deck, state_.open._assets};
}

void AppModel::export_(ExportKind kind) {
    exports_.export_(kind, [this] { return exportInput(); });
}

void AppModel::saveCalibrationPage() {
    if (const DeckProject* current = currentProject()) exports_.saveCalibrationPage(*current);
}

}  // namespace quorvel
