#pragma once

#include "Foundation/EnumText.h"

namespace quorvel {

enum class ExportKind { sheets, images, tts };

template <>
struct EnumText<ExportKind> {
    static constexpr std::array cases{std::pair{ExportKind::sheets, std::string_view("sheets")},
                                      std::pair{ExportKind::images, std::string_view("images")},
                                      std::pair{ExportKind::tts, std::string_view("tts")}};
};

}  // namespace quorvel
