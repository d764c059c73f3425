// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
// What the program gives a terminal. A result document is input from anywhere, and a terminal obeys
// control characters.
#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

#include <fcntl.h>
#include <gmock/gmock.h>
#include <nlohmann/json.hpp>
#include <termios.h>
#include <unistd.h>

#include "program.h"

namespace {

using program::Finished;
using testing::HasSubstr;

/// A terminal of the test's own, which passes on what is written to it unchanged.
class Terminal {
public:
    Terminal() : m_master(::posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC)) {
        char name[128] = {};
        termios modes = {};
        m_works = m_master >= 0 && ::grantpt(m_master) == 0 && ::unlockpt(m_master) == 0 &&
                  ::ptsname_r(m_master, name, sizeof name) == 0;
        m_slave = m_works ? ::open(name, O_RDWR | O_NOCTTY | O_CLOEXEC) : -1;
        m_works = m_slave >= 0 && ::tcgetattr(m_slave, &modes) == 0;
        ::cfmakeraw(&modes);
        m_works = m_works && ::tcsetattr(m_slave, TCSANOW, &modes) == 0;
        m_path = name;
    }
    ~Terminal() {
        ::close(m_slave);
        ::close(m_master);
    }
    Terminal(const Terminal&) = delete;
    Terminal& operator=(const Terminal&) = delete;

    bool works() const { return m_works; }
    const std::string& path() const { return m_path; }
    /// What was written so far. A terminal holds a few kilobytes that nobody has read.
    std::string read() const {
        ::fcntl(m_master, F_SETFL, O_NONBLOCK);
        std::string text;
        char block[4096];
        for (ssize_t count = 0; (count = ::read(m_master, block, sizeof block)) > 0;) {
            text.append(block, static_cast<std::size_t>(count));
        }
        return text;
    }

private:
    int m_master = -1;
    int m_slave = -1;
    bool m_works = false;
    std::string m_path;
};

/// A document whose directory's name is hostile: it would clear the screen, turn the writing, and
/// forge a second line.
class ShowToATerminal : public program::ProgramTest {
protected:
    void SetUp() override {
        if (!terminal.works()) {
            GTEST_SKIP() << "no terminal can be made here";
        }
        writePair("a_S1_L001");
        const std::string hostile = outputs().file("x" + kHostile + "y");
        std::filesystem::rename(inputs().path(), hostile);
        const Finished analysed =
            run({"analyze", "--save", document(), "--summary", outputs().file("summary"), "--json",
                 outputs().file("json"), hostile + "/a_S1_L001_R1_001.fastq"});
        std::filesystem::rename(hostile, inputs().path());
        ASSERT_EQ(analysed.status, 0) << analysed.err;
    }
    std::string document() const { return outputs().file("run.vexta"); }
    /// What show writes on the terminal.
    std::string shown(const std::vector<std::string>& options) const {
        std::vector<std::string> arguments = {"show"};
        arguments.insert(arguments.end(), options.begin(), options.end());
        arguments.push_back(document());
        const Finished finished = runInto(terminal.path(), arguments);
        EXPECT_EQ(finished.status, 0) << finished.err;
        return terminal.read();
    }

    static inline const std::string kHostile = "\x1b[2J\xE2\x80\xAE\n\t\x7f\xC2\x9B";
    static inline const std::string kEscaped = "\\u001b[2J\\u202e\\u000a\\u0009\\u007f\\u009b";
    const Terminal terminal;
};

TEST_F(ShowToATerminal, ShowsTheControlCharactersOfADocumentEscaped) {
    const std::string summary = shown({});
    EXPECT_THAT(summary, HasSubstr("\nx" + kEscaped + "y/a_S1_L001_R1_001.fastq\t"));
    EXPECT_EQ(summary.find_first_of("\x1b\x7f\xC2\xE2"), std::string::npos);
    EXPECT_EQ(std::count(summary.begin(), summary.end(), '\n'), 2) << "the head and the patient";
}

TEST_F(ShowToATerminal, ShowsJsonThatMeansTheSame) {
    const std::string json = shown({"--json", "-"});
    EXPECT_EQ(json.find_first_of("\x1b\x7f\xC2\xE2"), std::string::npos);
    const std::string file = support::readFile(outputs().file("json"));
    EXPECT_NE(file, json);
    EXPECT_EQ(nlohmann::json::parse(json), nlohmann::json::parse(file));
}

TEST_F(ShowToATerminal, DoesSoUnderATerminalsNameToo) {
    for (const std::string option : {"--report", "--summary", "--json"}) {
        ASSERT_EQ(run({"show", option, terminal.path(), document()}).status, 0);
        const std::string text = terminal.read();
        EXPECT_THAT(text, HasSubstr("a_S1_L001_R1_001.fastq")) << option;
        EXPECT_EQ(text.find_first_of("\x1b\x7f\xC2\xE2"), std::string::npos) << option;
    }
}

TEST_F(ShowToATerminal, GivesFilesAndPipesEveryByte) {
    const std::string summary = support::readFile(outputs().file("summary"));
    EXPECT_THAT(summary, HasSubstr("x" + kHostile + "y/a_S1"));
    EXPECT_EQ(run({"show", document()}).out, summary);
    shown({"--report", "-", "--summary", outputs().file("again")});
    EXPECT_EQ(support::readFile(outputs().file("again")), summary);
}

TEST_F(ShowToATerminal, SaysHostileNamesHarmlessly) {
    const Finished finished = run({"show", outputs().file("x" + kHostile + "y")});
    EXPECT_EQ(finished.status, 2);
    EXPECT_THAT(finished.err, HasSubstr("\\u001b[2J\\u202e\\u000a\t\\u007f\\u009b"));
    EXPECT_EQ(finished.err.find_first_of("\x1b\x7f\xC2\xE2"), std::string::npos);
    const Finished misspelt = run({"show", "--" + kHostile, document()});
    EXPECT_EQ(misspelt.err.find_first_of("\x1b\x7f\xC2\xE2"), std::string::npos) << misspelt.err;
}

} // namespace
