#include "Drawing/FontRules.h"
#include "Drawing/Fonts.h"
#include "Foundation/Text.h"

#include <algorithm>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <latch>
#include <memory>
#include <thread>

namespace quorvel {
namespace {

using Fonts::Face, Fonts::Slant, Fonts::Weight;
using testing::Contains;

constexpr Face plain{}, bold{Weight::bold, Slant::upright}, italic{Weight::normal, Slant::italic},
    boldItalic{Weight::bold, Slant::italic};

/// The font that the engine takes for a family and face, as it describes it.
std::string chosen(const char* family, const Face& face, const char* text = "a") {
    const std::unique_ptr<PangoLayout, decltype(&g_object_unref)> layout(pango_layout_new(Fonts::context()),
                                                                         g_object_unref);
    PangoFontDescription* description = pango_font_description_new();
    pango_font_description_set_family(description, Fonts::drawnFamily(family).c_str());
    pango_font_description_set_weight(description,
                                      face.weight == Weight::bold ? PANGO_WEIGHT_BOLD : PANGO_WEIGHT_NORMAL);
    pango_font_description_set_style(description,
                                     face.slant == Slant::italic ? PANGO_STYLE_ITALIC : PANGO_STYLE_NORMAL);
    pango_font_description_set_absolute_size(description, 10 * PANGO_SCALE);
    pango_layout_set_font_description(layout.get(), description);
    pango_font_description_free(description);
    pango_layout_set_text(layout.get(), text, -1);
    const auto* run = static_cast<PangoLayoutRun*>(pango_layout_get_line_readonly(layout.get(), 0)->runs->data);
    PangoFontDescription* found = pango_font_describe(run->item->analysis.font);
    char* words = pango_font_description_to_string(found);
    std::string answer = words;
    g_free(words);
    pango_font_description_free(found);
    return answer.substr(0, answer.rfind(' '));
}

TEST(Fonts, FamiliesAreSortedWithoutCaseAndEachOnce) {
    std::vector<std::string> keys;
    for (const auto& family : Fonts::families()) keys.push_back(Text::lowercased(family));
    EXPECT_TRUE(std::ranges::is_sorted(keys));
    EXPECT_EQ(std::ranges::adjacent_find(keys), keys.end());
}

TEST(Fonts, EveryFamilyOfferedIsDrawnByItselfOrARelative) {
    const auto families = Fonts::families();
    for (const auto& family : families) {
        const std::string drawn = Fonts::drawnFamily(family);
        EXPECT_THAT(families, Contains(drawn));
        EXPECT_EQ(Fonts::lineOfAbsent(family).has_value(), drawn != family) << family;
    }
}

TEST(Fonts, OffersTheFamiliesOfNewDesigns) {
    EXPECT_THAT(Fonts::families(), testing::IsSupersetOf({"Helvetica Neue", "Georgia", "Nimbus Sans", "Charis SIL"}));
}

TEST(Fonts, AbsentFamiliesGetTheFirstStandInThatIsThere) {
    const auto families = Fonts::families();
    for (const auto& relative : Fonts::relatives()) {
        const std::string drawn = Fonts::drawnFamily(relative.family);
        if (drawn == relative.family) continue;  // installed after all
        const auto first = std::ranges::find_if(
            relative.standIns, [&](auto name) { return std::ranges::find(families, name) != families.end(); });
        ASSERT_NE(first, relative.standIns.end()) << relative.family;
        EXPECT_EQ(drawn, *first);
        EXPECT_EQ(Fonts::lineOfAbsent(relative.family), relative.line);
    }
}

TEST(Fonts, UnknownAndEmptyNamesAreTheDefaultFamily) {
    const std::string standard = Fonts::drawnFamily(Fonts::defaultFamily);
    for (const auto* name : {"", "No Such Family", " ", "\xFF\xFE", "<b>&amp;", "sans-serif", "Georgia,Arial"}) {
        EXPECT_EQ(Fonts::drawnFamily(name), standard) << name;
    }
}

TEST(Fonts, NamesAreTakenInAnyCase) {
    EXPECT_EQ(Fonts::drawnFamily("nimbus SANS"), "Nimbus Sans");
    EXPECT_EQ(Fonts::drawnFamily("GEORGIA"), Fonts::drawnFamily("Georgia"));
}

TEST(Fonts, TheEngineHasEveryFamilyThatIsOffered) {
    for (const auto& family : Fonts::families()) {
        PangoFontDescription* wanted = pango_font_description_new();
        pango_font_description_set_family(wanted, Fonts::drawnFamily(family).c_str());
        pango_font_description_set_absolute_size(wanted, 10 * PANGO_SCALE);
        PangoFont* font = pango_context_load_font(Fonts::context(), wanted);
        ASSERT_TRUE(font) << family;
        PangoFontDescription* found = pango_font_describe(font);
        EXPECT_STREQ(pango_font_description_get_family(found), pango_font_description_get_family(wanted));
        pango_font_description_free(found);
        pango_font_description_free(wanted);
        g_object_unref(font);
    }
}

TEST(Fonts, KnowsTheFacesOfAFamily) {
    struct Row {
        const char* family;
        bool plain, bold, italic, boldItalic;
    };
    for (const Row& row :
         {Row{"Nimbus Sans", true, true, true, true}, Row{"Helvetica Neue", true, true, true, true},
          Row{"Georgia", true, true, true, true}, Row{"Z003", false, false, true, false},
          Row{"DejaVu Math TeX Gyre", true, false, false, false}, Row{"Noto Naskh Arabic", true, true, false, false}}) {
        EXPECT_EQ(Fonts::hasFace(row.family, plain), row.plain) << row.family;
        EXPECT_EQ(Fonts::hasFace(row.family, bold), row.bold) << row.family;
        EXPECT_EQ(Fonts::hasFace(row.family, italic), row.italic) << row.family;
        EXPECT_EQ(Fonts::hasFace(row.family, boldItalic), row.boldItalic) << row.family;
    }
}

TEST(Fonts, FallsBackAlongTheChainOfFaces) {
    struct Row {
        const char* family;
        Face wanted, got;
    };
    for (const Row& row : {Row{"Nimbus Sans", boldItalic, boldItalic}, Row{"Nimbus Sans", plain, plain},
                           Row{"Noto Naskh Arabic", boldItalic, bold}, Row{"Noto Naskh Arabic", italic, plain},
                           Row{"Z003", boldItalic, italic}, Row{"Z003", bold, plain},
                           Row{"DejaVu Math TeX Gyre", boldItalic, plain}, Row{"DejaVu Math TeX Gyre", bold, plain}}) {
        EXPECT_EQ(Fonts::nearestFace(row.family, row.wanted), row.got) << row.family;
    }
}

TEST(Fonts, TheEngineDrawsTheFaceThatIsSaid) {
    EXPECT_EQ(chosen("Nimbus Sans", plain), "Nimbus Sans");
    EXPECT_EQ(chosen("Nimbus Sans", bold), "Nimbus Sans Bold");
    EXPECT_EQ(chosen("Nimbus Sans", boldItalic), "Nimbus Sans Bold Italic");
    EXPECT_EQ(chosen("No Such Family", bold), Fonts::drawnFamily(Fonts::defaultFamily) + " Bold");
}

TEST(Fonts, ScriptsFallBackInAFixedOrder) {
    EXPECT_EQ(chosen("Nimbus Sans", plain, "ש"), "Noto Sans Hebrew");
    EXPECT_EQ(chosen("Charis SIL", plain, "ש"), "Noto Serif Hebrew");
    EXPECT_EQ(chosen("Nimbus Sans", bold, "س"), "Noto Sans Arabic Bold");
    EXPECT_EQ(chosen("Charis SIL", plain, "έ"), "Noto Serif");
    EXPECT_EQ(chosen("Nimbus Sans", plain, "★"), "Noto Sans Symbols2");
}

TEST(Fonts, LinesIncludeTheGapOfTheFont) {
    const auto lineOf = [](const char* family) {
        PangoFontDescription* description = pango_font_description_new();
        pango_font_description_set_family(description, family);
        pango_font_description_set_absolute_size(description, 10 * PANGO_SCALE);
        PangoFont* font = pango_context_load_font(Fonts::context(), description);
        const auto line = Fonts::lineOf(font);
        g_object_unref(font);
        pango_font_description_free(description);
        return line;
    };
    EXPECT_NEAR(lineOf("Nimbus Sans").ascent, 0.829, 1e-3);  // 0.729 and half of 0.2
    EXPECT_NEAR(lineOf("Nimbus Sans").descent, 0.371, 1e-3);
    EXPECT_NEAR(lineOf("Charis SIL").ascent, 1.196, 1e-3);
    EXPECT_NEAR(lineOf("Charis SIL").descent, 0.439, 1e-3);
}

TEST(Fonts, EveryThreadHasAContextOfItsOwnAndTheSameList) {
    constexpr int count = 8;
    std::vector<PangoContext*> contexts(count);
    std::vector<std::vector<std::string>> lists(count);
    std::vector<std::jthread> threads;
    std::latch together(count);
    for (std::size_t i = 0; i < count; ++i) {
        threads.emplace_back([&, i] {
            contexts[i] = Fonts::context();
            lists[i] = Fonts::families();
            together.arrive_and_wait();
            EXPECT_EQ(Fonts::context(), contexts[i]);
        });
    }
    threads.clear();
    std::ranges::sort(contexts);
    EXPECT_EQ(std::ranges::adjacent_find(contexts), contexts.end());
    for (const auto& list : lists) EXPECT_EQ(list, Fonts::families());
}

TEST(Fonts, AThreadTakesOverWhatAnotherLeft) {
    PangoContext* first = nullptr;
    PangoContext* second = nullptr;
    std::jthread([&] { first = Fonts::context(); }).join();
    std::jthread([&] { second = Fonts::context(); }).join();
    EXPECT_EQ(first, second);
}

}  // namespace
}  // namespace quorvel
