#pragma once

#include "Desktop/Desktop.h"
#include "Desktop/Scheduler.h"
#include "Library/Library.h"
#include "Library/LibraryWriter.h"
#include "Model/Announcer.h"
#include "Model/AppState.h"
#include "Model/DelayedSave.h"
#include "Model/ExportFlow.h"
#include "Model/LiveRender.h"
#include "Model/LoadCycle.h"
#include "Model/TemplateEditing.h"
#include "Model/Thumbnails.h"
#include "Samples/SampleTemplates.h"

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace quorvel {

/// The whole application but its window: it alone owns what is open and calls those who do the work. Views read `state`
/// and call operations; an operation that has nothing to act on does nothing. Main thread only.
class AppModel {
public:
    /// With `no` nothing touches the library or the user's settings: for trials.
    enum class Persist { no, yes };

    static constexpr std::chrono::seconds noticeTime{4};

    /// Reads the library and opens the deck that was open last. Both services outlive the model.
    AppModel(Scheduler& scheduler, Desktop& desktop, Persist persist);
    /// Writes nothing more: call `finishSaving` before.
    ~AppModel();
    AppModel(const AppModel&) = delete;
    AppModel& operator=(const AppModel&) = delete;

    // Reading

    const AppState& state() const { return state_; }
    [[nodiscard]] Announcer::Subscription subscribe(Announcer::Listener listener);

    /// The open deck's record; null when none is open. Valid until the next operation.
    const DeckProject* currentProject() const;
    /// The open deck's design, without a deck the classic sample "Your Game". Valid until the next operation.
    const CardTemplate& template_() const;
    const std::vector<Layer>& layers(Side side) const { return template_().layers(side); }
    /// The selected layer on the current side; null when there is none.
    const Layer* selectedLayerValue() const;
    /// The card on the canvas, when the deck has it.
    std::optional<Card> canvasCardValue() const;
    /// What "Insert Field" and the rules offer.
    std::vector<std::string> knownFieldNames() const;
    /// Whether each save of the spreadsheet is noticed. Announced as a change of the open deck.
    bool isWatching() const { return loadCycle_.isWatching(); }
    /// By card id; out of date ones included.
    const std::map<std::int64_t, Image>& thumbnails() const { return thumbnails_.queue().images(); }
    /// Pages of the preview: 0 without a deck, with an empty list, or when the card doesn't fit.
    std::int64_t sheetPageCount() const;
    const std::list<ExportFlow::Run>& exports() const { return exports_.runs(); }

    // What is shown

    /// Opens another deck, or none.
    void setSelection(std::optional<UUID> id);
    void setTab(Tab tab);
    void setShowNewDeck(bool shown);
    void setCanvasCard(std::int64_t index);
    void setSheetPage(std::int64_t page);
    void setSheetBack(bool back);
    /// These draw anew what is shown, for a view that comes on screen.
    void refreshCanvas() { renderCanvas(); }
    void refreshSheet() { renderSheet(); }
    void setSide(Side side);
    void selectLayer(std::optional<UUID> id);
    void clearError();
    void cardAppeared(std::int64_t id);
    void cardDisappeared(std::int64_t id);

    // The spreadsheet

    /// Binds the file to the open deck, or to a new one.
    void useSpreadsheet(const std::filesystem::path& url);
    /// Reads the spreadsheet anew.
    void reloadSpreadsheet() { openCurrentDeck(); }
    void chooseSpreadsheet();
    void chooseSheet(std::int64_t index);
    enum class FolderKind { art, icons };
    void chooseFolder(FolderKind kind);
    void clearIconFolder();
    /// Which column feeds a field; an empty one means none. Not undoable.
    void setFieldColumn(Field field, const std::string& column);

    // Decks

    void newDeck(SampleTemplates::Kind kind, std::string_view name);
    /// Paints the sample's files in the background; the deck appears when they are there.
    void openSampleDeck(SampleTemplates::Kind kind);
    void renameDeck(UUID id, std::string_view name);
    void duplicateDeck(UUID id);
    void deleteDeck(UUID id);
    /// Stores an edit of the open deck's record: print settings, image options, mapping. Not undoable. A record with a
    /// number that isn't finite changes nothing, here and below, since it couldn't be read again.
    void updateProject(DeckProject project);

    // The design; every change of it is one undo step, but for a drag, which is one as a whole

    void setTemplate(CardTemplate template_);
    void beginLayerDrag();
    void endLayerDrag();
    void updateLayer(const Layer& layer);
    void addLayer(LayerKind kind);
    void deleteSelectedLayer();
    void duplicateSelectedLayer();
    /// +1 is forward, drawn later; -1 backward.
    void moveSelectedLayer(std::int64_t delta);
    /// In millimetres.
    void nudgeSelectedLayer(double dx, double dy);
    void startOver(SampleTemplates::Kind kind);
    void exportTemplate();
    void importTemplate();

    /// The window's stack; without one nothing is undoable. The window owns it.
    void setUndoManager(std::weak_ptr<UndoStack> undoManager);
    /// Nothing during a drag: its one step would be gone, and what it still moves couldn't be undone.
    void undo();
    void redo();

    // Files

    void export_(ExportKind kind);
    void saveCalibrationPage();

    /// Writes at once what waits to be saved, and calls `done` when all of it is on the disk.
    void finishSaving(Scheduler::Job done);

private:
    using Then = Scheduler::Job;

    DeckProject* project(const UUID& id) { return const_cast<DeckProject*>(std::as_const(*this).project(id)); }
    const DeckProject* project(const UUID& id) const;
    DeckProject* openProject() { return state_._selection ? project(*state_._selection) : nullptr; }
    double now() const { return secondsSince2001(scheduler_.now()); }

    void resetDeckState();
    void openCurrentDeck(Then whenLoaded = {});
    void storeLoaded(const LoadCycle::Request& request, DeckLoading::Loaded loaded);
    void endLoading();
    void storeTable(DeckLoading::Cards cards, FieldMapping& mapping);
    void reloadAfterSave();
    void refreshMissingArt();

    void commitProject(const DeckProject& project);
    void saveSoon(const DeckProject& project);
    void saveAtOnce(const DeckProject& project);
    void addDeck(DeckProject project);
    void reopenWith(const DeckProject& project);
    /// Lets go of what is expensive to free, where nobody waits for it.
    void release(std::shared_ptr<const void> last);

    CardRenderer renderer(CardRenderer::MissingPictures missingPictures) const;
    void renderAll();
    void renderCanvas();
    void renderSheet();
    void setCanvasImage(std::optional<Image> image);
    void setSheetImage(std::optional<Image> image);

    void setNotice(std::string notice);
    void setError(std::string error);
    std::optional<ExportFlow::Input> exportInput() const;

    Scheduler& scheduler_;
    Desktop& desktop_;
    const Persist persist_;
    const CardTemplate yourGame_;

    AppState state_;
    Announcer announcer_;
    Library library_;
    LibraryWriter writer_;
    DelayedSave delayedSave_;
    LoadCycle loadCycle_;
    std::vector<Then> whenLoaded_;
    Thumbnails thumbnails_;
    LiveRender canvas_;
    LiveRender sheet_;
    TemplateEditing editing_;
    ExportFlow exports_;
    Scheduler::Task missingArtTask_;
    Scheduler::Task noticeTask_;
    Scheduler::Task sampleTask_;
};

}  // namespace quorvel
