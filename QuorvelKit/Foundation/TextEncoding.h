#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace quorvel::TextEncoding {

bool isValidUTF8(std::string_view bytes);

/// UTF-8 with each ill-formed sequence replaced by U+FFFD.
std::string repairedUTF8(std::string_view bytes);

enum class ByteOrder { littleEndian, bigEndian };

/// UTF-16 as UTF-8; nothing when a surrogate is unpaired or a byte is left over.
std::optional<std::string> fromUTF16(std::string_view bytes, ByteOrder order);

/// Windows code page 1252 as UTF-8; nothing when one of its five unassigned bytes (81, 8D, 8F, 90, 9D) occurs.
std::optional<std::string> fromWindows1252(std::string_view bytes);

}  // namespace quorvel::TextEncoding
