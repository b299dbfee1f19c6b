#include "Foundation/FileFailure.h"

#include <cerrno>
#include <system_error>

namespace quorvel {

namespace {

using Operation = FileFailure::Operation;

std::string_view verb(Operation operation) {
    switch (operation) {
        case Operation::read:
            return "read";
        case Operation::write:
            return "write";
        case Operation::makeFolder:
            return "make";
    }
    return {};
}

std::string_view participle(Operation operation) {
    switch (operation) {
        case Operation::read:
            return "read";
        case Operation::write:
            return "written";
        case Operation::makeFolder:
            return "made";
    }
    return {};
}

}  // namespace

std::string FileFailure::description() const {
    const auto plain = path.has_filename() ? path.filename() : path.parent_path().filename();
    const std::string name = "“" + (plain.empty() ? path : plain).string() + "”";
    const auto because = [&](std::string_view reason) {
        return name + " couldn’t be " + std::string(participle(operation)) + ": " + std::string(reason) + ".";
    };
    const bool reads = operation == Operation::read;

    switch (code) {
        case ENOENT:
            return reads ? name + " doesn’t exist." : "The folder for " + name + " doesn’t exist.";
        case ENOTDIR:
            return reads ? name + " doesn’t exist." : because("a part of its path is a file, not a folder");
        case EISDIR:
            return reads ? name + " is a folder, not a file." : because("a folder of this name is in its place");
        case EEXIST:
            return because("something of this name is already there");
        case EINVAL:
            return reads ? name + " isn’t a file." : because("what is in its place isn’t a file");
        case EACCES:
        case EPERM:
            return "You aren’t allowed to " + std::string(verb(operation)) + " " + name + ".";
        case EROFS:
            return because("the disk is read-only");
        case ENOSPC:
            return because("the disk is full");
        case EDQUOT:
            return because("your share of the disk is used up");
        case EFBIG:
            return because(reads ? "it is too large" : "it is larger than the disk allows");
        case ENOMEM:
            return because("there isn’t enough memory");
        case ENAMETOOLONG:
            return because("its name or path is too long");
        case ELOOP:
            return because("it is a link that leads back to itself");
        case EMFILE:
        case ENFILE:
            return because("too many files are open");
        case EIO:
            return because("the disk reports an error");
        default:
            return because(std::generic_category().message(code));
    }
}

}  // namespace quorvel
