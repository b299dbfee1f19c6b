#include "OutputFile.h"

#include "Foundation/AtomicFile.h"
#include "Interruption.h"
#include "Wording.h"

#include <cerrno>
#include <system_error>

namespace quorvel::CommandLine {

namespace fs = std::filesystem;

std::expected<void, std::string> checkOutputFile(const fs::path& target, std::span<const fs::path> needed) {
    const auto cannotWrite = [&](int code) {
        return std::unexpected(FileFailure{target, code, FileFailure::Operation::write}.description());
    };
    std::error_code error;
    const fs::path folder = target.has_parent_path() ? target.parent_path() : fs::path(".");
    const auto folderStatus = fs::status(folder, error);
    if (folderStatus.type() == fs::file_type::none) return cannotWrite(error.value());
    if (!fs::is_directory(folderStatus)) return cannotWrite(fs::exists(folderStatus) ? ENOTDIR : ENOENT);

    const auto status = fs::status(target, error);
    if (status.type() == fs::file_type::none) return cannotWrite(error.value());
    if (fs::is_directory(status)) return cannotWrite(EISDIR);
    if (fs::exists(status) && !fs::is_regular_file(status)) return cannotWrite(EINVAL);
    for (const fs::path& path : needed)
        if (fs::equivalent(target, path, error))
            return std::unexpected("The command reads " + quotedName(path) + " and can’t write over it.");
    return {};
}

ExportWork::Sink fileSink(fs::path target) {
    return [target = std::move(target)](const std::string&, std::string_view bytes) {
        const auto writing = Interruption::postpone();
        return AtomicFile::write(target, bytes);
    };
}

}  // namespace quorvel::CommandLine
