#include "Cards/Markup.h"
#include "Check.h"

using namespace quorvel;

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    const MarkupText* previous = nullptr;
    const auto runs = Markup::parse(text);
    for (const auto& run : runs) {
        const auto* piece = std::get_if<MarkupText>(&run);
        if (piece) {
            CHECK(!piece->text.empty());
            CHECK(!previous || previous->bold != piece->bold || previous->italic != piece->italic);
        } else {
            CHECK(!std::get<MarkupIcon>(run).name.empty());
        }
        previous = piece;
    }
    (void)Markup::plainText(text);
    return 0;
}
