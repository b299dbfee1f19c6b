#include "Spreadsheet/XLSXWorkbook.h"

#include "Foundation/Text.h"
#include "Spreadsheet/XLSXWorksheet.h"
#include "Spreadsheet/ZipMember.h"

#include <algorithm>
#include <cstddef>
#include <functional>
#include <limits>
#include <map>
#include <optional>
#include <utility>

namespace quorvel::XLSX {

namespace {

// Ordered maps, here and for the formats: nobody can craft keys that make them slow.
using Relationships = std::map<std::string, std::uint32_t, std::less<>>;  // from an id to the index of its target

constexpr std::uint32_t noTarget = std::numeric_limits<std::uint32_t>::max();

std::unexpected<Failure> failure(std::string message) {
    return std::unexpected(Failure(std::move(message)));
}

std::unexpected<Failure> unreadable(std::string_view words) {
    return failure("Part of the workbook couldn’t be read (" + std::string(words) + ").");
}

void ignoreText(std::string_view, std::string&) {}

bool namesRelationship(std::string_view attribute) {
    return attribute == "id" || attribute.ends_with(":id");
}

/// Gives a piece of a worksheet to the parser, but plain cells to the worksheet itself, and says how much of it was
/// used.
std::size_t takeCells(std::string_view piece, XMLEvents& events, Worksheet& worksheet) {
    constexpr std::size_t longestTag = 4096;  // that is waited for
    std::string_view rest = piece;
    while (!rest.empty() && events.isReadable()) {
        if (events.isBetweenTags())
            while (const auto cell = takePlainCell(rest)) worksheet.cell(*cell);
        const std::size_t next = rest.find("<c ", 1);
        if (next == std::string_view::npos) {
            // What may be half a tag is kept until the other half is there, so that the parser is between tags again.
            const std::size_t end = rest.rfind('>') + 1;  // npos + 1 is 0
            rest = rest.substr(0, rest.size() - end > longestTag ? rest.size() : end);
            events.push(rest);
            return static_cast<std::size_t>(rest.data() + rest.size() - piece.data());
        }
        events.push(rest.substr(0, next));
        rest.remove_prefix(next);
        if (events.isBetweenTags()) continue;
        // That was no cell's beginning. Small pieces of something large would take too long.
        events.push(rest);
        break;
    }
    return piece.size();
}

}  // namespace

std::string memberPath(std::string_view target) {
    if (target.starts_with('/')) return std::string(target.substr(1));
    std::vector<std::string_view> pieces{"xl"};
    while (!target.empty()) {
        const std::size_t slash = std::min(target.find('/'), target.size());
        const std::string_view piece = target.substr(0, slash);
        target.remove_prefix(std::min(slash + 1, target.size()));
        if (piece == "..") {
            if (!pieces.empty()) pieces.pop_back();
        } else if (!piece.empty() && piece != ".") {
            pieces.push_back(piece);
        }
    }
    std::string path;
    for (const std::string_view piece : pieces) {
        if (!path.empty()) path += '/';
        path += piece;
    }
    return path;
}

std::expected<Workbook, Failure> Workbook::open(std::string_view bytes) {
    Workbook workbook;
    workbook.bytes_ = bytes;
    auto entries = ZipReader::entries(bytes);
    if (!entries)
        return failure("It isn’t an Excel workbook (.xlsx). Older .xls files need saving as .xlsx or CSV first.");
    workbook.entries_ = std::move(*entries);
    for (const auto step : {&Workbook::readSheetList, &Workbook::readSharedStrings, &Workbook::readStyles})
        if (auto done = (workbook.*step)(); !done) return std::unexpected(std::move(done.error()));
    if (workbook.sheetCount() == 0) return failure("The workbook has no sheets.");
    return workbook;
}

std::expected<void, Failure> Workbook::parse(const ZipReader::Entry& entry, XMLEvents::OnStart onStart,
                                             XMLEvents::OnEnd onEnd) const {
    XMLEvents events(std::move(onStart), std::move(onEnd));
    return feed(entry, events, [&](std::string_view piece) {
        events.push(piece);
        return piece.size();
    });
}

/// The part runs through `take` while it is inflated, so that it is never held whole. `take` says how much of a piece
/// it took, and gets the rest anew at the beginning of the next. Damage to the archive weighs more than what it does to
/// the XML, and shows only at the end.
template <class Take>
std::expected<void, Failure> Workbook::feed(const ZipReader::Entry& entry, XMLEvents& events, Take take) const {
    auto member = ZipMember::open(entry, bytes_);
    if (!member) return std::unexpected(Failure(std::move(member.error())));
    std::string buffer;
    std::size_t held = 0;
    while (events.isReadable()) {
        buffer.resize(std::max(buffer.size(), held + events.wantedSize()));
        const std::size_t count = member->read(buffer.data() + held, buffer.size() - held);
        if (count == 0) break;
        const std::string_view piece(buffer.data(), held + count);
        const std::size_t taken = take(piece);
        held = piece.size() - taken;
        std::copy(piece.begin() + static_cast<std::ptrdiff_t>(taken), piece.end(), buffer.begin());
    }
    if (auto verified = member->verify(); !verified) return std::unexpected(Failure(std::move(verified.error())));
    events.push(std::string_view(buffer).substr(0, held));
    if (const auto finished = events.finish(); !finished) return unreadable(finished.error());
    return {};
}

std::expected<void, Failure> Workbook::readSheetList() {
    // Whole, because damage to it weighs more than what is wrong with the relationships.
    const auto list = ZipReader::read("xl/workbook.xml", bytes_, &entries_);
    if (!list) return std::unexpected(Failure(list.error()));
    if (!*list) return failure("It isn’t an Excel workbook (.xlsx).");

    Relationships relationships;
    if (const auto* part = ZipReader::find("xl/_rels/workbook.xml.rels", entries_)) {
        const auto onStart = [&](std::string_view name, const XMLAttributes& attributes) {
            if (name != "Relationship") return;
            const auto id = attributes.find("Id");
            const auto target = attributes.find("Target");
            if (!id || !target) return;
            relationships.insert_or_assign(std::string(*id), static_cast<std::uint32_t>(targets_.size()));
            targets_.append(*target);
        };
        if (auto parsed = parse(*part, onStart, ignoreText); !parsed) return parsed;
    }

    const auto onStart = [&](std::string_view name, const XMLAttributes& attributes) {
        if (name == "workbookPr") {
            if (const auto flag = attributes.find("date1904"))
                dates_ = *flag == "1" || *flag == "true" ? DateSystem::from1904 : DateSystem::from1900;
        } else if (name == "sheet") {
            const auto sheetName = attributes.find("name");
            if (!sheetName) return;
            const auto id = attributes.findIf(namesRelationship);
            const auto found = id ? relationships.find(id->value) : relationships.end();
            sheetNames_.append(*sheetName);
            sheetTargets_.push_back(found == relationships.end() ? noTarget : found->second);
        }
    };
    if (const auto parsed = XMLEvents::parse(**list, onStart, ignoreText); !parsed) return unreadable(parsed.error());
    return {};
}

std::expected<void, Failure> Workbook::readSharedStrings() {
    const ZipReader::Entry* part = ZipReader::find("xl/sharedStrings.xml", entries_);
    if (!part) return {};
    std::string text;
    int phoneticDepth = 0;
    return parse(
        *part,
        [&](std::string_view name, const XMLAttributes&) {
            if (name == "si") text.clear();
            if (name == "rPh") ++phoneticDepth;
        },
        [&](std::string_view name, std::string& characters) {
            if (name == "t") {
                if (phoneticDepth > 0) return;
                if (text.empty()) {
                    text.swap(characters);
                } else {
                    text += characters;
                }
            } else if (name == "rPh") {
                --phoneticDepth;
            } else if (name == "si") {
                sharedStrings_.append(text);
            }
        });
}

std::expected<void, Failure> Workbook::readStyles() {
    const ZipReader::Entry* part = ZipReader::find("xl/styles.xml", entries_);
    if (!part) return {};
    std::map<std::int64_t, NumberFormat> custom;
    bool inCellStyles = false;
    const auto number = [](const XMLAttributes& attributes) -> std::optional<std::int64_t> {
        const auto id = attributes.find("numFmtId");
        return id ? Text::parseInteger(*id) : std::nullopt;
    };
    const auto format = [&](std::int64_t id) {
        if (const auto builtIn = builtInFormat(id)) return *builtIn;
        const auto found = custom.find(id);
        return found == custom.end() ? NumberFormat() : found->second;
    };
    return parse(
        *part,
        [&](std::string_view name, const XMLAttributes& attributes) {
            if (name == "xf") {
                if (inCellStyles) formats_.push_back(format(number(attributes).value_or(0)));
            } else if (name == "cellXfs") {
                inCellStyles = true;
            } else if (name == "numFmt") {
                const auto id = number(attributes);
                const auto code = attributes.find("formatCode");
                if (id && code) custom.insert_or_assign(*id, classifyCode(*code));
            }
        },
        [&](std::string_view name, std::string&) {
            if (name == "cellXfs") inCellStyles = false;
        });
}

std::vector<std::string> Workbook::sheetNames() const {
    std::vector<std::string> names;
    names.reserve(sheetCount());
    for (std::size_t i = 0; i < sheetCount(); ++i) names.emplace_back(sheetNames_[i]);
    return names;
}

Sheet Workbook::sheet(std::size_t index) const {
    const std::uint32_t target = sheetTargets_[index];
    return {
        std::string(sheetNames_[index]),
        memberPath(target == noTarget ? "worksheets/sheet" + std::to_string(index + 1) + ".xml" : targets_[target])};
}

std::expected<TextRows, Failure> Workbook::rows(std::int64_t index) && {
    if (index < 0 || static_cast<std::uint64_t>(index) >= sheetCount()) {
        constexpr std::int64_t last = std::numeric_limits<std::int64_t>::max() - 1;  // that can be counted from 1
        return failure("The workbook has no sheet " + std::to_string(std::min(index, last) + 1) + ".");
    }
    const Sheet wanted = sheet(static_cast<std::size_t>(index));
    const ZipReader::Entry* part = ZipReader::find(wanted.path, entries_);
    if (!part) return failure("The sheet “" + wanted.name + "” is missing from the file.");
    Worksheet worksheet(std::move(sharedStrings_), formats_, dates_);
    XMLEvents events([&](std::string_view name, const XMLAttributes& attributes) { worksheet.start(name, attributes); },
                     [&](std::string_view name, std::string& text) { worksheet.end(name, text); });
    const auto parsed =
        feed(*part, events, [&](std::string_view piece) { return takeCells(piece, events, worksheet); });
    if (!parsed) return std::unexpected(parsed.error());
    return std::move(worksheet).rows();
}

}  // namespace quorvel::XLSX
