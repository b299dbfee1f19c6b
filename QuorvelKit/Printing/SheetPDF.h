#pragma once

#include "Cards/Card.h"
#include "Printing/SheetLayout.h"
#include "Rendering/CardRenderer.h"

#include <expected>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

/// Print sheets.
namespace quorvel::SheetPDF {

enum class Failure { cardTooBig, noCards, couldNotWrite };

/// The sentence for the user.
std::string_view description(Failure failure);

/// Told the number of sheets done and of all sheets, after each; on the calling thread.
using Progress = std::function<void(std::size_t done, std::size_t total)>;

/// The PDF of all sheets: front 1, back 1, front 2 and so on when duplex. `cards` is the print list, copies written
/// out.
std::expected<std::string, Failure> make(const std::vector<Card>& cards, const CardRenderer& renderer,
                                         const SheetSettings& settings, const std::string& title,
                                         const Progress& progress = {});

/// One page of the same, `page` from 0, into a context in points of the layout's page size: white paper, the cards of
/// that sheet, and on fronts the cut marks.
void drawPage(std::size_t page, Side side, const std::vector<Card>& cards, const SheetLayout& layout,
              const SheetSettings& settings, const CardRenderer& renderer, DrawingContext& context);

/// The number of pages of a PDF, 0 when it can't be read.
int pageCount(std::string_view pdf);

}  // namespace quorvel::SheetPDF
