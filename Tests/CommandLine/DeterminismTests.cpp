#include "CommandLineTest.h"

namespace quorvel {
namespace {

namespace fs = std::filesystem;

using DeterminismTests = CommandLineTest;

TEST_F(DeterminismTests, TheSameInputGivesTheSameBytesOnAnyNumberOfCores) {
    ASSERT_TRUE(succeeded(run({"sample", "orchard"})));
    const std::string file = (*this / "orchard/Orchard Couriers.csv").string();
    const std::vector<std::vector<std::string>> commands{
        {"sample", "sample"},
        {"sample", "tall", "--kind", "tarot"},
        {"sheets", file, "-o", "sheets.pdf", "--set", "duplex=true"},
        {"images", file, "-o", "images", "--kind", "tarot"},
        {"tts", file, "-o", "tts"},
        {"calibration", "-o", "calibration.pdf"},
    };
    const std::vector<std::vector<std::string>> starters{{}, {}, {"taskset", "-c", "0"}};
    std::vector<std::map<std::string, std::string>> results;
    for (std::size_t i = 0; i < starters.size(); ++i) {
        const fs::path folder = "run" + std::to_string(i);
        fs::create_directory(*this / folder);
        for (const auto& arguments : commands)
            EXPECT_TRUE(succeeded(runProgram({.arguments = arguments,
                                              .folder = *this / folder,
                                              .prefix = starters[i],
                                              .environment = {{"SOURCE_DATE_EPOCH", "1700000000"}}})));
        results.push_back(contents(folder));
    }
    ASSERT_EQ(results[0].size(), 16u + 16u + 1 + 15 + 3 + 1);
    for (std::size_t i = 1; i < results.size(); ++i)
        for (const auto& [name, bytes] : results[0])
            EXPECT_TRUE(results[i].at(name) == bytes) << name << " in run " << i;
}

TEST_F(DeterminismTests, TheDateInAPDFIsTheOneAskedForOrNone) {
    write("deck.csv", smallDeck);
    const auto made = [&](const std::string& name, std::map<std::string, std::string> environment) {
        EXPECT_TRUE(succeeded(runProgram({.arguments = {"sheets", "deck.csv", "-o", name},
                                          .folder = folder_.path(),
                                          .environment = std::move(environment)})));
        return read(name);
    };
    const std::string dated = made("a.pdf", {{"SOURCE_DATE_EPOCH", "1700000000"}});
    EXPECT_NE(dated.find("D:20231114"), std::string::npos);
    EXPECT_NE(dated, made("b.pdf", {{"SOURCE_DATE_EPOCH", "1600000000"}}));
    const std::string undated = made("c.pdf", {{"SOURCE_DATE_EPOCH", "not a number"}});
    EXPECT_EQ(undated.find("D:20"), std::string::npos);
}

}  // namespace
}  // namespace quorvel
