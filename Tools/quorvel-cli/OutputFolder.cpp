#include "OutputFolder.h"

#include "Foundation/AtomicFile.h"
#include "Foundation/FileDescriptor.h"
#include "Foundation/Housekeeping.h"
#include "Interruption.h"
#include "Wording.h"

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <optional>
#include <system_error>
#include <unistd.h>
#include <utility>
#include <vector>

namespace quorvel::CommandLine {
namespace {

namespace fs = std::filesystem;

std::unexpected<std::string> cannotMake(const fs::path& target, int code) {
    return std::unexpected(FileFailure{target, code, FileFailure::Operation::makeFolder}.description());
}

/// What must not be swept away with the folder at `target`, canonical itself; nothing when all is well.
std::optional<std::string> loss(const fs::path& target, std::span<const fs::path> needed) {
    const auto holds = [&](const fs::path& path) {
        std::error_code error;
        const fs::path real = fs::canonical(path, error);
        return !error && Housekeeping::isInside(real.string(), target);
    };
    if (holds(".")) return "The command runs within " + quotedName(target) + ", which it can’t replace.";
    const char* home = std::getenv("HOME");
    if (home && *home && holds(home)) return quotedName(target) + " holds your home folder and can’t be replaced.";
    for (const fs::path& path : needed)
        if (holds(path))
            return quotedName(target) + " holds " + quotedName(path) + ", which the command reads; choose another one.";
    return std::nullopt;
}

/// Whether nothing stands at `target`, or a folder that may be replaced.
std::expected<void, std::string> checkPlace(const fs::path& target, Existing existing,
                                            std::span<const fs::path> needed) {
    std::error_code error;
    const auto kind = fs::symlink_status(target, error).type();
    if (kind == fs::file_type::not_found) return {};
    if (kind == fs::file_type::none) return cannotMake(target, error.value());
    if (kind != fs::file_type::directory) return std::unexpected(quotedName(target) + " is a file, not a folder.");

    const bool empty = fs::is_empty(target, error);
    if (error) return cannotMake(target, error.value());
    if (!empty && existing == Existing::keep)
        return std::unexpected(quotedName(target) + " isn’t empty; name a new folder, or replace it with --replace.");
    if (auto sentence = loss(target, needed)) return std::unexpected(std::move(*sentence));
    return {};
}

/// 0 or an errno.
int moveTo(const fs::path& from, const fs::path& to) {
    return std::rename(from.c_str(), to.c_str()) == 0 ? 0 : errno;
}

/// Puts `fresh` in the place of `target`, whose old self ends up in `hidden`; 0 or an errno, and then all is as before.
int exchange(const fs::path& fresh, const fs::path& target, const fs::path& hidden) {
    if (renameat2(AT_FDCWD, fresh.c_str(), AT_FDCWD, target.c_str(), RENAME_EXCHANGE) == 0) return 0;
    if (errno != EINVAL && errno != ENOSYS) return errno;

    // Not every file system can exchange. Two renames leave a moment without a folder, never a half-made one.
    const fs::path old = hidden / "old";
    if (const int code = moveTo(target, old)) return code;
    const int code = moveTo(fresh, target);
    if (code != 0) moveTo(old, target);
    return code;
}

std::set<std::string> namesIn(const fs::path& folder) {
    std::set<std::string> names;
    std::error_code error;
    for (fs::directory_iterator entry(folder, error), end; !error && entry != end; entry.increment(error))
        names.insert(entry->path().filename().string());
    return names;
}

void syncFolder(const fs::path& folder) {
    const FileDescriptor descriptor(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (descriptor) ::fsync(descriptor.get());
}

}  // namespace

std::expected<OutputFolder, std::string> OutputFolder::make(const fs::path& target, Existing existing,
                                                            std::span<const fs::path> needed) {
    auto made = begin(target);
    if (!made) return made;
    made->existing_ = existing;
    if (const auto checked = checkPlace(made->target_, existing, needed); !checked)
        return std::unexpected(checked.error());
    if (const auto hidden = made->makeHidden(); !hidden) return std::unexpected(hidden.error());
    return made;
}

std::expected<OutputFolder, std::string> OutputFolder::refresh(const fs::path& target) {
    auto made = begin(target);
    if (!made) return made;
    std::error_code error;
    made->manner_ = fs::is_directory(made->target_, error) ? Manner::refresh : Manner::appear;
    if (const auto hidden = made->makeHidden(); !hidden) return std::unexpected(hidden.error());
    return made;
}

std::expected<OutputFolder, std::string> OutputFolder::begin(const fs::path& target) {
    std::error_code error;
    OutputFolder made;
    made.target_ = fs::weakly_canonical(target, error);
    if (error) return cannotMake(target, error.value());
    if (!made.target_.has_filename()) made.target_ = made.target_.parent_path();
    return made;
}

std::expected<void, std::string> OutputFolder::makeHidden() {
    {
        std::string hidden = target_.parent_path() / ".quorvel-XXXXXX";
        const auto writing = Interruption::postpone();
        if (!mkdtemp(hidden.data())) return cannotMake(target_, errno);
        hidden_ = hidden;
        Interruption::setUnfinished(hidden);
    }
    folder_ = hidden_ / "new";
    std::error_code error;
    if (!fs::create_directory(folder_, error)) return cannotMake(target_, error.value());
    return {};
}

OutputFolder::OutputFolder(OutputFolder&& other) noexcept
    : target_(std::move(other.target_)),
      hidden_(std::exchange(other.hidden_, {})),
      folder_(std::move(other.folder_)),
      existing_(other.existing_),
      manner_(other.manner_) {}

OutputFolder::~OutputFolder() {
    if (hidden_.empty()) return;
    const auto writing = Interruption::postpone();
    std::error_code ignored;
    fs::remove_all(hidden_, ignored);
    Interruption::setUnfinished({});
}

ExportWork::Sink OutputFolder::sink() const {
    return [folder = folder_](const std::string& name, std::string_view bytes) {
        const auto writing = Interruption::postpone();
        return AtomicFile::write(folder / name, bytes);
    };
}

std::expected<void, std::string> OutputFolder::finish(OwnFiles& own) {
    const auto writing = Interruption::postpone();
    const auto placed = manner_ == Manner::refresh && own ? putFilesInto(*own) : putInPlace(own);
    if (!placed) return placed;
    return removeHidden();
}

std::expected<void, std::string> OutputFolder::putInPlace(OwnFiles& own) {
    std::error_code error;
    const auto replaced = fs::status(target_, error);
    if (fs::is_directory(replaced)) fs::permissions(folder_, replaced.permissions(), error);
    auto names = namesIn(folder_);

    // A rename takes the place of an empty folder by itself, and of no other.
    int code = moveTo(folder_, target_);
    if ((code == ENOTEMPTY || code == EEXIST) && existing_ == Existing::replace)
        code = exchange(folder_, target_, hidden_);
    if (code != 0) return cannotMake(target_, code == ENOTEMPTY || code == ENOTDIR ? EEXIST : code);
    syncFolder(target_.parent_path());
    own = std::move(names);
    return {};
}

std::expected<void, std::string> OutputFolder::putFilesInto(std::set<std::string>& own) {
    const auto names = namesIn(folder_);
    std::error_code error;
    for (const std::string& name : names) {
        const auto kind = fs::symlink_status(target_ / name, error).type();
        const bool isOwn = own.contains(name) && kind == fs::file_type::regular;
        if (kind != fs::file_type::not_found && !isOwn)
            return std::unexpected(quotedName(target_) + " holds a “" + name +
                                   "” that this run hasn’t made; move it elsewhere, or export to another folder.");
    }
    for (const std::string& name : names) {
        const fs::path file = target_ / name;
        if (const int code = moveTo(folder_ / name, file))
            return std::unexpected(FileFailure{file, code, FileFailure::Operation::write}.description());
        own.insert(name);
    }
    std::erase_if(own, [&](const std::string& name) {
        // Unlike a general removal this leaves a folder of that name alone.
        return !names.contains(name) && (::unlink((target_ / name).c_str()) == 0 || errno == ENOENT || errno == EISDIR);
    });
    syncFolder(target_);
    return {};
}

std::expected<void, std::string> OutputFolder::removeHidden() {
    std::error_code error;
    fs::remove_all(hidden_, error);
    const bool removed = !error;
    Interruption::setUnfinished({});
    const fs::path hidden = std::exchange(hidden_, {});
    if (removed) return {};
    return std::unexpected(quotedName(target_) + " is made, but its old files couldn’t all be removed; they are in " +
                           quotedName(hidden) + " beside it.");
}

}  // namespace quorvel::CommandLine
