#include "CommandLineTest.h"

#include "Support/Images/ReadPNG.h"

#include <algorithm>
#include <fstream>
#include <iterator>

namespace quorvel {

namespace fs = std::filesystem;

ProgramEnd CommandLineTest::run(std::vector<std::string> arguments) const {
    return runProgram(ProgramCall{.arguments = std::move(arguments), .folder = folder_.path()});
}

void CommandLineTest::write(const fs::path& name, std::string_view text) const {
    fs::create_directories((folder_ / name).parent_path());
    std::ofstream(folder_ / name, std::ios::binary) << text;
}

void CommandLineTest::writePicture(const fs::path& name) const {
    const auto pixels = allocatePixels(6, 4);
    std::fill_n(pixels.get(), 24, 0xffd03030u);
    writePNG(Image(6, 4, pixels, Image::Alpha::opaque), folder_ / name);
}

std::string CommandLineTest::read(const fs::path& name) const {
    std::ifstream file(folder_ / name, std::ios::binary);
    EXPECT_TRUE(file) << name;
    return {std::istreambuf_iterator<char>(file), {}};
}

std::vector<std::string> CommandLineTest::listing(const fs::path& name) const {
    std::vector<std::string> names;
    for (const auto& entry : fs::recursive_directory_iterator(folder_ / name))
        names.push_back(entry.path().lexically_relative(folder_ / name).string() +
                        (fs::is_directory(entry.symlink_status()) ? "/" : ""));
    std::ranges::sort(names);
    return names;
}

std::map<std::string, std::string> CommandLineTest::contents(const fs::path& name) const {
    std::map<std::string, std::string> files;
    for (const std::string& each : listing(name))
        if (!each.ends_with('/')) files[each] = read(name / each);
    return files;
}

std::string deckOf(int count) {
    std::string text = "Name,Text,Type,Cost,Icons\n";
    for (int i = 1; i <= count; ++i) {
        const std::string number = std::to_string(i);
        text += "Card " + number + ",\"Pay " + number + " {icon:coin}, then **rest**.\",Tool," + number + ",coin\n";
    }
    return text;
}

testing::AssertionResult succeeded(const ProgramEnd& end) {
    if (end.exitCode == 0 && end.errors.empty()) return testing::AssertionSuccess();
    return testing::AssertionFailure() << "exit code " << end.exitCode << ", signal " << end.signal << ": "
                                       << end.errors;
}

testing::AssertionResult failedWith(const ProgramEnd& end, std::string_view part) {
    const bool oneLine = std::ranges::count(end.errors, '\n') == 1 && end.errors.ends_with(".\n");
    if (end.exitCode == 1 && oneLine && end.errors.find(part) != std::string::npos && end.output.empty())
        return testing::AssertionSuccess();
    return testing::AssertionFailure() << "exit code " << end.exitCode << ", signal " << end.signal << ", output “"
                                       << end.output.substr(0, 1000) << "”, errors: " << end.errors;
}

testing::AssertionResult refusedWith(const ProgramEnd& end, std::string_view part) {
    const std::string reason = end.errors.substr(0, end.errors.find('\n'));
    if (end.exitCode == 2 && reason.find(part) != std::string::npos && reason.ends_with('.') &&
        end.errors.find("--help” tells more.\n") != std::string::npos && end.output.empty())
        return testing::AssertionSuccess();
    return testing::AssertionFailure() << "exit code " << end.exitCode << ", signal " << end.signal << ", output “"
                                       << end.output.substr(0, 1000) << "”, errors: " << end.errors;
}

}  // namespace quorvel
