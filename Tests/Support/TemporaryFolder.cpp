#include "Support/TemporaryFolder.h"

#include <cstdlib>
#include <stdexcept>
#include <string>

namespace quorvel {

TemporaryFolder::TemporaryFolder() {
    std::string pattern = (std::filesystem::temp_directory_path() / "quorvel-test-XXXXXX").string();
    if (!mkdtemp(pattern.data())) throw std::runtime_error("no temporary folder can be made");
    path_ = pattern;
}

TemporaryFolder::~TemporaryFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
}

}  // namespace quorvel
