// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include <algorithm>
#include <array>
#include <cstdio>
#include <iterator>
#include <regex>
#include <set>
#include <stdexcept>
#include <string>

#include <gtest/gtest.h>

#include "support/temp_dir.h"

namespace {

using Options = std::set<std::string>;

/// Every "--word" in a text.
Options optionsIn(const std::string& text) {
    const std::regex option("--[a-z][a-z-]*");
    Options found;
    std::transform(std::sregex_iterator(text.begin(), text.end(), option), std::sregex_iterator(),
                   std::inserter(found, found.end()),
                   [](const std::smatch& match) { return match.str(); });
    return found;
}

std::string helpOf(const std::string& command) {
    std::FILE* help = ::popen((command + " --help").c_str(), "r");
    if (help == nullptr) {
        throw std::runtime_error("cannot run " + command);
    }
    std::string text;
    std::array<char, 4096> some{};
    while (const std::size_t got = std::fread(some.data(), 1, some.size(), help)) {
        text.append(some.data(), got);
    }
    EXPECT_EQ(::pclose(help), 0) << command;
    return text;
}

/// A manual page as it is written, its "\-" read as "-".
std::string manualPage(const std::string& name) {
    const std::string page = support::readFile(VEXTA_SOURCE_DIR "/packaging/man/" + name);
    return std::regex_replace(page, std::regex(R"(\\-)"), "-");
}

const std::array<std::string, 7> kCommands = {
    "", "analyze", "analyze-all", "show", "catalogue", "catalogue list", "catalogue check"};

Options optionsOfEveryHelp() {
    Options options;
    for (const std::string& command : kCommands) {
        options.merge(optionsIn(helpOf(VEXTA_PROGRAM " " + command)));
    }
    return options;
}

TEST(ManualPage, HoldsExactlyTheOptionsThatHelpLists) {
    const Options listed = optionsOfEveryHelp();
    EXPECT_GT(listed.size(), 10U);
    EXPECT_EQ(optionsIn(manualPage("vexta.1")), listed);
}

TEST(ManualPage, OfTheGeneratorHoldsExactlyTheOptionsThatItsHelpLists) {
    const Options listed = optionsIn(helpOf(VEXTA_MAKE_READS_PROGRAM));
    EXPECT_GT(listed.size(), 5U);
    EXPECT_EQ(optionsIn(manualPage("vexta-make-reads.1")), listed);
}

#ifdef VEXTA_DESKTOP_PROGRAM
TEST(ManualPage, OfTheDesktopHoldsExactlyTheOptionsThatItsHelpLists) {
    const Options listed = optionsIn(helpOf(VEXTA_DESKTOP_PROGRAM));
    EXPECT_GE(listed.size(), 2U);
    EXPECT_EQ(optionsIn(manualPage("vexta-desktop.1")), listed);
}
#endif

TEST(ManualPage, HoldsEveryCommand) {
    const std::string page = manualPage("vexta.1");
    for (const std::string& command : kCommands) {
        EXPECT_NE(page.find(command), std::string::npos) << command;
    }
}

TEST(ManualPage, TellsEveryExitStatus) {
    const std::string page = manualPage("vexta.1");
    const std::string status = page.substr(page.find(".SH EXIT STATUS"));
    for (const char* number : {"0", "1", "2", "129", "130", "143"}) {
        EXPECT_NE(status.find(std::string(".TP\n.B ") + number + "\n"), std::string::npos)
            << number;
    }
}

} // namespace
