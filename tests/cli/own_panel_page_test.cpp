// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
//
// docs/your-own-panel.md shows commands and what they print. Its readers compare the two, so the
// page is run here, command by command.
#include <cstdlib>
#include <filesystem>
#include <sstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "platform/child_process.h"
#include "support/temp_dir.h"

namespace {

namespace fs = std::filesystem;

const std::string kSource = VEXTA_SOURCE_DIR;
const std::string kIndent(4, ' ');

/// A command of the page and the lines below it.
struct Step {
    std::string command;
    std::string output;
};

std::string page() {
    return support::readFile(kSource + "/docs/your-own-panel.md");
}

/// The commands that use the example's files; others are for a reader's own.
std::vector<Step> stepsOfPage() {
    std::vector<Step> steps;
    std::istringstream lines(page());
    const std::string prompt = kIndent + "$ ";
    bool inStep = false;
    for (std::string line; std::getline(lines, line);) {
        if (line.rfind(prompt, 0) == 0) {
            const std::string command = line.substr(prompt.size());
            inStep = command.find("own-panel/") != std::string::npos || command == "mkdir made";
            inStep = inStep || command.find(" made") != std::string::npos;
            if (inStep) {
                steps.push_back({command, ""});
            }
        } else if (inStep && (line.rfind(kIndent, 0) == 0 || line.empty())) {
            steps.back().output += line.empty() ? "\n" : line.substr(kIndent.size()) + "\n";
        } else {
            inStep = false;
        }
    }
    for (Step& step : steps) {
        // The blank line between a block and the text.
        while (step.output.size() >= 2 && step.output.substr(step.output.size() - 2) == "\n\n") {
            step.output.pop_back();
        }
        if (step.output == "\n") {
            step.output.clear();
        }
    }
    return steps;
}

TEST(OwnPanelPage, ShowsTheFileThatShipsWithIt) {
    std::istringstream lines(support::readFile(kSource + "/examples/own-panel/panel.txt"));
    std::string block;
    for (std::string line; std::getline(lines, line);) {
        block += line.empty() ? "\n" : kIndent + line + "\n";
    }
    EXPECT_NE(page().find("`own-panel/panel.txt`:\n\n" + block + "\n"), std::string::npos);
}

TEST(OwnPanelPage, ShowsWhatItsCommandsPrint) {
    const support::TempDir work;
    fs::copy(kSource + "/examples/own-panel", work.file("own-panel"));
    const std::string setUp =
        "cd '" + work.path() + "' && export PATH='" VEXTA_PROGRAMS ":'\"$PATH\" HOME='" +
        work.path() + "' && unset XDG_CONFIG_HOME VEXTA_CATALOGUE VEXTA_RESOURCES && ";
    const std::vector<Step> steps = stepsOfPage();
    ASSERT_GE(steps.size(), 6U);
    for (const Step& step : steps) {
        const auto run = platform::runShellCommand(setUp + "{ " + step.command + "; } > output");
        ASSERT_TRUE(run.ok()) << step.command;
        EXPECT_EQ(run.value().exitCode, 0) << step.command;
        EXPECT_EQ(support::readFile(work.file("output")), step.output) << step.command;
    }
}

} // namespace
