#include "Drawing/Fonts.h"

#include "Drawing/FontFace.h"
#include "Drawing/FontRules.h"
#include "Foundation/Text.h"

#include <algorithm>
#include <fontconfig/fontconfig.h>
#include <hb.h>
#include <map>
#include <memory>
#include <mutex>
#include <pango/pangocairo.h>
#include <pango/pangofc-fontmap.h>
#include <set>

namespace quorvel::Fonts {

namespace {

struct Family {
    std::string name;
    std::set<Face> faces;
    const Relative* relative = nullptr;  ///< the absent family that this entry offers a stand-in for
};

/// The one list of families, by their lower-cased names.
struct Catalogue {
    FcConfig* config;  // shared by every thread's font map for the life of the process, and so never released
    std::map<std::string, Family> families;
};

/// The English name, or the first where none is English.
std::string familyName(FcPattern* font) {
    FcChar8* text = nullptr;
    for (int i = 0; FcPatternGetString(font, FC_FAMILYLANG, i, &text) == FcResultMatch; ++i) {
        const std::string_view language = reinterpret_cast<const char*>(text);
        if (!language.starts_with("en")) continue;
        if (FcPatternGetString(font, FC_FAMILY, i, &text) == FcResultMatch) return reinterpret_cast<const char*>(text);
    }
    if (FcPatternGetString(font, FC_FAMILY, 0, &text) == FcResultMatch) return reinterpret_cast<const char*>(text);
    return {};
}

/// The faces that a font file brings; a variable font brings those that its range of weights spans.
std::vector<Face> faces(FcPattern* font) {
    int slant = FC_SLANT_ROMAN;
    FcPatternGetInteger(font, FC_SLANT, 0, &slant);
    double lightest = FC_WEIGHT_REGULAR, boldest = FC_WEIGHT_REGULAR;
    FcRange* range = nullptr;
    if (FcPatternGetDouble(font, FC_WEIGHT, 0, &lightest) == FcResultMatch) {
        boldest = lightest;
    } else if (FcPatternGetRange(font, FC_WEIGHT, 0, &range) == FcResultMatch) {
        FcRangeGetDouble(range, &lightest, &boldest);
    }
    std::vector<Face> found;
    const Slant leaning = slant >= FC_SLANT_ITALIC ? Slant::italic : Slant::upright;
    if (lightest < FC_WEIGHT_DEMIBOLD) found.push_back({Weight::normal, leaning});
    if (boldest >= FC_WEIGHT_DEMIBOLD) found.push_back({Weight::bold, leaning});
    return found;
}

Catalogue makeCatalogue() {
    Catalogue catalogue{FcConfigCreate(), {}};
    const std::string xml = rules();
    FcConfigParseAndLoadFromMemory(catalogue.config, reinterpret_cast<const FcChar8*>(xml.c_str()), FcTrue);
    FcConfigBuildFonts(catalogue.config);

    auto& families = catalogue.families;
    if (const FcFontSet* fonts = FcConfigGetFonts(catalogue.config, FcSetSystem)) {
        for (int i = 0; i < fonts->nfont; ++i) {
            const std::string name = familyName(fonts->fonts[i]);
            if (name.empty()) continue;
            auto& family = families.try_emplace(Text::lowercased(name), Family{name, {}, nullptr}).first->second;
            for (const Face face : faces(fonts->fonts[i])) family.faces.insert(face);
        }
    }
    std::vector<std::pair<std::string, Family>> stoodInFor;
    for (const auto& relative : relatives()) {
        const std::string key = Text::lowercased(relative.family);
        if (families.contains(key)) continue;
        for (const auto standIn : relative.standIns) {
            const auto found = families.find(Text::lowercased(standIn));
            if (found == families.end()) continue;
            stoodInFor.emplace_back(key, Family{found->second.name, found->second.faces, &relative});
            break;
        }
    }
    families.insert(stoodInFor.begin(), stoodInFor.end());
    return catalogue;
}

const Catalogue& catalogue() {
    static const Catalogue made = makeCatalogue();
    return made;
}

/// Null only where no font is installed at all.
const Family* find(std::string_view name) {
    const auto& families = catalogue().families;
    for (const std::string_view candidate : {name, defaultFamily}) {
        const auto found = families.find(Text::lowercased(candidate));
        if (found != families.end()) return &found->second;
    }
    return families.empty() ? nullptr : &families.begin()->second;
}

struct Unref {
    void operator()(gpointer object) const { g_object_unref(object); }
};

/// A font map and its context. One thread at a time may use them; loading its fonts anew costs some ten milliseconds,
/// so threads that end leave theirs to those that come.
struct Engine {
    std::unique_ptr<PangoFontMap, Unref> fonts;
    std::unique_ptr<PangoContext, Unref> context;
};

Engine makeEngine() {
    Engine engine;
    engine.fonts.reset(pango_cairo_font_map_new_for_font_type(CAIRO_FONT_TYPE_FT));
    pango_fc_font_map_set_config(PANGO_FC_FONT_MAP(engine.fonts.get()), catalogue().config);
    pango_cairo_font_map_set_resolution(PANGO_CAIRO_FONT_MAP(engine.fonts.get()), 72);

    engine.context.reset(pango_font_map_create_context(engine.fonts.get()));
    PangoContext* context = engine.context.get();
    cairo_font_options_t* options = cairo_font_options_create();
    cairo_font_options_set_antialias(options, CAIRO_ANTIALIAS_GRAY);
    cairo_font_options_set_hint_style(options, CAIRO_HINT_STYLE_NONE);
    cairo_font_options_set_hint_metrics(options, CAIRO_HINT_METRICS_OFF);
    pango_cairo_context_set_font_options(context, options);
    cairo_font_options_destroy(options);
    pango_context_set_round_glyph_positions(context, FALSE);
    pango_context_set_language(context, pango_language_from_string("en"));
    pango_context_set_base_dir(context, PANGO_DIRECTION_WEAK_LTR);
    return engine;
}

struct Pool {
    std::mutex mutex;
    std::vector<Engine> idle;
};

Pool& pool() {
    static auto& made = *new Pool;  // outlives every thread, those that the process ends with included
    return made;
}

/// A thread's hold on an engine.
class Lease {
public:
    Lease() {
        const std::lock_guard lock(pool().mutex);
        if (pool().idle.empty()) return;
        engine_ = std::move(pool().idle.back());
        pool().idle.pop_back();
    }
    ~Lease() {
        if (!engine_.context) return;
        const std::lock_guard lock(pool().mutex);
        pool().idle.push_back(std::move(engine_));
    }
    Lease(const Lease&) = delete;
    Lease& operator=(const Lease&) = delete;

    PangoContext* context() {
        if (!engine_.context) engine_ = makeEngine();
        return engine_.context.get();
    }

private:
    Engine engine_;
};

}  // namespace

std::vector<std::string> families() {
    std::vector<std::string> names;  // the keys of the map are the order without regard to case
    for (const auto& [key, family] : catalogue().families) {
        names.push_back(family.relative ? std::string(family.relative->family) : family.name);
    }
    return names;
}

PangoContext* context() {
    thread_local Lease lease;
    return lease.context();
}

bool hasFace(std::string_view family, const Face& face) {
    const Family* found = find(family);
    return found && found->faces.contains(face);
}

Face nearestFace(std::string_view family, const Face& wanted) {
    const Family* found = find(family);
    if (!found) return {};
    for (const Face& face : {wanted, Face{wanted.weight, Slant::upright}, Face{Weight::normal, wanted.slant}}) {
        if (found->faces.contains(face)) return face;
    }
    return {};
}

std::string drawnFamily(std::string_view family) {
    const Family* found = find(family);
    return found ? found->name : std::string(defaultFamily);
}

std::optional<LineExtent> lineOfAbsent(std::string_view family) {
    const Family* found = find(family);
    return found && found->relative ? std::optional(found->relative->line) : std::nullopt;
}

LineExtent lineOf(PangoFont* font) {
    return keptWith<LineExtent>(font, "quorvel-line", [](PangoFont* made) {
        const FontFace face(made);
        hb_font_extents_t extents{};
        if (!hb_font_get_h_extents(face.get(), &extents)) return LineExtent{0.8, 0.2};
        const double em = face.unitsPerEm();
        const double halfGap = std::max(0.0, extents.line_gap / em / 2);
        return LineExtent{extents.ascender / em + halfGap, -extents.descender / em + halfGap};
    });
}

}  // namespace quorvel::Fonts
