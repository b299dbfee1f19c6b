#include "Foundation/FileBytes.h"
#include "QtPlatform/Platform.h"
#include "Support/Desktop/EnvironmentVariable.h"
#include "Support/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <thread>

namespace quorvel {
namespace {

using testing::HasSubstr;
using testing::Optional;

class PlatformTest : public testing::Test {
protected:
    TemporaryFolder folder;
    EnvironmentVariable data{"XDG_DATA_HOME", (folder / "Daten – Übung").string()};
    EnvironmentVariable config{"XDG_CONFIG_HOME", (folder / "config").string()};
};

TEST_F(PlatformTest, keepsDataInAFolderOfItsOwn) {
    EXPECT_EQ(Platform::applicationSupport(), folder / "Daten – Übung/Quorvel");
    EXPECT_FALSE(std::filesystem::exists(Platform::applicationSupport())) << "asking makes nothing";
}

TEST_F(PlatformTest, fallsBackToTheHomeFolder) {
    const EnvironmentVariable home("HOME", (folder / "home").string());
    const EnvironmentVariable noData("XDG_DATA_HOME", std::nullopt);
    const EnvironmentVariable noConfig("XDG_CONFIG_HOME", std::nullopt);
    EXPECT_EQ(Platform::applicationSupport(), folder / "home/.local/share/Quorvel");
    EXPECT_EQ(Platform::settingsFile(), folder / "home/.config/Quorvel/Quorvel.conf");
}

TEST_F(PlatformTest, namesATemporaryFolderThatIsThere) {
    EXPECT_TRUE(std::filesystem::is_directory(Platform::temporaryFolder()));
    std::filesystem::create_directory(folder / "tmp");
    const EnvironmentVariable temporary("TMPDIR", (folder / "tmp").string());
    EXPECT_EQ(Platform::temporaryFolder(), folder / "tmp");
}

TEST_F(PlatformTest, remembersTexts) {
    EXPECT_EQ(Platform::userDefault("lastDeck"), std::nullopt);
    Platform::setUserDefault("lastDeck", "one");
    Platform::setUserDefault("settingsTab", "");
    EXPECT_THAT(Platform::userDefault("lastDeck"), Optional(std::string("one")));
    EXPECT_THAT(Platform::userDefault("settingsTab"), Optional(std::string()));
    Platform::setUserDefault("lastDeck", "two");
    EXPECT_THAT(Platform::userDefault("lastDeck"), Optional(std::string("two")));
    Platform::setUserDefault("lastDeck", std::nullopt);
    EXPECT_EQ(Platform::userDefault("lastDeck"), std::nullopt);
    EXPECT_THAT(Platform::userDefault("settingsTab"), Optional(std::string()));
}

TEST_F(PlatformTest, givesTextsBackAsTheyWere) {
    for (const std::string text : {"Zwölf „Karten“ – 日本語 🂡", "a, b; c=d \"e\" \\ [f]", "two\nlines\t",
                                   "@ByteArray(x)", "@Invalid()", " blank ", "true", "0017"}) {
        Platform::setUserDefault("text", text);
        EXPECT_THAT(Platform::userDefault("text"), Optional(text));
    }
}

TEST_F(PlatformTest, keepsSettingsInItsOwnFile) {
    Platform::setUserDefault("lastDeck", "one");
    const auto file = folder / "config/Quorvel/Quorvel.conf";
    EXPECT_EQ(Platform::settingsFile(), file);
    EXPECT_THAT(FileBytes::read(file).value_or(""), HasSubstr("lastDeck=one"));
}

TEST_F(PlatformTest, leavesOtherSettingsAlone) {
    std::filesystem::create_directories(folder / "config/Quorvel");
    ASSERT_TRUE(FileBytes::write(Platform::settingsFile(), "[General]\nother=kept\n\n[Window]\nwidth=7\n"));
    Platform::setUserDefault("lastDeck", "one");
    const auto text = FileBytes::read(Platform::settingsFile()).value_or("");
    EXPECT_THAT(text, HasSubstr("other=kept"));
    EXPECT_THAT(text, HasSubstr("[Window]\nwidth=7"));
}

TEST_F(PlatformTest, readsADamagedFileAsFarAsItGoes) {
    std::filesystem::create_directories(folder / "config/Quorvel");
    using namespace std::string_view_literals;
    ASSERT_TRUE(FileBytes::write(Platform::settingsFile(), "\0\xff]]=[\nlastDeck=one\n\x80"sv));
    EXPECT_EQ(Platform::userDefault("showGuides"), std::nullopt);
    Platform::setUserDefault("lastDeck", "two");
    EXPECT_THAT(Platform::userDefault("lastDeck"), Optional(std::string("two")));
}

TEST_F(PlatformTest, isSilentWhereNothingCanBeStored) {
    ASSERT_TRUE(FileBytes::write(folder / "config", "a file where a folder should be"));
    Platform::setUserDefault("lastDeck", "one");
    EXPECT_EQ(FileBytes::read(folder / "config").value_or(""), "a file where a folder should be");
}

TEST_F(PlatformTest, worksOnAnyThread) {
    std::thread([] { Platform::setUserDefault("lastDeck", "one"); }).join();
    EXPECT_THAT(Platform::userDefault("lastDeck"), Optional(std::string("one")));
}

}  // namespace
}  // namespace quorvel
