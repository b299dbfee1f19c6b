#include "Model/ExportFlow.h"

#include "Foundation/AtomicFile.h"
#include "Foundation/FileBytes.h"
#include "Printing/ExportWork.h"

#include <algorithm>
#include <system_error>
#include <utility>

namespace quorvel {

namespace {

namespace fs = std::filesystem;

/// What tells the exports from each other on the screen.
struct Words {
    std::string_view panelTitle;
    std::string_view suffix;  ///< behind the deck's name, of the file or folder
    std::string_view busyText;
};

Words wordsOf(ExportKind kind) {
    switch (kind) {
        case ExportKind::sheets:
            return {"Choose Where to Save the Print Sheets", ExportWork::sheetsSuffix, ExportWork::sheetsBusyText};
        case ExportKind::images:
            return {"Choose Where to Save the Card Images", ExportWork::imagesSuffix, ExportWork::imagesBusyText};
        case ExportKind::tts:
            return {"Choose Where to Save the Tabletop Simulator Images", ExportWork::ttsSuffix,
                    ExportWork::ttsBusyText};
    }
    return {};
}

std::string proposedName(ExportKind kind, const DeckProject& project) {
    return ExportWork::proposedName(project.name, wordsOf(kind).suffix);
}

SavePanel pdfPanel(std::string_view title, std::string fileName) {
    return {std::string(title), {"PDF document", {"pdf"}}, std::move(fileName)};
}

/// Makes a folder that wasn't there before, with its parents.
std::expected<fs::path, FileFailure> makeNewFolder(const fs::path& parent, const std::string& name) {
    const auto exists = [&](const std::string& each) {
        std::error_code ignored;
        return fs::exists(fs::symlink_status(parent / each, ignored));  // a link that leads nowhere is in the way, too
    };
    for (;;) {
        const fs::path folder = parent / ExportWork::newFolderName(name, exists);
        std::error_code error;
        fs::create_directories(parent, error);
        if (!error && fs::create_directory(folder, error)) return folder;
        if (error) return std::unexpected(FileFailure{folder, error.value(), FileFailure::Operation::makeFolder});
        // Another program has just made a folder of this name; the next number is free.
    }
}

/// Pictures are written plainly, since a sync for each of hundreds would take longer than drawing them. The text comes
/// last and says that the folder is complete: it is there whole or not at all.
ExportWork::Sink folderSink(const fs::path& folder) {
    return [folder](const std::string& name, std::string_view bytes) {
        return name == ExportWork::readMeName ? AtomicFile::write(folder / name, bytes)
                                              : FileBytes::write(folder / name, bytes);
    };
}

ExportWork::Sink fileSink(const fs::path& file) {
    return [file](const std::string&, std::string_view bytes) { return AtomicFile::write(file, bytes); };
}

/// The print list without its repeats, and without writing it out first: it can be a thousand times as long.
std::vector<Card> cardsWithoutRepeats(const Deck& deck) {
    std::vector<Card> cards;
    std::ranges::copy_if(deck.cards, std::back_inserter(cards), [](const Card& card) { return card.quantity > 0; });
    return Deck::uniquePrintedCards(cards);
}

/// Makes the files. Runs in the background.
std::expected<ExportWork::Outcome, ExportWork::Failure> makeFiles(ExportKind kind, const ExportFlow::Input& input,
                                                                  const fs::path& target,
                                                                  const ExportWork::Progress& progress) {
    const DeckProject& project = input.project;
    const CardRenderer renderer{project.template_, input.assets, CardRenderer::MissingPictures::leaveBlank};
    switch (kind) {
        case ExportKind::sheets:
            return ExportWork::sheets(Deck::printedCards(input.deck->cards), renderer, project.sheet, project.name,
                                      target.filename().string(), fileSink(target), progress);
        case ExportKind::images:
            return ExportWork::images(cardsWithoutRepeats(*input.deck), renderer,
                                      {.bleed = project.imageBleed, .dpi = double(project.imageDPI)},
                                      folderSink(target), progress);
        case ExportKind::tts:
            return ExportWork::tts(Deck::printedCards(input.deck->cards), renderer, folderSink(target), progress);
    }
    return {};
}

/// Hands on each whole percent once, so that an export of thousands of cards doesn't drown the main thread in news.
ExportWork::Progress eachPercent(std::function<void(double fraction)> report) {
    return [report = std::move(report), last = std::size_t(0)](std::size_t done, std::size_t total) mutable {
        const std::size_t percent = total == 0 ? 100 : done * 100 / total;
        if (percent == last) return;
        last = percent;
        report(double(percent) / 100);
    };
}

}  // namespace

ExportFlow::ExportFlow(Scheduler& scheduler, Desktop& desktop, Status status)
    : scheduler_(scheduler),
      desktop_(desktop),
      status_(std::move(status)),
      self_(std::make_shared<ExportFlow*>(this)) {}

ExportFlow::~ExportFlow() = default;

void ExportFlow::export_(ExportKind kind, const InputSource& input) {
    const auto hasCards = [](const std::optional<Input>& given) { return given && !given->deck->cards.empty(); };
    constexpr auto noCards = "There are no cards yet. Choose a spreadsheet first.";
    const std::optional<Input> before = input();
    if (!hasCards(before)) return status_.error(noCards);

    const Weak weak = self_;
    const std::string title(wordsOf(kind).panelTitle);
    const auto chosen = kind == ExportKind::sheets
                            ? desktop_.chooseSaveFile(pdfPanel(title, proposedName(kind, before->project)))
                            : desktop_.chooseFolder({title, "", "Export Here", std::nullopt});
    if (!chosen || weak.expired()) return;

    // Jobs went on while the panel was shown: the spreadsheet may have been saved, and the deck may have gone.
    std::optional<Input> now = input();
    if (!now || now->project.id != before->project.id) return;
    if (!hasCards(now)) return status_.error(noCards);

    if (kind == ExportKind::sheets) return run(kind, std::move(*now), *chosen);
    auto folder = makeNewFolder(*chosen, proposedName(kind, now->project));
    if (!folder) return status_.error(folder.error().description());
    run(kind, std::move(*now), std::move(*folder));
}

void ExportFlow::run(ExportKind kind, Input input, fs::path target) {
    const std::uint64_t id = ++lastID_;
    const std::string busyText(wordsOf(kind).busyText);
    runs_.push_back({.id = id, .kind = kind, .deckName = input.project.name, .busyText = busyText});
    status_.busy(busyText);
    status_.progress();

    const Weak weak = self_;
    const auto report = [weak, id, &scheduler = scheduler_](double fraction) {
        scheduler.post([weak, id, fraction] {
            if (const auto self = weak.lock()) (*self)->setFraction(id, fraction);
        });
    };
    const auto work = [kind, input = std::move(input), target, report]() -> std::expected<std::string, std::string> {
        const auto outcome = makeFiles(kind, input, target, eachPercent(report));
        if (!outcome) return std::unexpected(ExportWork::description(outcome.error()));
        return ExportWork::notice(*outcome, target);
    };
    const auto then = [weak, id, target](const std::expected<std::string, std::string>& result) {
        if (const auto self = weak.lock()) (*self)->end(id, result, target);
    };
    inBackground(scheduler_, work, then).detach();
}

void ExportFlow::setFraction(std::uint64_t id, double fraction) {
    const auto found = std::ranges::find(runs_, id, &Run::id);
    if (found == runs_.end() || fraction <= found->fraction) return;
    found->fraction = fraction;
    status_.progress();
}

void ExportFlow::end(std::uint64_t id, const std::expected<std::string, std::string>& result, const fs::path& target) {
    std::erase_if(runs_, [&](const Run& run) { return run.id == id; });
    status_.busy(runs_.empty() ? std::nullopt : std::optional(runs_.back().busyText));
    status_.progress();
    if (!result) return status_.error(result.error());
    status_.notice(*result);
    desktop_.reveal(target);
}

void ExportFlow::saveCalibrationPage(DeckProject project) {
    const Weak weak = self_;
    const auto file =
        desktop_.chooseSaveFile(pdfPanel("Choose Where to Save the Calibration Page", "Duplex calibration.pdf"));
    if (!file || weak.expired()) return;
    const auto saved =
        ExportWork::calibrationPage(project.template_, project.sheet, file->filename().string(), fileSink(*file));
    if (!saved) return status_.error(ExportWork::description(saved.error()));
    status_.notice(std::string(ExportWork::calibrationNotice));
    desktop_.reveal(*file);
}

}  // namespace quorvel
