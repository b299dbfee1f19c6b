#pragma once

#include "Spreadsheet/TextList.h"
#include "Spreadsheet/TextRows.h"
#include "Spreadsheet/XLSXFailure.h"
#include "Spreadsheet/XLSXFormats.h"
#include "Spreadsheet/XMLEvents.h"
#include "Spreadsheet/ZipReader.h"

#include <cstddef>
#include <cstdint>
#include <expected>
#include <string>
#include <string_view>
#include <vector>

namespace quorvel::XLSX {

struct Sheet {
    std::string name;  ///< as the user sees it
    std::string path;  ///< its member in the archive

    bool operator==(const Sheet&) const = default;
};

/// What all sheets of a workbook share: their list, the shared strings, the formats of the cell styles, the date
/// system.
class Workbook {
public:
    /// Reads no sheet yet. `bytes` must outlive the workbook.
    static std::expected<Workbook, Failure> open(std::string_view bytes);

    std::size_t sheetCount() const { return sheetNames_.size(); }
    std::vector<std::string> sheetNames() const;
    Sheet sheet(std::size_t index) const;

    /// The cells of one sheet, counted from 0, as text: row i is the sheet's row i + 1, and all rows have one width.
    /// Rows behind the 100,000th and columns behind the 500th are dropped. Takes the shared strings with it, so that it
    /// is the last that a workbook gives.
    std::expected<TextRows, Failure> rows(std::int64_t sheet) &&;

private:
    Workbook() = default;

    std::expected<void, Failure> parse(const ZipReader::Entry& member, XMLEvents::OnStart onStart,
                                       XMLEvents::OnEnd onEnd) const;
    template <class Take>
    std::expected<void, Failure> feed(const ZipReader::Entry& member, XMLEvents& events, Take take) const;
    std::expected<void, Failure> readSheetList();
    std::expected<void, Failure> readSharedStrings();
    std::expected<void, Failure> readStyles();

    std::string_view bytes_;
    std::vector<ZipReader::Entry> entries_;
    // A target may be long and serve any number of sheets, so it is kept once, and paths are made when they are asked
    // for.
    TextList targets_;
    TextList sheetNames_;
    std::vector<std::uint32_t> sheetTargets_;  // for each sheet the index of its target, or noTarget
    TextList sharedStrings_;
    std::vector<NumberFormat> formats_;  // by the index of a cell style
    DateSystem dates_ = DateSystem::from1900;
};

/// The member path of a relationship's target: from the top after a leading "/", else from the folder "xl".
std::string memberPath(std::string_view target);

}  // namespace quorvel::XLSX
