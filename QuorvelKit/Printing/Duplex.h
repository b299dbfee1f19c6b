#pragma once

#include "Printing/SheetLayout.h"

#include <vector>

/// Where backs must lie so that each lands behind its front.
namespace quorvel::Duplex {

/// Whether the paper, turned about the given edge, swaps left and right of the page (else top and bottom).
bool mirrorsHorizontally(bool landscape, DuplexFlip flip);

/// The back slots in the order of the front's: the i-th lies behind the i-th. Mirrored, then shifted by the measured
/// back offset; nothing is clamped.
std::vector<SheetLayout::Slot> backLayout(const SheetLayout& layout, const SheetSettings& settings);

}  // namespace quorvel::Duplex
