#include "Library/DeckProject.h"

#include <charconv>
#include <gtest/gtest.h>
#include <random>

namespace quorvel {
namespace {

using namespace std::chrono;

TEST(DeckProject, ANewOneHasTheseValues) {
    const DeckProject project;
    EXPECT_TRUE(project.mapping.columns.empty());
    EXPECT_EQ(project.sheet, SheetSettings());
    EXPECT_FALSE(project.source || project.artFolder || project.iconFolder);
    EXPECT_EQ(project.sheetIndex, 0);
    EXPECT_TRUE(project.imageBleed);
    EXPECT_EQ(project.imageDPI, 300);
}

TEST(DeckProject, EqualOnlyInAllFields) {
    const DeckProject project;
    std::vector<DeckProject> changed(12, project);
    changed[0].id = UUID::random();
    changed[1].name = "x";
    changed[2].template_.bleedMM = 99;
    changed[3].mapping.columns["title"] = "x";
    changed[4].sheet.cutMarks = !project.sheet.cutMarks;
    changed[5].source = Bookmark();
    changed[6].artFolder = Bookmark();
    changed[7].iconFolder = Bookmark();
    changed[8].sheetIndex = 1;
    changed[9].imageBleed = false;
    changed[10].imageDPI = 600;
    changed[11].created = 1;
    for (const DeckProject& other : changed) EXPECT_NE(other, project);
    EXPECT_EQ(DeckProject(project), project);
}

TEST(SecondsSince2001, CountsFromTheFirstMoment) {
    const system_clock::time_point start = sys_days(2001y / January / 1);
    EXPECT_EQ(secondsSince2001(start), 0);
    EXPECT_EQ(secondsSince2001(start + 1500ms), 1.5);
    EXPECT_EQ(secondsSince2001(start - 250ms), -0.25);
    EXPECT_EQ(secondsSince2001(system_clock::time_point()), -978307200);
    EXPECT_EQ(secondsSince2001(sys_days(2026y / May / 17) + 12h), 800712000.0);
}

TEST(SecondsSince2001, IsTheNearestNumberToEveryNanosecond) {
    std::mt19937_64 random(6);
    const system_clock::time_point start = sys_days(2001y / January / 1);
    for (int round = 0; round < 2000; ++round) {
        const auto seconds = static_cast<std::int64_t>(random() % 1'500'000'000);
        const auto rest = static_cast<std::int64_t>(random() % 1'000'000'000);
        const std::string text = std::to_string(seconds) + "." + std::to_string(1'000'000'000 + rest).substr(1);
        double nearest = 0;
        std::from_chars(text.data(), text.data() + text.size(), nearest);
        EXPECT_EQ(secondsSince2001(start + std::chrono::seconds(seconds) + nanoseconds(rest)), nearest) << text;
    }
}

}  // namespace
}  // namespace quorvel
