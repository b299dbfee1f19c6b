#include "Model/DeckOperations.h"

#include "Foundation/Housekeeping.h"
#include "Foundation/Text.h"
#include "Foundation/TextEncoding.h"
#include "Samples/SampleDeck.h"

#include <algorithm>
#include <array>
#include <climits>
#include <string>
#include <system_error>
#include <unordered_map>
#include <utility>

namespace quorvel::DeckOperations {

namespace {

namespace fs = std::filesystem;

/// Resolves symbolic links, and asks the disk once for each place on the way: the folders of a user's decks have most
/// of their way in common. "." and ".." are resolved as text.
class RealPaths {
public:
    /// Where the path stands, links on the way to it followed, and where it leads. As far as it exists; what no system
    /// takes as a path, and a link that leads in circles, stay as they are.
    struct Found {
        std::string entry;
        std::string target;
    };
    Found find(const fs::path& path) {
        Found found;
        found.target = path.lexically_normal().native();
        while (found.target.size() > 1 && found.target.ends_with('/')) found.target.pop_back();
        found.entry = found.target;
        if (!path.is_absolute() || found.target.size() >= PATH_MAX) return found;
        const std::string normal = std::exchange(found.target, {});
        for (std::size_t start = 1; start < normal.size();) {
            const std::size_t end = std::min(normal.find('/', start), normal.size());
            if (!found.target.ends_with('/')) found.target += '/';
            found.target.append(normal, start, end - start);
            found.entry = found.target;
            if (const std::string& linked = linkedPlace(found.target); !linked.empty()) found.target = linked;
            start = end + 1;
        }
        return found;
    }

private:
    /// Where a link leads; empty for anything else.
    const std::string& linkedPlace(const std::string& place) {
        const auto [known, isNew] = known_.try_emplace(place);
        std::error_code error;
        if (isNew && fs::is_symlink(fs::symlink_status(place, error))) {
            const fs::path real = fs::weakly_canonical(place, error);
            if (!error) known->second = real.native();
        }
        return known->second;
    }

    std::unordered_map<std::string, std::string> known_;
};

/// Whether something of the deck stands in `folder` or leads there.
bool refersInto(const DeckProject& project, const fs::path& folder, RealPaths& paths) {
    return std::ranges::any_of(
        std::array{&project.source, &project.artFolder, &project.iconFolder}, [&](const auto* bookmark) {
            if (!*bookmark) return false;
            const auto [entry, target] = paths.find((*bookmark)->path);
            return Housekeeping::isInside(entry, folder) || (target != entry && Housekeeping::isInside(target, folder));
        });
}

}  // namespace

DeckProject newDeck(SampleTemplates::Kind kind, std::string_view name, double created) {
    DeckProject project;
    project.id = UUID::random();
    project.name = renamed(name).value_or(std::string(newDeckName));
    project.template_ = SampleTemplates::make(kind, project.name);
    project.created = created;
    return project;
}

DeckProject sampleDeck(SampleTemplates::Kind kind, const UUID& id, const fs::path& folder, double created) {
    DeckProject project = newDeck(kind, SampleDeck::name, created);
    project.id = id;
    project.source = Bookmark::plain(folder / SampleDeck::fileName, std::string(SampleDeck::fileName));
    project.artFolder = Bookmark::plain(folder, std::string(sampleFolderLabel));
    return project;
}

std::optional<std::string> renamed(std::string_view name) {
    const std::string repaired = TextEncoding::repairedUTF8(name);
    const std::string_view trimmed = Text::trimWhitespaceAndNewlines(repaired);
    return trimmed.empty() ? std::nullopt : std::optional<std::string>(trimmed);
}

DeckProject duplicate(const DeckProject& project, double created) {
    DeckProject copy = project;
    copy.id = UUID::random();
    copy.template_.id = UUID::random();
    copy.name += " copy";
    copy.created = created;
    return copy;
}

DeckProject withSpreadsheet(DeckProject project, Bookmark source) {
    if (project.name == newDeckName)
        if (auto name = renamed(fs::path(source.name).stem().native())) project.name = std::move(*name);
    project.source = std::move(source);
    project.sheetIndex = 0;
    project.mapping = {};
    return project;
}

std::optional<fs::path> folderToRemove(const DeckProject& deleted, const std::vector<DeckProject>& remaining,
                                       const Library& library) {
    if (!deleted.source || deleted.source->data) return std::nullopt;
    // The system would read such a path up to there only, and that may be the sample folder.
    if (deleted.source->path.contains('\0')) return std::nullopt;
    RealPaths paths;
    // The file may itself be a link; the folder may not lead out.
    const fs::path folder = paths.find(fs::path(paths.find(deleted.source->path).entry).parent_path()).target;
    if (!folder.has_filename() || folder.parent_path() != paths.find(library.sampleFolder()).target)
        return std::nullopt;
    if (std::ranges::any_of(remaining, [&](const auto& deck) { return refersInto(deck, folder, paths); }))
        return std::nullopt;
    return folder;
}

}  // namespace quorvel::DeckOperations
