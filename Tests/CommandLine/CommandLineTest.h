#pragma once

#include "Program.h"
#include "Support/TemporaryFolder.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace quorvel {

/// A folder of its own for each test, in which the program runs.
class CommandLineTest : public testing::Test {
protected:
    ProgramEnd run(std::vector<std::string> arguments) const;

    void write(const std::filesystem::path& name, std::string_view text) const;

    /// A small red PNG.
    void writePicture(const std::filesystem::path& name) const;

    std::string read(const std::filesystem::path& name) const;

    /// The names of all files and folders below `name`, hidden ones included, sorted; folders end in "/".
    std::vector<std::string> listing(const std::filesystem::path& name = "") const;

    /// Every file below `name` with its bytes.
    std::map<std::string, std::string> contents(const std::filesystem::path& name) const;

    std::filesystem::path operator/(const std::filesystem::path& name) const { return folder_ / name; }

    TemporaryFolder folder_;
};

/// Three cards, one of them twice and one not at all, without pictures.
inline constexpr std::string_view smallDeck =
    "Name,Text,Qty,Icons\nRain Barrel,Refresh a card.,2,drop\nLost Map,Pass one card.,1,key\nOld Mule,Rest.,0,arrow\n";

/// `count` cards with a text each.
std::string deckOf(int count);

/// Ended with exit code 0, and nothing on standard error.
testing::AssertionResult succeeded(const ProgramEnd& end);

/// Ended with exit code 1, one line on standard error that holds `part`, and nothing on standard output.
testing::AssertionResult failedWith(const ProgramEnd& end, std::string_view part);

/// Ended with exit code 2, a reason that holds `part`, a hint at --help, and nothing on standard output.
testing::AssertionResult refusedWith(const ProgramEnd& end, std::string_view part);

}  // namespace quorvel
