#include "Samples/SampleDeck.h"

#include "Cards/Markup.h"
#include "Foundation/AtomicFile.h"
#include "Foundation/Parallel.h"
#include "Pictures/PNGWriter.h"
#include "Samples/SampleArt.h"
#include "Spreadsheet/CSV.h"

#include <optional>
#include <string>
#include <system_error>
#include <vector>

namespace quorvel::SampleDeck {
namespace {

constexpr int pictureWidth = 900;
constexpr int pictureHeight = 620;
constexpr double pictureDPI = 300;

enum Column : std::size_t { nameColumn, typeColumn, costColumn, textColumn, artColumn, iconsColumn };

std::optional<std::string> encodedPicture(const TextRows& rows, std::size_t row) {
    const auto icons = Markup::iconNames(rows.cell(row, iconsColumn));
    const auto picture = SampleArt::draw(rows.cell(row, nameColumn), rows.cell(row, typeColumn),
                                         icons.empty() ? "star" : icons.front(), pictureWidth, pictureHeight);
    if (!picture) return std::nullopt;
    return PNGWriter::encode(*picture, pictureDPI);
}

}  // namespace

TextRows rows() {
    return {
        {"Name", "Type", "Cost", "Text", "Art", "Icons", "Qty", "Flavor"},
        {"Rain Barrel", "Tool", "2", "Once per turn, refresh one **Harvest** card.", "art/barrel.png", "drop", "2", ""},
        {"Night Courier", "Courier", "3", "Deliver one order.\n*Moves fast while the market sleeps.*",
         "art/courier.png", "moon, arrow", "2", ""},
        {"Honey Ledger", "Tool", "4", "At the end of your turn, gain 1 {icon:coin} for each **Harvest** you played.",
         "art/ledger.png", "coin coin", "1", ""},
        {"Lost Map", "Event", "", "Every player passes one card to the left.", "art/map.png", "key", "1", ""},
        {"Copper Scale", "Tool", "3", "Trade 2 {icon:leaf} for 3 {icon:coin}.", "art/scale.png", "coin", "1", ""},
        {"Fog Bell", "Event", "", "Couriers can’t move this round.", "art/bell.png", "moon", "1", ""},
        {"Seed Vault", "Harvest", "2", "Keep up to 3 cards between rounds.", "art/vault.png", "2 leaf", "2", ""},
        {"Market Day", "Event", "", "Each player gains 2 {icon:coin}.", "art/market.png", "sun", "2", ""},
        {"Old Mule", "Courier", "1", "Carries 2 orders, one step at a time.", "art/mule.png", "arrow", "2", ""},
        {"Bramble Gate", "Tool", "2", "Rivals pay 1 {icon:coin} to pass, or turn back.", "art/gate.png", "shield", "1",
         ""},
        {"Cider Press", "Tool", "5", "Turn 3 **Harvest** cards into 6 {icon:coin}.", "art/press.png", "gear", "1", ""},
        {"Weather Vane", "Tool", "1", "Look at the next 3 events; put them back in any order.", "art/vane.png", "eye",
         "1", ""},
        {"Storm Warning", "Event", "", "Discard every **Harvest** card in the orchard row.", "art/storm.png", "bolt",
         "1", ""},
        {"Lucky Penny", "Harvest", "0", "Gain 1 {icon:coin}. On your first turn, gain 2 more.", "art/penny.png",
         "coin, star", "2", ""},
    };
}

DataTable table() {
    return DataTable(rows(), std::string(fileName));
}

std::expected<void, FileFailure> write(const std::filesystem::path& folder) {
    const auto artFolder = folder / "art";
    std::error_code error;
    std::filesystem::create_directories(artFolder, error);
    if (error) return std::unexpected(FileFailure{artFolder, error.value(), FileFailure::Operation::makeFolder});

    const TextRows all = rows();
    const std::size_t cards = all.rowCount() - 1;
    std::vector<std::optional<std::string>> pictures(cards);
    std::expected<void, FileFailure> outcome;
    forEachInOrder(
        cards, [&](std::size_t card) { pictures[card] = encodedPicture(all, card + 1); },
        [&](std::size_t card) {
            if (pictures[card]) outcome = AtomicFile::write(folder / all.cell(card + 1, artColumn), *pictures[card]);
            pictures[card].reset();
            return outcome.has_value();
        },
        processorCount(), std::size_t{2} * processorCount());
    if (!outcome) return outcome;
    return AtomicFile::write(folder / fileName, CSV::write(all));
}

}  // namespace quorvel::SampleDeck
