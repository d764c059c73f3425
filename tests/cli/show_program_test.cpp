// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include <csignal>
#include <filesystem>
#include <thread>

#include <gmock/gmock.h>
#include <sys/stat.h>

#include "program.h"

namespace {

namespace fs = std::filesystem;
using program::Finished;
using program::snapshot;
using testing::HasSubstr;

class Show : public program::ProgramTest {
protected:
    /// Analyses three patients into the document and the exports; the document's path.
    std::string saveThree() const {
        writePair("a_S1_L001");
        writePair("b_S2_L001");
        writePair("c_S10_L001");
        const Finished finished = run(
            {"analyze-all", "--save", document(), "--report", outputs().file("report"), "--summary",
             outputs().file("summary"), "--json", outputs().file("json"), inputs().path()});
        EXPECT_EQ(finished.status, 0) << finished.err;
        return document();
    }
    std::string document() const { return outputs().file("run.vexta"); }
    void expectUnusable(const std::string& path) const {
        const Finished finished = run({"show", path});
        EXPECT_EQ(finished.status, 2) << path;
        EXPECT_EQ(finished.out, "");
        EXPECT_THAT(finished.err, HasSubstr(path));
    }
};

TEST_F(Show, WritesTheSameReportSummaryAndJsonAsTheAnalysis) {
    const std::string path = saveThree();
    const Finished finished =
        run({"show", "--report", outputs().file("report2"), "--summary", outputs().file("summary2"),
             "--json", outputs().file("json2"), path});
    EXPECT_EQ(finished.status, 0) << finished.err;
    EXPECT_EQ(finished.err, "");
    for (const std::string name : {"report", "summary", "json"}) {
        const std::string analysed = support::readFile(outputs().file(name));
        EXPECT_GT(analysed.size(), 100U) << name;
        EXPECT_EQ(support::readFile(outputs().file(name + "2")), analysed) << name;
    }
}

TEST_F(Show, PrintsTheSummaryTableWhereNoOutputIsNamed) {
    const Finished finished = run({"show", saveThree()});
    EXPECT_EQ(finished.status, 0) << finished.err;
    EXPECT_EQ(finished.out, support::readFile(outputs().file("summary")));
}

TEST_F(Show, ShowsOnePatientsDocumentToo) {
    const Finished analysed =
        run({"analyze", "--save", document(), "--json", "-", writePair("a_S7_L001")});
    ASSERT_EQ(analysed.status, 0) << analysed.err;
    EXPECT_EQ(run({"show", "--json", "-", document()}).out, analysed.out);
}

TEST_F(Show, SavingAloneWritesNothingElse) {
    const Finished finished = run({"analyze", "--save", document(), writePair("a_S7_L001")});
    EXPECT_EQ(finished.status, 0) << finished.err;
    EXPECT_EQ(finished.out, "");
    EXPECT_EQ(support::readFile(document()).substr(0, 8), "bplist00");
}

TEST_F(Show, NeedsNeitherTheReadsNorTheCatalogueNorAnySettings) {
    const std::string path = saveThree();
    fs::remove_all(inputs().path());
    fs::remove(cataloguePath());
    fs::create_directories(fs::path(settingsPath()).parent_path());
    home().write("config/vexta/settings.json", "damaged");
    const auto before = snapshot(fs::path(settingsPath()).parent_path());
    const Finished finished = run({"show", path});
    EXPECT_EQ(finished.status, 0) << finished.err;
    EXPECT_EQ(finished.out, support::readFile(outputs().file("summary")));
    EXPECT_EQ(snapshot(fs::path(settingsPath()).parent_path()), before);
}

TEST_F(Show, StoresNoSettingsFile) {
    const std::string path = saveThree();
    fs::remove_all(home().file("config"));
    ASSERT_EQ(run({"show", path}).status, 0);
    EXPECT_FALSE(fs::exists(home().file("config")));
}

TEST_F(Show, RefusesWhatIsNoResultDocument) {
    const std::string whole = support::readFile(saveThree());
    expectUnusable(outputs().write("cut.vexta", whole.substr(0, whole.size() - 1)));
    expectUnusable(outputs().write("foreign.vexta", ordinaryRead1()));
    expectUnusable(outputs().write("empty.vexta", ""));
    expectUnusable(outputs().file("missing.vexta"));
    expectUnusable(outputs().path());
}

TEST_F(Show, RefusesAFifoAndNeverHangs) {
    const std::string fifo = outputs().file("fifo.vexta");
    ASSERT_EQ(mkfifo(fifo.c_str(), 0600), 0);
    expectUnusable(fifo);
}

TEST_F(Show, RefusesAnOutputThatNamesItsInput) {
    const std::string path = saveThree();
    const std::string before = support::readFile(path);
    for (const char* option : {"--report", "--summary", "--json"}) {
        const Finished finished = run({"show", option, path, path});
        EXPECT_EQ(finished.status, 2) << option;
        EXPECT_THAT(finished.err, HasSubstr("this is the input"));
    }
    EXPECT_EQ(support::readFile(path), before);
}

TEST_F(Show, FailsWhereAnOutputCannotBeWritten) {
    const Finished finished = run({"show", "--json", outputs().file("no/json"), saveThree()});
    EXPECT_NE(finished.status, 0);
    EXPECT_THAT(finished.err, HasSubstr("no/json"));
}

TEST_F(Show, HasNoOptionThatSavesAgain) {
    const Finished finished = run({"show", "--save", outputs().file("x.vexta"), saveThree()});
    EXPECT_EQ(finished.status, 2);
    EXPECT_FALSE(fs::exists(outputs().file("x.vexta")));
}

TEST_F(Show, SavingOverAnInputIsRefused) {
    const std::string input = writePair("a_S1_L001");
    const Finished finished = run({"analyze", "--save", input, input});
    EXPECT_EQ(finished.status, 2);
    EXPECT_THAT(finished.err, HasSubstr("this is the input"));
    EXPECT_EQ(support::readFile(input), ordinaryRead1());
}

TEST_F(Show, IsEndedByAnInterruptAsEveryProgramIs) {
    const std::string saved = saveThree();
    const std::string pipe = outputs().file("pipe");
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    const std::string again = outputs().file("again");
    const pid_t process = start({"show", "--report", again, "--summary", pipe, saved});
    while (!fs::exists(again)) { // then it waits for a reader of the pipe
        std::this_thread::yield();
    }
    kill(process, SIGINT);
    EXPECT_EQ(wait(process).status, -1);
}

} // namespace
