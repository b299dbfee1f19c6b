#pragma once

#include <cstdint>
#include <string>

namespace quorvel {

/// The text of a save: as long as a deck's record with a small or a large design (some 20 to 200 KB), another one for
/// each number, and the same for the same number in every process. Two saves in a row never have the same length.
std::string savedRecord(std::uint64_t number);

}  // namespace quorvel
