#include "Pictures/JPEGFile.h"
#include "TestPictures.h"
#include "TestProfiles.h"

#include <gtest/gtest.h>
#include <random>

namespace quorvel {
namespace {

using namespace std::string_view_literals;
using namespace TestPictures;

std::string jpeg(const Samples& samples, const Options& options = {}) {
    return encoded(samples, PictureFormat::jpeg, options);
}

TEST(JPEGFile, readsTheFrame) {
    const auto colored = JPEGFile::parse(jpeg(waves(37, 21)));
    ASSERT_TRUE(colored);
    EXPECT_EQ(colored->width, 37);
    EXPECT_EQ(colored->height, 21);
    EXPECT_EQ(colored->components, 3);
    EXPECT_TRUE(colored->baselineOrProgressive);
    EXPECT_TRUE(colored->plainColor);
    EXPECT_EQ(colored->orientation, Orientation::upright);
    EXPECT_EQ(colored->profile, "");

    const auto grey = JPEGFile::parse(jpeg(plain(8, 8, {77})));
    EXPECT_EQ(grey->components, 1);
    EXPECT_TRUE(grey->plainColor);

    const auto inks = JPEGFile::parse(jpeg(plain(8, 8, {1, 2, 3, 4}), {.inks = true}));
    EXPECT_EQ(inks->components, 4);
    EXPECT_FALSE(inks->plainColor);
}

TEST(JPEGFile, readsOrientationAndProfile) {
    for (int number = 1; number <= 8; ++number)
        EXPECT_EQ(JPEGFile::parse(jpeg(waves(9, 7), {.orientation = number}))->orientation, Orientation(number));
    // Long profiles are cut over several segments.
    const std::string profile = TestProfiles::grey(TestProfiles::sRGBTable(4096)) + std::string(150'000, 'p');
    EXPECT_EQ(JPEGFile::parse(jpeg(waves(9, 7), {.profile = profile}))->profile, profile);
}

TEST(JPEGFile, endsBehindItsLastMark) {
    for (const bool progressive : {false, true}) {
        const std::string bytes = jpeg(waves(200, 150), {.progressive = progressive});
        EXPECT_EQ(JPEGFile::parse(bytes)->end, bytes.size());
        EXPECT_EQ(JPEGFile::parse(bytes + bytes)->end, bytes.size());
        EXPECT_EQ(JPEGFile::parse(bytes + std::string(5, '\0'))->end, bytes.size());
        for (std::size_t length = 0; length < bytes.size(); ++length) {
            const auto part = JPEGFile::parse(std::string_view(bytes).substr(0, length));
            EXPECT_TRUE(!part || part->end == 0) << length;
        }
    }
}

TEST(JPEGFile, knowsWhatEveryReaderDecodes) {
    std::string bytes = jpeg(waves(16, 16));
    const std::size_t frame = bytes.find("\xFF\xC0"sv);
    ASSERT_NE(frame, std::string::npos);
    for (const auto& [marker, isUsual] :
         {std::pair{'\xC0', true}, {'\xC1', false}, {'\xC2', true}, {'\xC3', false}, {'\xC9', false}}) {
        bytes[frame + 1] = marker;
        EXPECT_EQ(JPEGFile::parse(bytes)->baselineOrProgressive, isUsual) << int(marker);
    }
    bytes[frame + 1] = '\xC0';
    bytes[frame + 4] = 12;  // bits a sample
    EXPECT_FALSE(JPEGFile::parse(bytes)->baselineOrProgressive);
}

TEST(JPEGFile, tellsLumaAndChromaFromRedGreenBlue) {
    const std::string bytes = jpeg(waves(16, 16));
    EXPECT_TRUE(JPEGFile::parse(bytes)->plainColor);  // the components are numbered 1, 2, 3

    std::string named = bytes;
    const std::size_t frame = named.find("\xFF\xC0"sv);
    for (const auto& [component, name] : {std::pair{0, 'R'}, {1, 'G'}, {2, 'B'}})
        named[frame + 10 + 3 * std::size_t(component)] = name;
    EXPECT_FALSE(JPEGFile::parse(named)->plainColor);
    named.insert(2, "\xFF\xE0\0\x10JFIF\0\1\1\0\0\1\0\1\0\0"sv);
    EXPECT_TRUE(JPEGFile::parse(named)->plainColor);

    const auto withAdobeMark = [&](char transform) {
        std::string marked = bytes;
        return marked
            .insert(2,
                    "\xFF\xEE\0\x0E"
                    "Adobe\0\x64\0\0\0\0"sv)
            .insert(17, 1, transform);
    };
    EXPECT_TRUE(JPEGFile::parse(withAdobeMark(1))->plainColor);
    EXPECT_FALSE(JPEGFile::parse(withAdobeMark(0))->plainColor);
    EXPECT_FALSE(JPEGFile::parse(withAdobeMark(2))->plainColor);
}

TEST(JPEGFile, refusesWhatHasNoFrame) {
    for (const std::string_view bytes : {""sv, "\xFF"sv, "\xFF\xD8"sv, "\xFF\xD8\xFF\xD9"sv, "\xFF\xD8\xFF\xC0\0\2"sv,
                                         "\xFF\xD8\xFF\xE0\xFF\xFF"sv, "\xFF\xD8\xFF\xE0\0\1\xFF\xC0"sv, "hello"sv})
        EXPECT_FALSE(JPEGFile::parse(bytes)) << testing::PrintToString(bytes);
}

TEST(JPEGFile, takesNoHarmFromRandomBytes) {
    std::mt19937 random(17);
    const std::string whole =
        jpeg(waves(40, 30), {.orientation = 6, .profile = TestProfiles::grey(TestProfiles::power(2))});
    for (int round = 0; round < 3000; ++round) {
        std::string broken = whole;
        for (int i = 0; i < 6; ++i) broken[2 + random() % (broken.size() - 2)] = char(random() % 4 ? random() : 0xFF);
        const auto file = JPEGFile::parse(broken);
        EXPECT_LE(file ? file->end : 0, broken.size());
    }
}

}  // namespace
}  // namespace quorvel
