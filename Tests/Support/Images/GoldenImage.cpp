#include "Support/Images/GoldenImage.h"

#include "Support/Images/ImageDifference.h"
#include "Support/Images/ReadPNG.h"
#include "Support/Process.h"

#include <cstdlib>
#include <filesystem>
#include <string>

namespace quorvel {
namespace {

bool promotes() {
    const char* value = std::getenv("QUORVEL_UPDATE_GOLDEN");
    return value && std::string_view(value) == "1";
}

}  // namespace

testing::AssertionResult matchesGolden(const Image& actual, std::string_view name, GoldenTolerance tolerance) {
    const std::filesystem::path reference =
        std::filesystem::path(QUORVEL_SOURCE_DIR) / "Tests" / "Golden" / (std::string(name) + ".png");
    if (promotes()) {
        writePNG(actual, reference);
        return testing::AssertionSuccess();
    }
    const std::filesystem::path failures = thisProgram().parent_path() / "golden-failures";
    const std::filesystem::path actualFile = failures / (std::string(name) + ".actual.png");
    if (!std::filesystem::exists(reference)) {
        writePNG(actual, actualFile);
        return testing::AssertionFailure() << "There is no reference picture " << reference << ". Look at "
                                           << actualFile << "; QUORVEL_UPDATE_GOLDEN=1 makes it the reference.";
    }
    const Image expected = readPNG(reference);
    const ImageDifference difference = differenceBetween(actual, expected);
    if (difference.mean <= tolerance.mean && difference.maximum <= tolerance.maximum)
        return testing::AssertionSuccess();
    const std::filesystem::path differenceFile = failures / (std::string(name) + ".difference.png");
    writePNG(actual, actualFile);
    writePNG(differencePicture(actual, expected), differenceFile);
    return testing::AssertionFailure() << "The picture " << actual.width() << " × " << actual.height()
                                       << " differs from " << reference << " (" << expected.width() << " × "
                                       << expected.height() << "): mean " << difference.mean << " of " << tolerance.mean
                                       << ", maximum " << difference.maximum << " of " << tolerance.maximum << ". See "
                                       << actualFile << " and " << differenceFile
                                       << "; QUORVEL_UPDATE_GOLDEN=1 makes the new picture the reference.";
}

}  // namespace quorvel
