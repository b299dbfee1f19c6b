#pragma once

#include <string>
#include <vector>

/// The fonts that a designer may choose.
namespace quorvel::FontList {

/// The families that cards are drawn with, without those that hide behind a dot, in plain order of their characters.
/// Found out once, on first use; any thread may ask.
const std::vector<std::string>& families();

/// The choice of those of `all` that are offered, in order.
std::vector<std::string> offered(std::vector<std::string> all);

}  // namespace quorvel::FontList
