#pragma once

#include "Drawing/Path.h"
#include "Printing/SheetLayout.h"

namespace quorvel {

inline constexpr double cutMarkWidth = 0.5;  ///< points

/// The cut marks of a page in points with y up: round the outside of the grid a line at both ends of every cut, none on
/// a side without room for them.
Path cutMarks(const SheetLayout& layout);

}  // namespace quorvel
