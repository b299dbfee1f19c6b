#pragma once

#include "Spreadsheet/ZipReader.h"

#include <string>
#include <utility>

namespace quorvel::XLSX {

/// Why a workbook can't be read.
struct Failure {
    std::string message;  ///< a sentence for the user

    explicit Failure(std::string words) : message(std::move(words)) {}
    /// The archive's own words pass through.
    explicit Failure(ZipReader::Failure failure) : message(std::move(failure.message)) {}

    bool operator==(const Failure&) const = default;
    const std::string& description() const { return message; }
};

}  // namespace quorvel::XLSX
