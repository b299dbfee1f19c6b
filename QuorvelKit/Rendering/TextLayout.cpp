#include "Rendering/TextLayout.h"

#include "Rendering/TextLayoutState.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <utility>

namespace quorvel {

namespace {

constexpr double unit = 1.0 / PANGO_SCALE / layoutSize;  // of the engine's, in font sizes

/// Widths are cut off here, in font sizes, so that no sum overflows the engine's whole numbers.
constexpr double widestRoom = 16'000;

/// What an inline icon takes, in font sizes.
constexpr double iconAscent = 0.85;
constexpr double iconDescent = 0.15;
constexpr double iconWidth = 1.1;

/// Laid out at first; most texts are shorter.
constexpr std::size_t firstPart = 2048;

Fonts::Face nearestFace(const std::string& family, bool bold, bool italic) {
    return Fonts::nearestFace(family, {bold ? Fonts::Weight::bold : Fonts::Weight::normal,
                                       italic ? Fonts::Slant::italic : Fonts::Slant::upright});
}

PangoFontDescriptionHandle describe(const std::string& drawnFamily, Fonts::Face face) {
    PangoFontDescriptionHandle description(pango_font_description_new());
    pango_font_description_set_family(description.get(), drawnFamily.c_str());
    pango_font_description_set_absolute_size(description.get(), layoutSize * PANGO_SCALE);
    pango_font_description_set_weight(description.get(),
                                      face.weight == Fonts::Weight::bold ? PANGO_WEIGHT_BOLD : PANGO_WEIGHT_NORMAL);
    pango_font_description_set_style(description.get(),
                                     face.slant == Fonts::Slant::italic ? PANGO_STYLE_ITALIC : PANGO_STYLE_NORMAL);
    return description;
}

void insert(PangoAttrList* list, PangoAttribute* attribute, std::size_t begin, std::size_t end) {
    attribute->start_index = guint(begin);
    attribute->end_index = guint(end);
    pango_attr_list_insert(list, attribute);
}

/// Where the engine does its work.
GSList* brokenLines(PangoLayout* layout) {
    const auto held = CairoFonts::hold();
    return pango_layout_get_lines(layout);
}

/// A word that is too long for its line breaks as it is, without a hyphen; only soft hyphens show theirs. The attribute
/// doesn't act at the ends of its range, so a range for each stretch between soft hyphens leaves the breaks at them
/// alone.
void hideHyphens(PangoAttrList* list, std::string_view text) {
    constexpr std::string_view softHyphen = "\u00AD";
    std::size_t begin = 0;
    while (begin < text.size()) {
        const std::size_t found = text.find(softHyphen, begin);
        const std::size_t end = found == std::string_view::npos ? text.size() : found + softHyphen.size();
        insert(list, pango_attr_insert_hyphens_new(FALSE), begin, end);
        begin = end;
    }
}

PangoAttribute* iconAttribute() {
    const auto engine = [](double sizes) { return int(std::lround(sizes / unit)); };
    const PangoRectangle place{0, -engine(iconAscent), engine(iconWidth), engine(iconAscent + iconDescent)};
    return pango_attr_shape_new(&place, &place);
}

/// A whole number of characters of `text` from its start, about `length` bytes.
std::size_t part(std::string_view text, std::size_t length) {
    if (length >= text.size()) return text.size();
    while (length > 0 && (static_cast<unsigned char>(text[length]) & 0xC0) == 0x80) --length;
    return length;
}

bool isBlank(char c) {
    return c == ' ' || c == '\t' || c == '\n';
}

void appendFixed(std::string& text, std::string_view label, double value) {
    std::array<char, 64> digits;
    const auto end =
        std::to_chars(digits.data(), digits.data() + digits.size(), value, std::chars_format::fixed, 2).ptr;
    text += label;
    text.append(digits.data(), end);
}

}  // namespace

TextLayout::State::State(std::string_view text, const TextStyle& style, double width_, double enough_)
    : styled(StyledText::from(text)),
      color(style.color),
      align(style.align),
      width(width_),
      enough(enough_),
      layout(pango_layout_new(Fonts::context())),
      drawnFamily(Fonts::drawnFamily(style.fontFamily)),
      familyLine(Fonts::lineOfAbsent(style.fontFamily)),
      plainFace(nearestFace(drawnFamily, style.bold, style.italic)) {
    plain = describe(drawnFamily, plainFace);
    pango_layout_set_font_description(layout.get(), plain.get());
    pango_layout_set_wrap(layout.get(), PANGO_WRAP_WORD_CHAR);
    for (auto& piece : styled.pieces) {
        piece.bold |= style.bold;
        piece.italic |= style.italic;
    }
    give(std::isfinite(enough) ? part(styled.text, firstPart) : styled.text.size());
}

/// Gives the engine this much of the text.
void TextLayout::State::give(std::size_t length) {
    laidOut = length;
    bound.reset();
    const PangoAttributesHandle attributes(pango_attr_list_new());
    hideHyphens(attributes.get(), std::string_view(styled.text).substr(0, length));
    for (const auto& piece : styled.pieces) {
        if (piece.begin >= length) break;
        const Fonts::Face own = nearestFace(drawnFamily, piece.bold, piece.italic);
        if (own == plainFace) continue;
        const auto description = describe(drawnFamily, own);
        insert(attributes.get(), pango_attr_font_desc_new(description.get()), piece.begin, piece.end);
    }
    for (const auto& icon : styled.icons) {
        if (icon.offset >= length) break;
        insert(attributes.get(), iconAttribute(), icon.offset, icon.offset + StyledText::iconLength);
    }
    pango_layout_set_text(layout.get(), styled.text.data(), int(length));
    pango_layout_set_attributes(layout.get(), attributes.get());
}

void TextLayout::State::layOut(double newSize) {
    if (newSize == size) return;
    size = newSize;
    for (;;) {
        const double sizes = std::clamp(width / size, 0.0, widestRoom);
        pango_layout_set_width(layout.get(), std::max(1, int(std::lround(sizes / unit))));
        measure();
        if (laidOut == styled.text.size()) return;
        // A cut within a word tells on the last two lines and on none before: lines are filled from the first on. (But
        // for a bracket around text of both directions that closes behind the cut, pages below it.)
        if (lines.size() > 2 && lines[lines.size() - 3].bottom > enough) return;
        give(part(styled.text, laidOut * 2));
    }
}

/// Reads what the engine laid out.
void TextLayout::State::measure() {
    lines.clear();
    slots.clear();
    missing.clear();
    // These may be changed, since characters without a glyph are taken out of them.
    for (const GSList* line = brokenLines(layout.get()); line; line = line->next) {
        place(static_cast<PangoLayoutLine*>(line->data));
    }
}

void TextLayout::State::place(PangoLayoutLine* source) {
    double runsWidth = 0, ascent = 0, descent = 0;
    const auto reach = [&](const Fonts::LineExtent& extent) {
        ascent = std::max(ascent, extent.ascent);
        descent = std::max(descent, extent.descent);
    };
    if (!source->runs) reach(plainExtent());
    for (const GSList* node = source->runs; node; node = node->next) {
        const auto* run = static_cast<PangoLayoutRun*>(node->data);
        reach(extentOf(run));
        runsWidth += pango_glyph_string_get_width(run->glyphs) * unit;
    }

    Line line;
    line.top = lines.empty() ? 0 : lines.back().bottom;
    line.baseline = line.top + ascent * size;
    line.bottom = line.baseline + descent * size;
    line.width = runsWidth * size;
    const double room = std::isfinite(width) ? width - line.width : 0;
    line.x = align == TextAlign::left ? 0 : align == TextAlign::right ? room : room / 2;
    lines.push_back(line);

    double x = line.x;
    for (const GSList* node = source->runs; node; node = node->next) {
        auto* run = static_cast<PangoLayoutRun*>(node->data);
        place(run, x);
        x += pango_glyph_string_get_width(run->glyphs) * unit * size;
    }
}

void TextLayout::State::place(PangoLayoutRun* run, double x) {
    for (int i = 0; i < run->glyphs->num_glyphs; ++i) {
        PangoGlyphInfo& glyph = run->glyphs->glyphs[i];
        const auto offset = std::size_t(run->item->offset + run->glyphs->log_clusters[i]);
        const double advance = glyph.geometry.width * unit;
        if (const auto* icon = iconAt(offset)) {
            slots.push_back({icon->name, lines.size() - 1, x, advance * size, iconAscent * size, iconDescent * size});
        } else if (glyph.glyph & PANGO_GLYPH_UNKNOWN_FLAG) {
            // The engine would write the character's number; taken out, it is drawn here in one way on every target.
            missing.push_back({lines.size() - 1, x, advance * size});
            glyph.glyph = PANGO_GLYPH_EMPTY;
        }
        x += advance * size;
    }
}

const StyledText::Icon* TextLayout::State::iconAt(std::size_t offset) const {
    const auto found = std::ranges::lower_bound(styled.icons, offset, {}, &StyledText::Icon::offset);
    return found != styled.icons.end() && found->offset == offset ? &*found : nullptr;
}

Fonts::LineExtent TextLayout::State::extentOf(const PangoLayoutRun* run) {
    if (iconAt(std::size_t(run->item->offset))) return {iconAscent, iconDescent};
    return extentOf(run->item->analysis.font);
}

Fonts::LineExtent TextLayout::State::extentOf(PangoFont* font) {
    const auto known = extents.find(font);
    if (known != extents.end()) return known->second;
    Fonts::LineExtent extent = Fonts::lineOf(font);
    if (familyLine) {
        const PangoFontDescriptionHandle description(pango_font_describe(font));
        const char* family = pango_font_description_get_family(description.get());
        if (family && family == drawnFamily) extent = *familyLine;
    }
    return extents.emplace(font, extent).first->second;
}

/// Of a line with nothing on it.
Fonts::LineExtent TextLayout::State::plainExtent() {
    if (familyLine) return *familyLine;
    const auto held = CairoFonts::hold();
    const PangoFontHandle font(pango_context_load_font(pango_layout_get_context(layout.get()), plain.get()));
    return font ? extentOf(font.get()) : Fonts::LineExtent{iconAscent, iconDescent};
}

/// Looks at the text as it is shaped where no line breaks.
TextLayout::State::Bound TextLayout::State::findBound() {
    Bound found;
    // What can't be parted and is wider than the present width stands alone on its line now.
    found.widestLine = std::max(width, std::ranges::max(lines, {}, &Line::width).width) / size;

    const PangoLayoutHandle unbroken(pango_layout_copy(layout.get()));
    pango_layout_set_width(unbroken.get(), -1);
    const auto see = [&](const Fonts::LineExtent& extent) {
        found.lowestLine = std::min(found.lowestLine, extent.ascent + extent.descent);
    };
    for (const GSList* line = brokenLines(unbroken.get()); line; line = line->next) {
        const GSList* runs = static_cast<PangoLayoutLine*>(line->data)->runs;
        ++found.paragraphs;
        if (!runs) see(plainExtent());
        for (; runs; runs = runs->next) {
            const auto* run = static_cast<PangoLayoutRun*>(runs->data);
            see(extentOf(run));
            for (int i = 0; i < run->glyphs->num_glyphs; ++i) {
                const auto offset = std::size_t(run->item->offset + run->glyphs->log_clusters[i]);
                if (!isBlank(styled.text[offset])) found.ink += run->glyphs->glyphs[i].geometry.width * unit;
            }
        }
    }
    return found;
}

double TextLayout::State::leastHeight(double atSize) {
    if (!bound) bound = findBound();
    // So no line is ever wider than this. Blanks don't count, since they vanish where a line breaks. Letters that are
    // parted by a break may be shaped a little narrower, by far less than the tenth.
    const double room = std::max(width / atSize, bound->widestLine);
    const double filled = room > 0 ? 0.9 * bound->ink / room : 0;
    return std::max(filled, double(bound->paragraphs)) * bound->lowestLine * atSize;
}

TextLayout::TextLayout(std::string_view text, const TextStyle& style, double size, double width, double enough)
    : state_(std::make_unique<State>(text, style, width, enough)) {
    resize(size);
}

TextLayout::~TextLayout() = default;
TextLayout::TextLayout(TextLayout&&) noexcept = default;
TextLayout& TextLayout::operator=(TextLayout&&) noexcept = default;

void TextLayout::resize(double size) {
    state_->layOut(size);
}

double TextLayout::leastHeight(double size) const {
    return state_->leastHeight(size);
}

double TextLayout::height() const {
    return lines().back().bottom;
}

const std::vector<TextLayout::Line>& TextLayout::lines() const {
    return state_->lines;
}

const std::vector<TextLayout::Slot>& TextLayout::slots() const {
    return state_->slots;
}

std::size_t TextLayout::linesWithin(double height) const {
    const auto end = std::ranges::upper_bound(lines(), height, {}, &Line::bottom);
    return std::size_t(end - lines().begin());
}

void TextLayout::draw(DrawingContext& context, Point topLeft, std::size_t count) const {
    if (context.alpha() > 0) state_->draw(context, topLeft, std::min(count, lines().size()));
}

std::string TextLayout::dump() const {
    std::string text;
    for (std::size_t i = 0; i < lines().size(); ++i) {
        const Line& line = lines()[i];
        appendFixed(text, "line ", line.top);
        appendFixed(text, " ", line.baseline);
        appendFixed(text, " ", line.bottom);
        appendFixed(text, " x ", line.x);
        appendFixed(text, " width ", line.width);
        text += '\n';
        for (const Slot& slot : slots()) {
            if (slot.line != i) continue;
            appendFixed(text, "  " + slot.icon + " x ", slot.x);
            appendFixed(text, " width ", slot.width);
            appendFixed(text, " ascent ", slot.ascent);
            appendFixed(text, " descent ", slot.descent);
            text += '\n';
        }
    }
    return text;
}

}  // namespace quorvel
