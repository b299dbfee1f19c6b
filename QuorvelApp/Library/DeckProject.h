#pragma once

#include "Cards/FieldMapping.h"
#include "Foundation/UUID.h"
#include "Library/Bookmark.h"
#include "Templates/CardTemplate.h"
#include "Templates/SheetSettings.h"

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>

namespace quorvel {

/// The whole persistent state of a deck. What is read from the spreadsheet isn't in it.
struct DeckProject {
    UUID id;
    std::string name;
    CardTemplate template_;
    FieldMapping mapping;  ///< empty until a table has been seen
    SheetSettings sheet;
    std::optional<Bookmark> source;     ///< the spreadsheet
    std::optional<Bookmark> artFolder;  ///< searched for pictures before the spreadsheet's own folder
    std::optional<Bookmark> iconFolder;
    std::int64_t sheetIndex = 0;  ///< the worksheet of a workbook, from 0
    bool imageBleed = true;       ///< card images include the bleed
    std::int64_t imageDPI = 300;  ///< of card images: 300 or 600
    double created = 0;           ///< seconds since 2001-01-01 00:00:00 UTC

    bool operator==(const DeckProject&) const = default;
};

/// Seconds since 2001-01-01 00:00:00 UTC, the form in which records hold dates.
double secondsSince2001(std::chrono::system_clock::time_point date);

}  // namespace quorvel
