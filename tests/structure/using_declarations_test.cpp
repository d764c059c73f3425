// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
// Each using-declaration serves its own file. clang-tidy reads many sources as one unit and cannot
// tell which of them uses a name.

#include <cctype>
#include <cstddef>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>

#include <gtest/gtest.h>

namespace {

namespace fs = std::filesystem;

std::string withoutComments(const fs::path& path) {
    std::ifstream file(path);
    std::string code = "\n";
    for (std::string line; std::getline(file, line);) {
        code += line.substr(0, line.find("//")) + "\n";
    }
    return code;
}

bool isOfAName(char letter) {
    return std::isalnum(static_cast<unsigned char>(letter)) != 0 || letter == '_';
}

std::size_t occurrences(const std::string& code, const std::string& name) {
    std::size_t count = 0;
    for (std::size_t at = code.find(name); at != std::string::npos; at = code.find(name, at + 1)) {
        const std::size_t end = at + name.size();
        count += isOfAName(code[at - 1]) || isOfAName(code[end]) ? 0U : 1U;
    }
    return count;
}

/// "c" of the line "using a::b::c;", empty of any other line.
std::string declaredName(const std::string& line) {
    const std::size_t start = line.find_first_not_of(' ');
    const std::size_t last = line.rfind("::");
    const std::size_t end = line.find(';');
    if (start == std::string::npos || line.compare(start, 6, "using ") != 0 ||
        last == std::string::npos || end == std::string::npos || end < last ||
        line.find('=') != std::string::npos || line.find(" namespace ") != std::string::npos) {
        return {};
    }
    return line.substr(last + 2, end - last - 2);
}

/// How many declarations there are.
std::size_t expectUsed(const fs::path& path) {
    const std::string code = withoutComments(path);
    std::istringstream lines(code);
    std::size_t declarations = 0;
    for (std::string line; std::getline(lines, line);) {
        if (const std::string name = declaredName(line); !name.empty()) {
            EXPECT_GT(occurrences(code, name), 1U) << path << ": " << line;
            ++declarations;
        }
    }
    return declarations;
}

TEST(UsingDeclarations, NameWhatTheirFileUses) {
    std::size_t seen = 0;
    for (const char* folder : {"src", "tools", "tests", "bench", "fuzz"}) {
        for (const auto& entry :
             fs::recursive_directory_iterator(fs::path(VEXTA_SOURCE_DIR) / folder)) {
            if (entry.path().extension() == ".cpp" || entry.path().extension() == ".h") {
                seen += expectUsed(entry.path());
            }
        }
    }
    EXPECT_GT(seen, 0U);
}

} // namespace
