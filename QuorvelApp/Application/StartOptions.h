#pragma once

#include <filesystem>
#include <span>
#include <string>
#include <vector>

namespace quorvel {

/// What the program was started with.
struct StartOptions {
    enum class Kind { run, version, help, wrong };

    Kind kind = Kind::run;
    std::vector<std::filesystem::path> files;  ///< absolute
    std::string wrong;                         ///< an option that there isn't

    /// Of the arguments behind the program's name. Paths may be any bytes; behind "--" everything is one.
    static StartOptions parse(std::span<const char* const> arguments);

    /// Whether "--version" or "--help" stands before any "--": they are answered without a screen.
    static bool isQuestion(std::span<const char* const> arguments);

    static const char* help();
};

}  // namespace quorvel
