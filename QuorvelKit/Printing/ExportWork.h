#pragma once

#include "Cards/Card.h"
#include "Foundation/FileFailure.h"
#include "Foundation/Parallel.h"
#include "Printing/SheetPDF.h"
#include "Rendering/CardRenderer.h"
#include "Templates/SheetSettings.h"

#include <cstddef>
#include <expected>
#include <filesystem>
#include <functional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

/// The files of an export: their names, order, number and bytes, without a window and without a disk. Each file goes to
/// a sink of the caller's as soon as it is made, on the calling thread; cards are drawn on all cores with a bounded
/// number in flight. The same input gives the same files.
namespace quorvel::ExportWork {

/// Takes one finished file under its name within the export's folder; a failure ends the work.
using Sink = std::function<std::expected<void, FileFailure>(const std::string& name, std::string_view bytes)>;

/// Told how much is done and how much there is in all; on the calling thread.
using Progress = std::function<void(std::size_t done, std::size_t total)>;

using Failure = std::variant<SheetPDF::Failure, FileFailure>;
std::string description(const Failure& failure);

/// What an export has made.
struct Outcome {
    std::size_t count = 0;         ///< of pages, of cards or of front sheets
    std::string_view whatIsSaved;  ///< "pages", "card images" or "deck sheets"; lives as long as the program
    bool operator==(const Outcome&) const = default;
};

/// "Saved 14 card images to “Orchard card images”.": the last word to the user, by the last component of `target`.
std::string notice(const Outcome& outcome, const std::filesystem::path& target);

/// What stands on the screen meanwhile.
inline constexpr std::string_view sheetsBusyText = "Making the PDF…";
inline constexpr std::string_view imagesBusyText = "Saving card images…";
inline constexpr std::string_view ttsBusyText = "Saving deck sheets…";

/// Print sheets: one file of the given name. Counts pages.
std::expected<Outcome, Failure> sheets(const std::vector<Card>& printed, const CardRenderer& renderer,
                                       const SheetSettings& settings, const std::string& title,
                                       const std::string& fileName, const Sink& sink, const Progress& progress = {});

struct ImageSettings {
    bool bleed = true;
    double dpi = 300;
};

/// A PNG of each card without repeats, "007 Rain Barrel.png", followed by its back, "007 Rain Barrel back.png", or one
/// "back.png" at the end when all backs are the same. A side that can't be drawn is left out; the count is that of the
/// list. Drawn on `threads` threads, whose number doesn't show in the files.
std::expected<Outcome, FileFailure> images(const std::vector<Card>& unique, const CardRenderer& renderer,
                                           const ImageSettings& settings, const Sink& sink,
                                           const Progress& progress = {}, unsigned threads = processorCount());

/// "Deck sheet 1.png" and so on, "Back sheet 1.png" when backs vary, "Back.png" and "README.txt". Counts front sheets.
/// Drawn on `threads` threads, whose number doesn't show in the files.
std::expected<Outcome, FileFailure> tts(const std::vector<Card>& printed, const CardRenderer& renderer,
                                        const Sink& sink, const Progress& progress = {},
                                        unsigned threads = processorCount());

/// The name of the one file of a Tabletop Simulator export that isn't a picture.
inline constexpr std::string_view readMeName = "README.txt";

/// The page that measures a printer's offset, in the orientation of the print sheets, as one file of the given name. A
/// card that is too big for the paper is no reason not to measure the printer.
std::expected<void, Failure> calibrationPage(const CardTemplate& design, const SheetSettings& settings,
                                             const std::string& fileName, const Sink& sink);
inline constexpr std::string_view calibrationNotice = "Saved the calibration page. Print it double-sided at 100%.";

/// What stands behind the deck's name in the name proposed for an export: of a file for sheets, of a folder else.
inline constexpr std::string_view sheetsSuffix = " print sheets.pdf";
inline constexpr std::string_view imagesSuffix = " card images";
inline constexpr std::string_view ttsSuffix = " Tabletop Simulator";

/// The name proposed for a file or folder made from a deck's name: "/" and control characters become blanks, and what
/// is longer than file systems take is cut.
std::string proposedName(std::string_view deckName, std::string_view suffix);

/// The name of the new folder that an export makes: `name`, or `name` with a blank and the first number from 2 on for
/// which `exists` says no. An export never writes into a folder that is there.
std::string newFolderName(const std::string& name, const std::function<bool(const std::string& name)>& exists);

}  // namespace quorvel::ExportWork
