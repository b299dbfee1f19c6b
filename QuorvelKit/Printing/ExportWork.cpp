#include "Printing/ExportWork.h"

#include "Foundation/Text.h"
#include "Printing/CalibrationPage.h"
#include "Printing/SheetLayout.h"
#include "Printing/TTSSheet.h"
#include "Rendering/CardImage.h"

#include <algorithm>
#include <optional>

namespace quorvel::ExportWork {

namespace {

constexpr double ttsDPI = 300;

constexpr std::string_view readMeParagraph =
    "In Tabletop Simulator: Objects › Components › Cards › Custom Deck. Face: a deck sheet image. Back: Back.png (or "
    "tick Unique Backs and use the back sheet). Width 10, Height 7, Number: the cards on that sheet. Back is Hidden: "
    "on.";

/// Bytes of a file name before its ending. Sixty characters of some scripts are longer than the 255 bytes that file
/// systems take for a whole name.
constexpr std::size_t longestBaseName = 200;

/// Cut between characters.
std::string cutToName(std::string name) {
    if (name.size() <= longestBaseName) return name;
    std::size_t kept = 0;
    for (std::string_view character : Text::characters(name)) {
        if (kept + character.size() > longestBaseName) break;
        kept += character.size();
    }
    name.resize(kept);
    return name;
}

std::string baseName(std::size_t number, const Card& card) {
    return cutToName(CardImage::fileName(std::int64_t(number), card.title()));
}

/// Hands files to the sink until one fails.
class Delivery {
public:
    explicit Delivery(const Sink& sink) : sink_(sink) {}

    /// False once a file has failed.
    bool deliver(const std::string& name, std::string_view bytes) {
        if (const auto written = sink_(name, bytes); !written) failure_ = written.error();
        return !failure_;
    }

    const std::optional<FileFailure>& failure() const { return failure_; }

private:
    const Sink& sink_;
    std::optional<FileFailure> failure_;
};

struct CardFiles {
    std::optional<std::string> front;
    std::optional<std::string> back;
};

}  // namespace

std::string description(const Failure& failure) {
    if (const auto* pdf = std::get_if<SheetPDF::Failure>(&failure)) return std::string(SheetPDF::description(*pdf));
    return std::get<FileFailure>(failure).description();
}

std::string notice(const Outcome& outcome, const std::filesystem::path& target) {
    return "Saved " + std::to_string(outcome.count) + " " + std::string(outcome.whatIsSaved) + " to “" +
           std::string(Text::lastPathComponent(target.native())) + "”.";
}

std::expected<Outcome, Failure> sheets(const std::vector<Card>& printed, const CardRenderer& renderer,
                                       const SheetSettings& settings, const std::string& title,
                                       const std::string& fileName, const Sink& sink, const Progress& progress) {
    const auto pdf = SheetPDF::make(printed, renderer, settings, title, progress);
    if (!pdf) return std::unexpected(pdf.error());
    if (const auto written = sink(fileName, *pdf); !written) return std::unexpected(written.error());
    return Outcome{.count = std::size_t(SheetPDF::pageCount(*pdf)), .whatIsSaved = "pages"};
}

std::expected<Outcome, FileFailure> images(const std::vector<Card>& unique, const CardRenderer& renderer,
                                           const ImageSettings& settings, const Sink& sink, const Progress& progress,
                                           unsigned threads) {
    const bool varyingBack = renderer.template_.hasVaryingBack();
    const auto png = [&](const Card& card, Side side) -> std::optional<std::string> {
        const auto bleed = settings.bleed ? CardImage::Bleed::included : CardImage::Bleed::none;
        const auto image = CardImage::render(&card, side, renderer, bleed, CardImage::Corners::square, settings.dpi);
        return image ? CardImage::pngData(*image, settings.dpi) : std::nullopt;
    };

    // The shared back is one more piece of work behind the cards.
    const std::size_t count = unique.size();
    const std::size_t pieces = count + (varyingBack || unique.empty() ? 0 : 1);
    std::vector<CardFiles> files(pieces);
    Delivery delivery(sink);
    forEachInOrder(
        pieces,
        [&](std::size_t i) {
            if (i == count) {
                files[i].back = png(unique[0], Side::back);
                return;
            }
            files[i].front = png(unique[i], Side::front);
            if (varyingBack && files[i].front) files[i].back = png(unique[i], Side::back);
        },
        [&](std::size_t i) {
            const CardFiles made = std::exchange(files[i], {});
            if (i == count) return !made.back || delivery.deliver("back.png", *made.back);
            const std::string name = baseName(i + 1, unique[i]);
            if (made.front && !delivery.deliver(name + ".png", *made.front)) return false;
            if (made.back && !delivery.deliver(name + " back.png", *made.back)) return false;
            if (progress) progress(i + 1, count);
            return true;
        },
        threads, threads + 2);
    if (delivery.failure()) return std::unexpected(*delivery.failure());
    return Outcome{.count = count, .whatIsSaved = "card images"};
}

std::expected<Outcome, FileFailure> tts(const std::vector<Card>& printed, const CardRenderer& renderer,
                                        const Sink& sink, const Progress& progress, unsigned threads) {
    const bool varyingBack = renderer.template_.hasVaryingBack();
    const auto sheetsASide = std::size_t(TTSSheet::sheetCount(std::int64_t(printed.size())));
    const std::size_t allSheets = sheetsASide * (varyingBack ? 2 : 1);
    Delivery delivery(sink);
    Outcome outcome{.count = 0, .whatIsSaved = "deck sheets"};
    std::size_t done = 0;
    std::string lines;

    const auto frontSheet = [&](std::size_t index, const std::string& name) {
        const std::size_t cards =
            std::min<std::size_t>(TTSSheet::cardsPerSheet, printed.size() - index * TTSSheet::cardsPerSheet);
        if (!lines.empty()) lines += '\n';
        lines += name + ": " + std::to_string(cards);
    };
    const auto writeSheets = [&](Side side) {
        TTSSheet::sheets(
            printed, renderer, side,
            [&](std::size_t index, Image sheet) {
                if (side == Side::front) ++outcome.count;
                const std::string name =
                    (side == Side::front ? "Deck sheet " : "Back sheet ") + std::to_string(index + 1) + ".png";
                if (const auto bytes = CardImage::pngData(sheet, ttsDPI)) {
                    if (!delivery.deliver(name, *bytes)) return false;
                    if (side == Side::front) frontSheet(index, name);
                }
                if (progress) progress(++done, allSheets);
                return true;
            },
            threads);
        return !delivery.failure();
    };
    const auto writeBack = [&] {
        const auto image = TTSSheet::backImage(printed.empty() ? nullptr : &printed[0], renderer);
        const auto bytes = image ? CardImage::pngData(*image, ttsDPI) : std::nullopt;
        return !bytes || delivery.deliver("Back.png", *bytes);
    };
    const auto writeReadMe = [&] {
        return delivery.deliver(std::string(readMeName), std::string(readMeParagraph) + "\n\n" + lines + "\n");
    };

    if (writeSheets(Side::front) && (!varyingBack || writeSheets(Side::back)) && writeBack() && writeReadMe())
        return outcome;
    return std::unexpected(*delivery.failure());
}

std::expected<void, Failure> calibrationPage(const CardTemplate& design, const SheetSettings& settings,
                                             const std::string& fileName, const Sink& sink) {
    const auto layout = SheetLayout::make(settings, design.size.widthMM, design.size.heightMM, design.bleedMM);
    const auto pdf = SheetPDF::calibrationPage(settings, layout && layout->landscape);
    if (!pdf) return std::unexpected(SheetPDF::Failure::couldNotWrite);
    if (const auto written = sink(fileName, *pdf); !written) return std::unexpected(written.error());
    return {};
}

std::string proposedName(std::string_view deckName, std::string_view suffix) {
    std::string name;
    for (std::size_t offset = 0; offset < deckName.size();) {
        const char32_t scalar = Text::nextScalar(deckName, offset);
        const bool control = scalar < 0x20 || (scalar >= 0x7F && scalar < 0xA0);
        Text::appendScalar(name, control || scalar == U'/' ? U' ' : scalar);
    }
    return cutToName(std::move(name)).append(suffix);
}

std::string newFolderName(const std::string& name, const std::function<bool(const std::string& name)>& exists) {
    std::string candidate = name;
    for (std::size_t number = 2; exists(candidate); ++number) candidate = name + " " + std::to_string(number);
    return candidate;
}

}  // namespace quorvel::ExportWork
