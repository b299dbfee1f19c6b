#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <map>
#include <set>
#include <sstream>
#include <string>
#include <vector>

namespace {

namespace fs = std::filesystem;

struct Include {
    std::string file;  // from the top of the tree
    std::string from;  // the room that includes
    std::string to;    // the room that is included
};

/// The rooms and the arrows between them, as the drawing in ARCHITECTURE.md says: lines "Room -> Room, Room" in the
/// block that begins with "rooms". An arrow allows everything behind it.
std::map<std::string, std::set<std::string>> drawnArrows() {
    std::ifstream file(std::string(QUORVEL_SOURCE_DIR) + "/ARCHITECTURE.md");
    std::map<std::string, std::set<std::string>> arrows;
    bool inside = false;
    for (std::string line; std::getline(file, line);) {
        if (line == "```rooms")
            inside = true;
        else if (line == "```")
            inside = false;
        else if (inside) {
            const auto arrow = line.find("->");
            std::istringstream left(line.substr(0, arrow));
            std::string room, target;
            left >> room;
            arrows[room];
            if (arrow == std::string::npos) continue;
            std::istringstream right(line.substr(arrow + 2));
            while (right >> target) {
                if (target.back() == ',') target.pop_back();
                arrows[room].insert(target);
            }
        }
    }
    return arrows;
}

std::set<std::string> reachable(const std::map<std::string, std::set<std::string>>& arrows, const std::string& room) {
    std::set<std::string> seen{room};
    std::vector<std::string> open{room};
    while (!open.empty()) {
        const auto found = arrows.find(open.back());
        open.pop_back();
        if (found == arrows.end()) continue;
        for (const auto& next : found->second)
            if (seen.insert(next).second) open.push_back(next);
    }
    return seen;
}

/// Every include in quotes below `top` whose first folder is a room.
std::vector<Include> includesBelow(const std::string& top, const std::map<std::string, std::set<std::string>>& arrows) {
    std::vector<Include> includes;
    const fs::path root = QUORVEL_SOURCE_DIR;
    for (const auto& entry : fs::recursive_directory_iterator(root / top)) {
        const auto extension = entry.path().extension();
        if (extension != ".h" && extension != ".cpp") continue;
        const fs::path relative = fs::relative(entry.path(), root);
        const auto second = std::next(relative.begin());
        std::ifstream file(entry.path());
        for (std::string line; std::getline(file, line);) {
            if (!line.starts_with("#include \"")) continue;
            const std::string target = line.substr(10, line.find('"', 10) - 10);
            const auto slash = target.find('/');
            const std::string room = slash == std::string::npos ? second->string() : target.substr(0, slash);
            if (arrows.contains(room))
                includes.push_back({relative.string(), second->string(), room});
            else
                ADD_FAILURE() << relative.string() << " includes \"" << target << "\", which is in no room";
        }
    }
    return includes;
}

TEST(IncludeDirection, EveryRoomIsDrawn) {
    const auto arrows = drawnArrows();
    std::set<std::string> drawn;
    for (const auto& [room, targets] : arrows) {
        drawn.insert(room);
        for (const auto& target : targets) EXPECT_TRUE(arrows.contains(target)) << room << " points at " << target;
    }
    std::set<std::string> folders{"quorvel-cli"};
    for (const std::string top : {"/QuorvelKit", "/QuorvelApp"})
        for (const auto& entry : fs::directory_iterator(QUORVEL_SOURCE_DIR + top))
            if (entry.is_directory()) folders.insert(entry.path().filename().string());
    EXPECT_EQ(drawn, folders);
}

TEST(IncludeDirection, NoArrowsRunInACircle) {
    const auto arrows = drawnArrows();
    for (const auto& [room, targets] : arrows)
        for (const auto& target : targets)
            EXPECT_FALSE(reachable(arrows, target).contains(room)) << room << " and " << target;
}

TEST(IncludeDirection, NoIncludeRunsBack) {
    const auto arrows = drawnArrows();
    auto includes = includesBelow("QuorvelKit", arrows);
    for (const char* top : {"QuorvelApp", "Tools"}) {
        const auto more = includesBelow(top, arrows);
        includes.insert(includes.end(), more.begin(), more.end());
    }
    ASSERT_GT(includes.size(), 100u) << "the includes were not found";
    for (const auto& include : includes)
        EXPECT_TRUE(reachable(arrows, include.from).contains(include.to))
            << include.file << " includes from " << include.to << ", against the arrows";
}

/// Rooms may use the outside libraries that ARCHITECTURE.md names for them; nothing else, so that the decoders and the
/// drawing library stay behind their doors.
TEST(IncludeDirection, OutsideLibrariesStayBehindTheirDoors) {
    const std::map<std::string, std::set<std::string>> allowed{
        {"cairo", {"Drawing", "Rendering", "Pictures", "Samples"}},
        {"pango", {"Drawing", "Rendering"}},
        {"fontconfig", {"Drawing"}},
        {"vips", {"Pictures"}},
        {"poppler", {"Pictures"}},
        {"libdeflate", {"Pictures", "Spreadsheet"}},
        {"utf8proc", {"Foundation"}},
        {"nlohmann", {"Foundation"}},
        {"sys/inotify", {"Library"}},
        {"thread", {"Foundation", "QtPlatform"}},
        {"Q",
         {"QtPlatform", "QtDesktop", "Controls", "CardsTab", "Inspector", "TemplateTab", "SheetsTab", "DataTab",
          "Shell", "Application"}},
    };
    const fs::path root = QUORVEL_SOURCE_DIR;
    std::size_t seen = 0;
    std::vector<fs::directory_entry> entries;
    for (const char* top : {"QuorvelKit", "QuorvelApp"})
        for (const auto& entry : fs::recursive_directory_iterator(root / top)) entries.push_back(entry);
    for (const auto& entry : entries) {
        const auto extension = entry.path().extension();
        if (extension != ".h" && extension != ".cpp") continue;
        const std::string room = entry.path().parent_path().filename().string();
        std::ifstream file(entry.path());
        for (std::string line; std::getline(file, line);) {
            if (!line.starts_with("#include <")) continue;
            const std::string header = line.substr(10);
            for (const auto& [library, rooms] : allowed) {
                if (!header.starts_with(library)) continue;
                ++seen;
                EXPECT_TRUE(rooms.contains(room))
                    << fs::relative(entry.path(), root).string() << " includes <" << header;
            }
        }
    }
    EXPECT_GT(seen, 5u);
}

}  // namespace
