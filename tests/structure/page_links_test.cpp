// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
//
// The links between the pages. A page that moves, or a heading that changes, breaks links in other
// pages, and nobody sees it there.
#include <algorithm>
#include <cctype>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <regex>
#include <set>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "support/temp_dir.h"

namespace {

namespace fs = std::filesystem;

const fs::path kRoot = VEXTA_SOURCE_DIR;

/// Every page of the source tree; build directories hold none of ours.
std::vector<fs::path> pages() {
    std::vector<fs::path> found = {kRoot / "README.md"};
    for (const char* folder :
         {"docs", "examples", "src", "tools", "packaging", "bench", "fuzz", "tests"}) {
        for (const auto& entry : fs::recursive_directory_iterator(kRoot / folder)) {
            if (entry.path().extension() == ".md") {
                found.push_back(entry.path());
            }
        }
    }
    return found;
}

/// What a heading is called in a link: lower case, blanks as "-", without punctuation.
std::string anchorOf(const std::string& heading) {
    std::string anchor;
    for (const char c : heading) {
        const auto letter = static_cast<unsigned char>(c);
        if (std::isalnum(letter) != 0 || c == '-' || c == '_') {
            anchor += static_cast<char>(std::tolower(letter));
        } else if (c == ' ') {
            anchor += '-';
        }
    }
    return anchor;
}

std::set<std::string> anchorsOf(const fs::path& page) {
    std::set<std::string> anchors;
    std::ifstream file(page);
    for (std::string line; std::getline(file, line);) {
        const std::size_t text = line.find_first_not_of('#');
        if (text != std::string::npos && text > 0 && line[text] == ' ') {
            anchors.insert(anchorOf(line.substr(text + 1)));
        }
    }
    return anchors;
}

/// The targets of "[text](target)" that lead to files, with their anchors.
std::vector<std::string> linksOf(const fs::path& page) {
    const std::string text = support::readFile(page.string());
    const std::regex link(R"(\]\(([^)\s]+)\))");
    std::vector<std::string> links;
    std::transform(std::sregex_iterator(text.begin(), text.end(), link), std::sregex_iterator(),
                   std::back_inserter(links),
                   [](const std::smatch& match) { return match.str(1); });
    links.erase(std::remove_if(
                    links.begin(), links.end(),
                    [](const std::string& each) { return each.find("://") != std::string::npos; }),
                links.end());
    return links;
}

TEST(PageLinks, LeadToFilesAndHeadingsThatAreThere) {
    std::size_t links = 0;
    for (const fs::path& page : pages()) {
        for (const std::string& link : linksOf(page)) {
            ++links;
            const std::size_t hash = link.find('#');
            const fs::path target = hash == 0 ? page : page.parent_path() / link.substr(0, hash);
            EXPECT_TRUE(fs::exists(target)) << page << ": " << link;
            if (hash != std::string::npos && fs::is_regular_file(target)) {
                EXPECT_EQ(anchorsOf(target).count(link.substr(hash + 1)), 1U)
                    << page << ": " << link;
            }
        }
    }
    EXPECT_GT(links, 20U);
}

TEST(PageLinks, LeadFromTheListOfPagesToEachOfThem) {
    std::set<fs::path> listed = {kRoot / "docs/README.md"};
    for (const std::string& link : linksOf(kRoot / "docs/README.md")) {
        listed.insert((kRoot / "docs" / link).lexically_normal());
    }
    for (const fs::path& page : pages()) {
        if (page.string().rfind((kRoot / "docs/").string(), 0) == 0) {
            EXPECT_EQ(listed.count(page), 1U) << page << " is not in docs/README.md";
        }
    }
}

} // namespace
