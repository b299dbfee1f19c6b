#include "Support/Desktop/SaveManners.h"

#include "Foundation/FileDescriptor.h"

#include <fcntl.h>
#include <stdexcept>
#include <sys/stat.h>
#include <unistd.h>

namespace quorvel {

namespace {

using Path = std::filesystem::path;

void check(bool done, const char* step) {
    if (!done) throw std::runtime_error(std::string(step) + " failed");
}

FileDescriptor openFile(const Path& path, int flags, mode_t mode = 0644) {
    FileDescriptor file(::open(path.c_str(), flags | O_CLOEXEC, mode));
    check(bool(file), "open");
    return file;
}

void put(const FileDescriptor& file, std::string_view bytes) {
    check(::write(file.get(), bytes.data(), bytes.size()) == ssize_t(bytes.size()), "write");
}

Path beside(const Path& file, const std::string& name) {
    return file.parent_path() / name;
}

void moveFile(const Path& from, const Path& to) {
    check(::rename(from.c_str(), to.c_str()) == 0, "rename");
}

void removeFile(const Path& path) {
    check(::unlink(path.c_str()) == 0, "unlink");
}

void makeFile(const Path& path, std::string_view bytes) {
    put(openFile(path, O_WRONLY | O_CREAT | O_EXCL), bytes);
}

/// Most programs: empty it and write anew.
void overwrite(const Path& file, std::string_view bytes) {
    put(openFile(file, O_WRONLY | O_CREAT | O_TRUNC), bytes);
}

void overwriteInPieces(const Path& file, std::string_view bytes) {
    const FileDescriptor opened = openFile(file, O_WRONLY | O_TRUNC);
    for (const char byte : bytes) put(opened, {&byte, 1});
}

void append(const Path& file, std::string_view bytes) {
    put(openFile(file, O_WRONLY | O_APPEND), bytes);
}

void writeAndRename(const Path& file, std::string_view bytes) {
    makeFile(beside(file, "cards.tmp"), bytes);
    moveFile(beside(file, "cards.tmp"), file);
}

/// An office program: a lock file beside it; the new file made twice, once to claim the name; a try to make the file
/// itself; and after the rename the permissions and a sync through the final name.
void officeProgram(const Path& file, std::string_view bytes) {
    const Path lock = beside(file, ".~lock." + file.filename().string() + "#");
    const Path temporary = beside(file, "lu20293797iv.tmp");
    put(openFile(lock, O_RDWR | O_CREAT | O_EXCL, 0666), ",user,desk,21.11.2026 13:50,file:///home/user/cards;");
    openFile(temporary, O_RDWR | O_CREAT | O_EXCL, 0600);
    {
        const FileDescriptor written = openFile(temporary, O_RDWR | O_CREAT, 0666);
        const std::size_t half = bytes.size() / 2;
        check(::pwrite(written.get(), bytes.data(), half, 0) == ssize_t(half), "pwrite");
        check(::pwrite(written.get(), bytes.data() + half, bytes.size() - half, off_t(half)) ==
                  ssize_t(bytes.size() - half),
              "pwrite");
    }
    check(!FileDescriptor(::open(file.c_str(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, 0666)), "the file's being there");
    moveFile(temporary, file);
    check(::chmod(file.c_str(), 0644) == 0, "chmod");
    check(::fsync(openFile(file, O_RDWR).get()) == 0, "fsync");
    openFile(lock, O_RDONLY);
    removeFile(lock);
}

void writeLikeAnEditor(const Path& file, std::string_view bytes) {
    const FileDescriptor written = openFile(file, O_WRONLY | O_CREAT);
    check(::ftruncate(written.get(), 0) == 0, "ftruncate");
    put(written, bytes);
    check(::fsync(written.get()) == 0, "fsync");
    check(::fchmod(written.get(), 0644) == 0, "fchmod");
}

/// An editor that tries whether it may make files there, moves the old file to a backup, writes a new one, and removes
/// the backup.
void editorWithBackupByRename(const Path& file, std::string_view bytes) {
    const Path trial = beside(file, "4913");
    openFile(trial, O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW);
    removeFile(trial);
    const Path backup = beside(file, file.filename().string() + "~");
    moveFile(file, backup);
    writeLikeAnEditor(file, bytes);
    removeFile(backup);
}

/// The same editor where the file has links or an owner to keep: the backup is a copy.
void editorWithBackupByCopy(const Path& file, std::string_view bytes) {
    const Path backup = beside(file, file.filename().string() + "~");
    makeFile(backup, "the old bytes");
    writeLikeAnEditor(file, bytes);
    removeFile(backup);
}

/// An editor that keeps the old file by a second name while it replaces the first.
void editorWithBackupByLink(const Path& file, std::string_view bytes) {
    const Path backup = beside(file, file.filename().string() + "~");
    check(::link(file.c_str(), backup.c_str()) == 0, "link");
    makeFile(beside(file, ".#new"), bytes);
    moveFile(beside(file, ".#new"), file);
    removeFile(backup);
}

/// A sync client: downloads to a hidden neighbour, puts the old file aside, moves the new one in, gives it its date.
void syncClient(const Path& file, std::string_view bytes) {
    const Path arrived = beside(file, ".sync-cards.part");
    const Path aside = beside(file, ".sync-old");
    makeFile(arrived, bytes);
    moveFile(file, aside);
    moveFile(arrived, file);
    const timespec times[2] = {{1'790'000'000, 0}, {1'790'000'000, 5}};
    check(::utimensat(AT_FDCWD, file.c_str(), times, 0) == 0, "utimensat");
    removeFile(aside);
}

/// Another program still has the old file open: its end is seen by no one.
void replaceWhileHeldOpen(const Path& file, std::string_view bytes) {
    static FileDescriptor held;
    held = openFile(file, O_RDONLY);
    writeAndRename(file, bytes);
}

void exchange(const Path& file, std::string_view bytes) {
    const Path other = beside(file, "cards.new");
    makeFile(other, bytes);
    check(::renameat2(AT_FDCWD, other.c_str(), AT_FDCWD, file.c_str(), RENAME_EXCHANGE) == 0, "renameat2");
    removeFile(other);
}

void removeAndWrite(const Path& file, std::string_view bytes) {
    removeFile(file);
    makeFile(file, bytes);
}

}  // namespace

const std::vector<SaveManner>& saveManners() {
    static const std::vector<SaveManner> all{
        {"overwrite", overwrite, false},
        {"overwriteInPieces", overwriteInPieces, false},
        {"append", append, false},
        {"editorWithBackupByCopy", editorWithBackupByCopy, false},
        {"writeAndRename", writeAndRename, true},
        {"officeProgram", officeProgram, true},
        {"editorWithBackupByRename", editorWithBackupByRename, true},
        {"editorWithBackupByLink", editorWithBackupByLink, true},
        {"syncClient", syncClient, true},
        {"replaceWhileHeldOpen", replaceWhileHeldOpen, true},
        {"exchange", exchange, true},
        {"removeAndWrite", removeAndWrite, true},
    };
    return all;
}

}  // namespace quorvel
