// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0

#include <algorithm>
#include <cstddef>
#include <filesystem>
#include <fstream>
#include <map>
#include <set>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace {

namespace fs = std::filesystem;

using Rooms = std::set<std::string>;

/// Who may include whom: data flow one way, from files to calls to people, so no include runs
/// upwards.
const Rooms kEngine = {"platform", "archive",  "settings", "catalogue",
                       "reads",    "matching", "calling"};

Rooms operator+(Rooms rooms, const Rooms& more) {
    rooms.insert(more.begin(), more.end());
    return rooms;
}

const std::map<std::string, Rooms> kMayInclude = {
    {"platform", {}},
    {"archive", {"platform"}},
    {"settings", {"platform"}},
    {"catalogue", {"platform", "archive"}},
    {"reads", {"platform"}},
    {"matching", {"platform", "catalogue", "reads"}},
    {"calling", {"platform", "archive", "settings", "catalogue"}},
    {"run", kEngine},
    {"document", kEngine + Rooms{"run"}},
    {"report", kEngine + Rooms{"run", "document"}},
    {"cli", kEngine + Rooms{"run", "document", "report"}},
    {"ui", kEngine + Rooms{"run", "document", "report"}},
};

std::string includedPath(const std::string& line) {
    const std::string start = "#include \"";
    if (line.rfind(start, 0) != 0) {
        return {};
    }
    return line.substr(start.size(), line.find('"', start.size()) - start.size());
}

fs::path sourceRoot() {
    return fs::path(VEXTA_SOURCE_DIR) / "src";
}

TEST(IncludeLines, EveryRoomIsInTheTable) {
    std::size_t rooms = 0;
    for (const auto& entry : fs::directory_iterator(sourceRoot())) {
        if (entry.is_directory()) {
            EXPECT_TRUE(kMayInclude.count(entry.path().filename())) << entry.path();
            ++rooms;
        }
    }
    EXPECT_EQ(rooms, kMayInclude.size());
}

struct IncludeLine {
    fs::path file;
    std::string room;
    std::string line;
};

std::vector<IncludeLine> includeLines() {
    std::vector<IncludeLine> lines;
    for (const auto& entry : fs::recursive_directory_iterator(sourceRoot())) {
        const std::string room = fs::relative(entry.path(), sourceRoot()).begin()->string();
        std::ifstream file(entry.path());
        for (std::string line; entry.is_regular_file() && std::getline(file, line);) {
            if (line.rfind("#include", 0) == 0) {
                lines.push_back({entry.path(), room, line});
            }
        }
    }
    return lines;
}

TEST(IncludeLines, ARoomIncludesOnlyRoomsBelowIt) {
    std::size_t seen = 0;
    for (const auto& [file, room, line] : includeLines()) {
        const std::string path = includedPath(line);
        if (path.empty()) {
            continue;
        }
        ++seen;
        const std::string from = path.substr(0, path.find('/'));
        EXPECT_TRUE(from == room || kMayInclude.at(room).count(from)) << file << ": " << line;
        EXPECT_TRUE(fs::exists(sourceRoot() / path)) << file << ": " << line;
    }
    EXPECT_GT(seen, 0U);
}

/// The folders of the desktop's room, each building on those before it.
const std::vector<std::string> kDesktopFolders = {"widgets", "tables", "window", "application"};

std::ptrdiff_t desktopFolder(const fs::path& path) {
    const auto found = std::find(kDesktopFolders.begin(), kDesktopFolders.end(),
                                 path.parent_path().filename().string());
    EXPECT_NE(found, kDesktopFolders.end()) << path;
    return found - kDesktopFolders.begin();
}

TEST(IncludeLines, AFolderOfTheDesktopIncludesOnlyThoseBelowIt) {
    std::size_t seen = 0;
    for (const auto& [file, room, line] : includeLines()) {
        const std::string path = includedPath(line);
        if (room == "ui" && path.rfind("ui/", 0) == 0) {
            EXPECT_LE(desktopFolder(path), desktopFolder(file)) << file << ": " << line;
            ++seen;
        }
    }
    EXPECT_GT(seen, 0U);
}

/// So a header is compiled without anything before it.
TEST(IncludeLines, ASourceBeginsWithItsOwnHeader) {
    fs::path before;
    std::size_t seen = 0;
    for (const auto& [file, room, line] : includeLines()) {
        fs::path header = file;
        header.replace_extension(".h");
        if (file != before && file.extension() == ".cpp" && fs::exists(header)) {
            EXPECT_EQ(includedPath(line), fs::relative(header, sourceRoot())) << file;
            ++seen;
        }
        before = file;
    }
    EXPECT_GT(seen, 0U);
}

TEST(IncludeLines, NothingBelowTheWindowNamesAToolkit) {
    std::size_t seen = 0;
    for (const auto& [file, room, line] : includeLines()) {
        if (line.rfind("#include <Q", 0) == 0) {
            EXPECT_EQ(room, "ui") << file << ": " << line;
            ++seen;
        }
    }
    EXPECT_GT(seen, 0U);
}

} // namespace
