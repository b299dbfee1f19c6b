#pragma once

#include <optional>
#include <string_view>

/// What an embedded ICC colour profile means for a picture, told from its bytes without a colour engine.
namespace quorvel::ColorProfile {

enum class Space { grey, rgb, cmyk };

/// The colour space that the profile describes; nothing when the bytes are no profile of one of these.
std::optional<Space> spaceOf(std::string_view profile);

/// Whether converting from the profile to sRGB would change no colour by more than one step of 255: it has sRGB's
/// primaries (for grey: none) and sRGB's tone curve.
bool isSRGB(std::string_view profile);

/// Whether a picture with so many colour channels (alpha aside) must be converted: the profile describes such pictures
/// and isn't sRGB's. One that is broken or of another space says nothing about the picture.
bool needsConversion(std::string_view profile, int channels);

}  // namespace quorvel::ColorProfile
