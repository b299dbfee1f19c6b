#pragma once

#include <optional>
#include <string>
#include <string_view>

/// Bytes as text: the standard alphabet with padding, no line ends.
namespace quorvel::Base64 {

std::string encode(std::string_view bytes);

/// Nothing unless `text` is exactly what `encode` writes for some bytes.
std::optional<std::string> decode(std::string_view text);

}  // namespace quorvel::Base64
