#pragma once

#include "Spreadsheet/ZipReader.h"

#include <cstddef>
#include <expected>
#include <memory>
#include <string_view>

namespace quorvel {

/// One member of an archive, read piece by piece by those that needn't hold it whole. What it gives is unchecked until
/// `verify`.
class ZipMember {
public:
    /// `archive` must outlive the member. Fails for what can't be read at all.
    static std::expected<ZipMember, ZipReader::Failure> open(const ZipReader::Entry& entry, std::string_view archive);

    ZipMember(ZipMember&&) noexcept;
    ZipMember& operator=(ZipMember&&) noexcept;
    ~ZipMember();

    /// Writes up to `room` bytes and gives their number; 0 at the end. A deflated member ends after the size that the
    /// directory gives it at the latest.
    std::size_t read(char* bytes, std::size_t room);

    /// Reads what is left and says whether length and CRC-32 of the whole are right.
    std::expected<void, ZipReader::Failure> verify();

private:
    struct State;

    explicit ZipMember(std::unique_ptr<State> state);

    std::unique_ptr<State> state_;
};

}  // namespace quorvel
