#include "QtDesktop/StoredDefaults.h"
#include "QtPlatform/Platform.h"
#include "QtPlatform/QtScheduler.h"
#include "Support/Desktop/EnvironmentVariable.h"
#include "Support/Desktop/ManualScheduler.h"
#include "Support/TemporaryFolder.h"

#include <gmock/gmock.h>

namespace quorvel {
namespace {

using testing::Optional;

class StoredDefaultsTest : public testing::Test {
protected:
    TemporaryFolder folder;
    EnvironmentVariable config{"XDG_CONFIG_HOME", folder.path().string()};
    ManualScheduler scheduler;
};

TEST_F(StoredDefaultsTest, readsWhatWasStored) {
    Platform::setUserDefault("lastDeck", "one");
    const StoredDefaults defaults(scheduler);
    EXPECT_THAT(defaults.value("lastDeck"), Optional(std::string("one")));
    EXPECT_EQ(defaults.value("other"), std::nullopt);
}

TEST_F(StoredDefaultsTest, writesInTheBackgroundAndReadsBackAtOnce) {
    StoredDefaults defaults(scheduler);
    defaults.set("lastDeck", "one");
    EXPECT_THAT(defaults.value("lastDeck"), Optional(std::string("one")));
    EXPECT_FALSE(std::filesystem::exists(Platform::settingsFile()));
    scheduler.settle();
    EXPECT_THAT(Platform::userDefault("lastDeck"), Optional(std::string("one")));
    defaults.set("lastDeck", std::nullopt);
    EXPECT_EQ(defaults.value("lastDeck"), std::nullopt);
    scheduler.settle();
    EXPECT_EQ(Platform::userDefault("lastDeck"), std::nullopt);
}

TEST_F(StoredDefaultsTest, writesNothingThatIsTheSame) {
    StoredDefaults defaults(scheduler);
    defaults.set("lastDeck", std::nullopt);
    EXPECT_EQ(scheduler.backgroundCount(), 0u);
    defaults.set("lastDeck", "one");
    defaults.set("lastDeck", "one");
    EXPECT_EQ(scheduler.backgroundCount(), 1u);
}

TEST_F(StoredDefaultsTest, writesTheRestAtItsEnd) {
    {
        StoredDefaults defaults(scheduler);
        defaults.set("lastDeck", "one");
        defaults.set("lastDeck", "two");
    }
    EXPECT_THAT(Platform::userDefault("lastDeck"), Optional(std::string("two")));
    Platform::setUserDefault("lastDeck", "three");
    scheduler.settle();
    EXPECT_THAT(Platform::userDefault("lastDeck"), Optional(std::string("three"))) << "nothing old comes afterwards";
}

TEST_F(StoredDefaultsTest, keepsTheLastOfManyWithRealThreads) {
    {
        QtScheduler real;
        StoredDefaults defaults(real);
        for (int each = 0; each <= 50; ++each) defaults.set("lastDeck", std::to_string(each));
    }
    EXPECT_THAT(Platform::userDefault("lastDeck"), Optional(std::string("50")));
}

}  // namespace
}  // namespace quorvel
