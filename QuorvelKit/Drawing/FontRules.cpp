#include "Drawing/FontRules.h"

namespace quorvel::Fonts {

namespace {

/// Georgia has no twin. Measured in parts of the font size (lower-case letters weighted by their frequency in English;
/// the difference is the mean over these letters):
///
///              x-height  capitals  lower-case width  difference  own line
///   Georgia       0.481     0.692             0.483           -     1.136
///   Charis SIL    0.482     0.671             0.481       0.013     1.636
///   P052          0.469     0.692             0.487       0.015     1.200
///   Caladea       0.467     0.667             0.450       0.033     1.150
///   Noto Serif    0.536     0.714             0.527       0.044     1.362
///
/// Charis SIL has the widths and, drawn after a letter of the same designer, the sturdy serifs; its own lines leave
/// room for stacked accents, which is why the line of the original matters most here. P052 is as near in width, but a
/// calligraphic letter whose italic is another hand altogether.
constexpr std::array relativesTable = {
    Relative{"Arial", {"Liberation Sans", "Arimo", "Nimbus Sans"}, {0.921, 0.228}},
    Relative{"Courier New", {"Liberation Mono", "Cousine", "Nimbus Mono PS"}, {0.833, 0.300}},
    Relative{"Georgia", {"Gelasio", "Charis SIL", "Noto Serif"}, {0.917, 0.219}},
    Relative{"Helvetica", {"Nimbus Sans", "Liberation Sans", "Arimo"}, {0.920, 0.230}},
    Relative{"Helvetica Neue", {"Nimbus Sans", "Liberation Sans", "Arimo"}, {0.966, 0.227}},
    Relative{"Times New Roman", {"Liberation Serif", "Tinos", "Nimbus Roman"}, {0.912, 0.237}},
};

/// What draws the characters that a family lacks, in this order: a fixed one, since the order by the surroundings'
/// language would draw a card differently elsewhere. Scripts that none of these covers are found by their characters.
constexpr std::array fallbacks = {
    "Nimbus Sans",       "Noto Sans",          "Noto Sans Hebrew", "Noto Sans Arabic",
    "Noto Sans Thai",    "Noto Sans CJK SC",   "Noto Sans CJK JP", "Noto Sans CJK KR",
    "Noto Sans Symbols", "Noto Sans Symbols2", "Noto Sans Math",   "DejaVu Sans",
};

/// Among letters with serifs, one without stands out.
constexpr std::array serifs = {"C059", "Caladea", "Charis SIL",  "Gelasio",         "Nimbus Roman",
                               "P052", "Tinos",   "URW Bookman", "Liberation Serif"};
constexpr std::array serifFallbacks = {"Noto Serif", "DejaVu Serif", "Noto Serif Hebrew", "Noto Naskh Arabic"};

constexpr std::array emojiFamilies = {"Noto Color Emoji", "Noto Emoji", "Noto Sans Symbols2", "DejaVu Sans"};

/// Where fonts are installed; folders that don't exist are passed over.
constexpr std::string_view folders = R"(
<dir>/usr/share/fonts</dir>
<dir>/usr/local/share/fonts</dir>
<dir prefix="xdg">fonts</dir>
<dir>~/.fonts</dir>
<dir>/run/host/fonts</dir>
<dir>/run/host/local-fonts</dir>
<dir>/run/host/user-fonts</dir>
<dir>/System/Library/Fonts</dir>
<dir>/Library/Fonts</dir>
<dir>~/Library/Fonts</dir>
<cachedir>/var/cache/fontconfig</cachedir>
<cachedir prefix="xdg">fontconfig</cachedir>
)";

/// Fonts without outlines can't be scaled, and the layout engine reads no Type 1. Bitmaps in colour count as scalable.
constexpr std::string_view unusable = R"(
<selectfont><rejectfont>
<pattern><patelt name="scalable"><bool>false</bool></patelt></pattern>
<pattern><patelt name="fontformat"><string>Type 1</string></patelt></pattern>
<pattern><patelt name="fontformat"><string>CID Type 1</string></patelt></pattern>
<pattern><patelt name="fontformat"><string>Type 42</string></patelt></pattern>
</rejectfont></selectfont>
)";

/// Pictures of glyphs come in one size, which is to be scaled to the one that is asked for.
constexpr std::string_view scaledPictures = R"(
<match target="font">
<test name="outline"><bool>false</bool></test>
<edit name="pixelsizefixupfactor" mode="assign">
<divide><name target="pattern">pixelsize</name><name target="font">pixelsize</name></divide>
</edit>
<edit name="matrix" mode="assign">
<times><name>matrix</name><matrix>
<name>pixelsizefixupfactor</name><double>0</double><double>0</double><name>pixelsizefixupfactor</name>
</matrix></times>
</edit>
<edit name="size" mode="assign">
<divide><name>size</name><name>pixelsizefixupfactor</name></divide>
</edit>
</match>
)";

using Names = std::span<const char* const>;

/// A rule that names further families after those of a request that names `wanted`, or after all where it is empty.
std::string appended(std::string_view wanted, Names further) {
    std::string xml = "<match target=\"pattern\">";
    if (!wanted.empty()) xml += "<test name=\"family\"><string>" + std::string(wanted) + "</string></test>";
    xml += "<edit name=\"family\" mode=\"append_last\" binding=\"strong\">";
    for (const auto name : further) xml += "<string>" + std::string(name) + "</string>";
    return xml + "</edit></match>\n";
}

}  // namespace

std::span<const Relative> relatives() {
    return relativesTable;
}

std::string rules() {
    std::string xml = "<?xml version=\"1.0\"?><!DOCTYPE fontconfig SYSTEM \"urn:fontconfig:fonts.dtd\"><fontconfig>";
    xml += folders;
    xml += unusable;
    xml += scaledPictures;
    xml += appended("emoji", emojiFamilies);
    for (const auto serif : serifs) xml += appended(serif, serifFallbacks);
    xml += appended("", fallbacks);
    return xml + "</fontconfig>";
}

}  // namespace quorvel::Fonts
