#include "Model/DeckLoading.h"

#include "Library/FileStamp.h"

#include <utility>
#include <variant>

namespace quorvel::DeckLoading {
namespace {

std::string quoted(const std::string& name) {
    return "“" + name + "”";
}

std::string couldNotBeRead(const std::string& name, const std::string& reason) {
    return quoted(name) + " couldn’t be read: " + reason;
}

std::string message(const DataLoader::Failure& failure, const std::string& name) {
    using enum DataLoader::Failure::Kind;
    switch (failure.kind) {
        case numbers:
            return quoted(name) + " is a Numbers file. In Numbers, choose File › Export To › CSV, then use that file.";
        case oldExcel:
            return quoted(name) + " is an older Excel file. Save it as .xlsx or CSV first.";
        case notText:
            return quoted(name) + " doesn’t look like a CSV or Excel file.";
        case empty:
            return quoted(name) + " is empty.";
    }
    return {};
}

std::string message(const DataLoader::TableFailure& failure, const std::string& name) {
    if (const auto* kind = std::get_if<DataLoader::Failure>(&failure)) return message(*kind, name);
    return couldNotBeRead(name, DataLoader::description(failure));
}

/// The bookmark's file, when it can be found; a renewed bookmark takes the old one's place.
std::optional<std::filesystem::path> find(std::optional<Bookmark>& bookmark) {
    if (!bookmark) return std::nullopt;
    auto resolved = bookmark->resolve();
    if (!resolved) return std::nullopt;
    if (resolved->refreshed) bookmark = std::move(resolved->refreshed);
    return std::move(resolved->url);
}

}  // namespace

Files find(const DeckProject& project) {
    Files files;
    files.refreshed = project;
    if (const auto folder = find(files.refreshed.artFolder)) files.pictureFolders.push_back(*folder);
    files.iconFolder = find(files.refreshed.iconFolder);
    files.source = find(files.refreshed.source);
    if (files.source) files.pictureFolders.push_back(files.source->parent_path());
    return files;
}

Loaded load(const std::filesystem::path& file, std::int64_t sheetIndex, const FieldMapping& mapping) {
    Loaded loaded;
    loaded.stamp = fileStamp(file);
    const std::string name = file.filename().string();

    auto read = DataLoader::load(file, sheetIndex);
    if (!read) {
        loaded.result = std::unexpected(couldNotBeRead(name, read.error().description()));
        return loaded;
    }
    loaded.wasRead = true;
    loaded.sheetNames = std::move(read->sheetNames);
    loaded.sheetIndex = read->sheet;
    if (!read->result) {
        loaded.result = std::unexpected(message(read->result.error(), name));
        return loaded;
    }
    Cards cards;
    cards.table = std::make_shared<const DataTable>(std::move(*read->result));
    cards.mapping = mappingFor(mapping, cards.table->headers);
    cards.deck = std::make_shared<const Deck>(cards.table, cards.mapping);
    loaded.result = std::move(cards);
    return loaded;
}

FieldMapping mappingFor(const FieldMapping& old, const std::vector<std::string>& headers) {
    return old.columns.empty() ? FieldMapping::guess(headers) : FieldMapping::reconcile(old, headers);
}

std::string notFoundMessage(const std::string& name) {
    return quoted(name) + " can’t be found. It may have been moved or deleted: choose it again.";
}

}  // namespace quorvel::DeckLoading
