#include "Printing/SheetPDF.h"

#include "Drawing/PDFContext.h"
#include "Pictures/PDFReader.h"
#include "Printing/CutMarks.h"
#include "Printing/Duplex.h"

#include <algorithm>
#include <span>

namespace quorvel::SheetPDF {

namespace {

/// The cards of one sheet.
std::span<const Card> sliceOf(std::size_t page, const std::vector<Card>& cards, const SheetLayout& layout) {
    const std::size_t perPage = layout.slots.size();
    if (page >= (cards.size() + perPage - 1) / perPage) return {};
    return std::span(cards).subspan(page * perPage, std::min(perPage, cards.size() - page * perPage));
}

void drawCards(std::span<const Card> cards, Side side, const std::vector<SheetLayout::Slot>& slots, double pageHeight,
               const CardRenderer& renderer, DrawingContext& context) {
    for (std::size_t i = 0; i < cards.size(); ++i)
        renderer.draw(&cards[i], side, context, flipped(slots[i].art, pageHeight), flipped(slots[i].trim, pageHeight));
}

}  // namespace

std::string_view description(Failure failure) {
    switch (failure) {
        case Failure::cardTooBig:
            return "The card is bigger than the printable area of the paper. Choose a smaller card or smaller margins.";
        case Failure::noCards:
            return "There are no cards to print: every quantity is 0.";
        case Failure::couldNotWrite:
            return "The PDF couldn’t be made.";
    }
    return {};
}

std::expected<std::string, Failure> make(const std::vector<Card>& cards, const CardRenderer& renderer,
                                         const SheetSettings& settings, const std::string& title,
                                         const Progress& progress) {
    if (cards.empty()) return std::unexpected(Failure::noCards);
    const CardTemplate& design = renderer.template_;
    const auto layout = SheetLayout::make(settings, design.size.widthMM, design.size.heightMM, design.bleedMM);
    if (!layout) return std::unexpected(Failure::cardTooBig);
    const auto pdf = PDFContext::make({.creator = "Quorvel", .title = title});
    if (!pdf) return std::unexpected(Failure::couldNotWrite);

    const auto addPage = [&](std::size_t sheet, Side side) {
        drawPage(sheet, side, cards, *layout, settings, renderer, pdf->beginPage(layout->pageSize));
        pdf->endPage();
    };
    const std::size_t sheets = (cards.size() + layout->slots.size() - 1) / layout->slots.size();
    for (std::size_t sheet = 0; sheet < sheets; ++sheet) {
        addPage(sheet, Side::front);
        if (settings.duplex) addPage(sheet, Side::back);
        if (progress) progress(sheet + 1, sheets);
    }
    auto bytes = pdf->finish();
    if (!bytes) return std::unexpected(Failure::couldNotWrite);
    return std::move(*bytes);
}

void drawPage(std::size_t page, Side side, const std::vector<Card>& cards, const SheetLayout& layout,
              const SheetSettings& settings, const CardRenderer& renderer, DrawingContext& context) {
    const auto [width, height] = layout.pageSize;
    context.fill(Rect{0, 0, width, height}, RGBA::white);
    const auto slice = sliceOf(page, cards, layout);
    if (side == Side::back) {
        drawCards(slice, side, Duplex::backLayout(layout, settings), height, renderer, context);
        return;
    }
    drawCards(slice, side, layout.slots, height, renderer, context);
    if (settings.cutMarks) context.stroke(cutMarks(layout), RGBA::black, cutMarkWidth);
}

int pageCount(std::string_view pdf) {
    return PDFReader::pageCount(pdf);
}

}  // namespace quorvel::SheetPDF
