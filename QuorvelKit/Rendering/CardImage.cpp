#include "Rendering/CardImage.h"

#include "Cards/Markup.h"
#include "Drawing/BitmapContext.h"
#include "Foundation/Text.h"
#include "Foundation/Units.h"
#include "Pictures/PNGWriter.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <limits>

namespace quorvel::CardImage {

namespace {

constexpr std::size_t mostTitleCharacters = 60;

double bleedMM(const CardTemplate& template_, Bleed bleed) {
    return bleed == Bleed::included ? std::max(0.0, template_.bleedMM) : 0;
}

std::int64_t pixels(double millimetres, double dpi) {
    // A design read from a file may hold any number; beyond 32 bits no bitmap can be made of it anyway.
    const double side = Units::inches(millimetres) * dpi;
    if (!(std::abs(side) < double(std::numeric_limits<std::int32_t>::max()))) return 0;
    return Units::pixels(millimetres, dpi);
}

bool separatesNames(char byte) {
    const auto value = static_cast<unsigned char>(byte);
    return value < 0x20 || value == 0x7F || std::string_view("/\\:?*\"<>|").contains(byte);
}

}  // namespace

PixelSize pixelSize(const CardTemplate& template_, Bleed bleed, double dpi) {
    const double extra = 2 * bleedMM(template_, bleed);
    return {pixels(extra + template_.size.widthMM, dpi), pixels(extra + template_.size.heightMM, dpi)};
}

std::optional<Image> render(const Card* card, Side side, const CardRenderer& renderer, Bleed bleed, Corners corners,
                            double dpi) {
    const CardTemplate& design = renderer.template_;
    const PixelSize size = pixelSize(design, bleed, dpi);
    if (size.width < 1 || size.height < 1 || size.width * size.height > mostPixels) return std::nullopt;
    auto bitmap = BitmapContext::make(int(size.width), int(size.height));
    if (!bitmap) return std::nullopt;
    DrawingContext& context = bitmap->context();

    const double margin = Units::points(bleedMM(design, bleed));
    const Rect trim{margin, margin, design.size.widthPoints(), design.size.heightPoints()};
    const Rect whole{0, 0, trim.width + 2 * margin, trim.height + 2 * margin};
    // Each side was rounded by itself; scaling each by itself makes the card fill its bitmap exactly.
    context.scale(double(size.width) / whole.width, double(size.height) / whole.height);
    if (corners == Corners::rounded && bleed == Bleed::none && design.cornerRadiusMM > 0)
        context.clip(Path().roundedRectangle(trim, Units::points(design.cornerRadiusMM)));
    renderer.draw(card, side, context, whole, trim);
    return std::move(*bitmap).finish();
}

std::optional<std::string> pngData(const Image& image, double dpi) {
    return PNGWriter::encode(image, dpi);
}

std::string fileName(std::int64_t number, std::string_view title) {
    std::string plain = Markup::plainText(title);
    std::ranges::replace_if(plain, separatesNames, ' ');
    std::string text;
    const auto characters = Text::characters(Text::trimBlanks(plain));
    for (std::size_t i = 0; i < std::min(characters.size(), mostTitleCharacters); ++i) text += characters[i];

    std::array<char, 24> digits{};
    std::snprintf(digits.data(), digits.size(), "%03lld", static_cast<long long>(number));
    return text.empty() ? std::string(digits.data()) : digits.data() + (" " + text);
}

}  // namespace quorvel::CardImage
