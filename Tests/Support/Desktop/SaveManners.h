#pragma once

#include <filesystem>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace quorvel {

/// How a program saves over a file: the system calls it makes, in their order.
struct SaveManner {
    std::string name;
    std::function<void(const std::filesystem::path& file, std::string_view bytes)> save;
    bool replaces = false;  ///< whether another file is at the path afterwards
};

/// The manners that programs in use have been seen to save by: editors, office programs, scripts, sync clients.
/// All throw std::runtime_error when a step fails.
const std::vector<SaveManner>& saveManners();

}  // namespace quorvel
