// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include <chrono>
#include <csignal>
#include <filesystem>
#include <functional>
#include <thread>
#include <vector>

#include <fcntl.h>
#include <gmock/gmock.h>
#include <nlohmann/json.hpp>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include "platform/files.h"
#include "program.h"

namespace {

namespace fs = std::filesystem;
using nlohmann::json;
using program::Finished;
using program::gzipped;
using testing::HasSubstr;

/// The expansion of working copies is what these tests hold a run at: a "gunzip" of their own says
/// that it started and waits until it may go on.
class HeldRun : public program::ProgramTest {
protected:
    HeldRun() {
        const std::string command = commandDirectory() + "/gunzip";
        home().write("bin/gunzip", "#!/bin/sh\necho $$ > '" + home().file("pid.new") + "'\nmv '" +
                                       home().file("pid.new") + "' '" + home().file("pid") +
                                       "'\nwhile [ ! -e '" + home().file("go") +
                                       "' ]; do sleep 0.02; done\nexec gzip -d \"$@\"\n");
        fs::permissions(command, fs::perms::owner_all);
    }

    std::string writePackedPair(const std::string& prefix) const {
        inputs().write(prefix + "_R2_001.fastq.gz", gzipped(ordinaryRead2()));
        return inputs().write(prefix + "_R1_001.fastq.gz", gzipped(ordinaryRead1()));
    }

    /// Waits until the condition holds; gives up, and fails, after a time that only a fault takes.
    static void waitUntil(const std::function<bool()>& condition) {
        const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(60);
        while (!condition()) {
            ASSERT_LT(std::chrono::steady_clock::now(), end);
            std::this_thread::sleep_for(std::chrono::milliseconds(5));
        }
    }
    void waitUntilExpanding() const {
        waitUntil([this] { return fs::exists(home().file("pid")); });
    }
    void waitForTheInterruptsNote() const {
        waitUntil([this] {
            return support::readFile(errPath()).find("stopping after") != std::string::npos;
        });
    }
    void interruptAndWaitForTheNote(pid_t process) const {
        kill(process, SIGINT);
        waitForTheInterruptsNote();
    }
    void letExpansionGoOn() const { home().write("go", ""); }

    static bool hasEnded(pid_t process) {
        const std::string status = "/proc/" + std::to_string(process) + "/status";
        return !fs::exists(status) ||
               support::readFile(status).find("State:\tZ") != std::string::npos;
    }
    pid_t expandingChild() const { return std::stoi(support::readFile(home().file("pid"))); }

    /// A settings file whose first threshold calling repairs, and holds its lock: a run is then
    /// held behind its matching, before its files are cleaned up.
    void holdRunsAtTheRepairOfAThreshold() {
        fs::create_directories(platform::directoryOf(settingsPath()));
        home().write("config/vexta/settings.json",
                     R"({"leaveIntermediateFiles": false, "calculateFalsePositiveRate": false,
                         "nD1Threshold": 0, "nD2Threshold": "10", "windowSizeMidi": false,
                         "copyNumberOfInternalControl": "100000"})");
        holdSettingsLock();
    }
    void holdSettingsLock() {
        fs::create_directories(platform::directoryOf(settingsPath()));
        m_lock = open((settingsPath() + ".lock").c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600);
        ASSERT_EQ(flock(m_lock, LOCK_EX | LOCK_NB), 0);
    }
    void letSettingsGo() {
        close(m_lock);
        m_lock = -1;
    }
    void waitUntilTheRunWaitsForTheSettings() const {
        waitUntil([this] {
            return support::readFile(errPath()).find("Waiting to store a setting") !=
                   std::string::npos;
        });
    }
    ~HeldRun() override {
        if (m_lock >= 0) {
            close(m_lock);
        }
    }

private:
    int m_lock = -1;
};

/// Ways to end the program at once, and its exit status then.
struct Ending {
    const char* name;
    std::vector<int> signals;
    int status;
};

const std::vector<Ending> kEndings = {
    {"SIGTERM", {SIGTERM}, 143},
    {"SIGHUP", {SIGHUP}, 129},
    {"SIGINT twice", {SIGINT, SIGINT}, 130},
};

/// Sends the signals one by one, since a second one that is still pending is lost.
void end(pid_t process, const Ending& ending, const std::function<void()>& interrupted) {
    kill(process, ending.signals.front());
    if (ending.signals.size() > 1) {
        interrupted();
        kill(process, ending.signals.back());
    }
}

TEST_F(HeldRun, AnInterruptedBatchStopsAfterTheRunningPatientWhichIsWritten) {
    writePackedPair("a_S1_L001");
    writePackedPair("b_S2_L001");
    writePackedPair("c_S3_L001");
    const pid_t process =
        start({"analyze-all", "--working-copies", "--json", outputs().file("j"), inputs().path()});
    waitUntilExpanding();
    interruptAndWaitForTheNote(process);
    letExpansionGoOn();
    const Finished finished = wait(process);
    EXPECT_EQ(finished.status, 130);
    const json document = json::parse(support::readFile(outputs().file("j")));
    ASSERT_EQ(document["summaryForEachPatientMutAr"].size(), 1U);
    EXPECT_EQ(document["summaryForEachPatientMutAr"][0]["patientNo"], "1");
    EXPECT_EQ(program::snapshot(inputs().path()).size(), 7U); // six inputs and the directory
}

TEST_F(HeldRun, AnInterruptedSingleRunIsFinishedAndWritten) {
    const std::string read1 = writePackedPair("a_S1_L001");
    const pid_t process = start({"analyze", "--working-copies", read1});
    waitUntilExpanding();
    interruptAndWaitForTheNote(process);
    letExpansionGoOn();
    const Finished finished = wait(process);
    EXPECT_EQ(finished.status, 130);
    EXPECT_THAT(finished.out, HasSubstr("/a_S1_L001_R1_001.fastq.gz\tNegative\t\tKRAS\t\t\n"));
}

TEST_F(HeldRun, ANamedCatalogueThatGoesAwayDuringABatchFailsTheLaterPatientsAlone) {
    writePackedPair("a_S1_L001");
    writePackedPair("b_S2_L001");
    const pid_t process =
        start({"analyze-all", "--working-copies", "--json", "-", inputs().path()});
    waitUntilExpanding();
    fs::remove(cataloguePath());
    letExpansionGoOn();
    const Finished finished = wait(process);
    EXPECT_EQ(finished.status, 1);
    const json document = json::parse(finished.out);
    ASSERT_EQ(document["summaryForEachPatientMutAr"].size(), 1U);
    EXPECT_EQ(document["summaryForEachPatientMutAr"][0]["patientNo"], "1");
    EXPECT_THAT(finished.err, HasSubstr(cataloguePath()));
}

TEST_F(HeldRun, AShippedCatalogueThatGoesAwayDuringABatchEndsIt) {
    const std::string catalogue = shipCatalogue();
    writePackedPair("a_S1_L001");
    writePackedPair("b_S2_L001");
    writePackedPair("c_S3_L001");
    const pid_t process =
        start({"analyze-all", "--working-copies", "--quiet", "--json", "-", inputs().path()});
    waitUntilExpanding();
    fs::remove(catalogue);
    letExpansionGoOn();
    const Finished finished = wait(process);
    EXPECT_EQ(finished.status, 1);
    const json document = json::parse(finished.out);
    ASSERT_EQ(document["summaryForEachPatientMutAr"].size(), 1U);
    EXPECT_EQ(document["summaryForEachPatientMutAr"][0]["readsMapped"], 160);
    EXPECT_EQ(finished.err, tooFewReadsOf("a_S1_L001_R1_001.fastq.gz") +
                                "vexta: warning: The definition file " + catalogue +
                                " has gone since the batch began. The batch ends here.\n");
}

TEST_F(HeldRun, AnInterruptWhileOutputsAreWrittenShowsInTheStatus) {
    const std::string read1 = writePair("a_S1_L001");
    const std::string pipe = outputs().file("pipe");
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    const pid_t process =
        start({"analyze", "--summary", pipe, "--json", outputs().file("j"), read1});
    // Files come first; then the program waits for a reader of the pipe.
    waitUntil([this] { return fs::exists(outputs().file("j")); });
    interruptAndWaitForTheNote(process);
    EXPECT_THAT(support::readFile(pipe), HasSubstr("\tNegative\t"));
    EXPECT_EQ(wait(process).status, 130);
}

TEST_F(HeldRun, UnassignedPairsAreTheUsersAloneUntilTheyAreDelivered) {
    const std::string read1 = writePair("a_S1_L001");
    for (const std::string& target : {std::string("-"), outputs().file("u")}) {
        holdRunsAtTheRepairOfAThreshold();
        const pid_t process =
            start({"analyze", "--json", outputs().file("j"), "--unassigned", target, read1});
        waitUntilTheRunWaitsForTheSettings();
        std::size_t directories = 0;
        for (const std::string& place : {outputs().path(), temporary().path()}) {
            for (const auto& entry : fs::directory_iterator(place)) {
                if (entry.is_directory()) {
                    ++directories;
                    EXPECT_EQ(entry.status().permissions(), fs::perms::owner_all);
                }
            }
        }
        EXPECT_EQ(directories, 1U);
        letSettingsGo();
        EXPECT_EQ(wait(process).status, 0);
    }
    EXPECT_EQ(program::snapshot(outputs().path()).size(), 3U); // j, u and the directory
    EXPECT_TRUE(fs::is_empty(temporary().path()));
}

TEST_F(HeldRun, TheSecondInterruptEndsAtOnceAndTakesChildrenAlong) {
    writePackedPair("a_S1_L001");
    const pid_t process =
        start({"analyze-all", "--working-copies", "--json", outputs().file("j"), inputs().path()});
    waitUntilExpanding();
    interruptAndWaitForTheNote(process);
    kill(process, SIGINT);
    EXPECT_EQ(wait(process).status, 130);
    EXPECT_FALSE(fs::exists(outputs().file("j")));
    waitUntil([this] { return hasEnded(expandingChild()); });
    EXPECT_TRUE(fs::exists(inputs().file("a_S1_L001_R1_001.fastq.gz")));
}

TEST_F(HeldRun, EndedDuringAnExpansionItTakesChildAndCopiesAlong) {
    // Copy 1 is there when that of read 2 is held.
    inputs().write("a_S1_L001_R1_001.fastq", ordinaryRead1());
    inputs().write("a_S1_L001_R2_001.fastq.gz", gzipped(ordinaryRead2()));
    const auto names = platform::namesInDirectory(inputs().path()).value();
    for (const Ending& ending : kEndings) {
        SCOPED_TRACE(ending.name);
        fs::remove(home().file("pid"));
        const pid_t process = start(
            {"analyze-all", "--working-copies", "--json", outputs().file("j"), inputs().path()});
        waitUntilExpanding();
        EXPECT_TRUE(fs::exists(inputs().file("_a_S1_L001_R1_001.fastq")));
        EXPECT_TRUE(fs::exists(inputs().file("_a_S1_L001_R2_001.fastq")));
        end(process, ending, [this] { waitForTheInterruptsNote(); });
        EXPECT_EQ(wait(process).status, ending.status);
        waitUntil([this] { return hasEnded(expandingChild()); });
        EXPECT_THAT(platform::namesInDirectory(inputs().path()).value(),
                    testing::UnorderedElementsAreArray(names));
        EXPECT_FALSE(fs::exists(outputs().file("j")));
    }
}

TEST_F(HeldRun, EndedBehindItsMatchingItTakesCopiesAndUnassignedPairsAlong) {
    const std::string read1 = writePair("a_S1_L001");
    const auto names = platform::namesInDirectory(inputs().path()).value();
    holdRunsAtTheRepairOfAThreshold();
    for (const Ending& ending : kEndings) {
        SCOPED_TRACE(ending.name);
        const pid_t process =
            start({"analyze", "--working-copies", "--json", outputs().file("j"), read1});
        waitUntilTheRunWaitsForTheSettings();
        EXPECT_TRUE(fs::exists(inputs().file("_a_S1_L001.failedToBeAssignedReads")));
        EXPECT_TRUE(fs::exists(inputs().file("_a_S1_L001_R1_001.fastq")));
        end(process, ending, [this] { waitForTheInterruptsNote(); });
        EXPECT_EQ(wait(process).status, ending.status);
        EXPECT_THAT(platform::namesInDirectory(inputs().path()).value(),
                    testing::UnorderedElementsAreArray(names));
        EXPECT_FALSE(fs::exists(outputs().file("j")));
    }
}

TEST_F(HeldRun, EndedItTakesTheTemporariesOfUnassignedPairsAlong) {
    const std::string read1 = writePair("a_S1_L001");
    holdRunsAtTheRepairOfAThreshold();
    for (const Ending& ending : kEndings) {
        for (const std::string& target : {std::string("-"), outputs().file("u")}) {
            SCOPED_TRACE(ending.name + (" " + target));
            const pid_t process =
                start({"analyze", "--unassigned", target, "--json", outputs().file("j"), read1});
            waitUntilTheRunWaitsForTheSettings();
            EXPECT_NE(fs::is_empty(outputs().path()), fs::is_empty(temporary().path()));
            end(process, ending, [this] { waitForTheInterruptsNote(); });
            EXPECT_EQ(wait(process).status, ending.status);
            EXPECT_TRUE(fs::is_empty(outputs().path()));
            EXPECT_TRUE(fs::is_empty(temporary().path()));
        }
    }
}

TEST_F(HeldRun, EndedBehindItsFirstOutputFileItLeavesThemAll) {
    const std::string read1 = writePair("a_S1_L001");
    const std::string pipe = outputs().file("pipe");
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    const std::vector<std::string> files = {"j", "pipe", "r", "s", "s.record.json", "u"};
    for (const Ending& ending : kEndings) {
        SCOPED_TRACE(ending.name);
        for (const char* name : {"j", "r", "s", "u"}) {
            fs::remove(outputs().file(name));
        }
        const pid_t process = start(
            {"analyze", "--save", outputs().file("s"), "--report", outputs().file("r"), "--summary",
             pipe, "--json", outputs().file("j"), "--unassigned", outputs().file("u"), read1});
        waitUntil([this] { return fs::exists(outputs().file("s")); });
        end(process, ending, [this] { waitForTheInterruptsNote(); });
        EXPECT_EQ(wait(process).status, ending.status);
        EXPECT_THAT(platform::namesInDirectory(outputs().path()).value(),
                    testing::UnorderedElementsAreArray(files));
    }
}

TEST_F(HeldRun, AnInterruptBeforeTheRunBeginsEndsTheProgram) {
    writePair("a_S1_L001");
    for (const std::string& input : {inputs().path(), inputs().file("a_S1_L001_R1_001.fastq")}) {
        const char* command = input == inputs().path() ? "analyze-all" : "analyze";
        const pid_t process = startInterrupted({command, "--json", outputs().file("j"), input});
        EXPECT_EQ(wait(process).status, 130);
        EXPECT_TRUE(fs::is_empty(outputs().path()));
    }
}

TEST_F(HeldRun, CopiesThatAFailedPatientLeftStayWhenTheProgramIsEnded) {
    inputs().write("a_S1_L001_R1_001.fastq", "@x\nACGT\n");
    inputs().write("a_S1_L001_R2_001.fastq", ordinaryRead2());
    writePackedPair("b_S2_L001");
    const pid_t process =
        start({"analyze-all", "--working-copies", "--json", outputs().file("j"), inputs().path()});
    waitUntilExpanding();
    kill(process, SIGTERM);
    EXPECT_EQ(wait(process).status, 143);
    EXPECT_TRUE(fs::exists(inputs().file("_a_S1_L001_R1_001.fastq")));
    EXPECT_FALSE(fs::exists(inputs().file("_b_S2_L001_R1_001.fastq")));
}

TEST_F(HeldRun, ASignalThatWasIgnoredAtTheStartStaysIgnored) {
    const std::string read1 = writePackedPair("a_S1_L001");
    for (const int signal : {SIGHUP, SIGTERM, SIGINT}) {
        SCOPED_TRACE(signal);
        fs::remove(home().file("pid"));
        fs::remove(home().file("go"));
        const pid_t process = startIgnoring(signal, {"analyze", "--working-copies", read1});
        waitUntilExpanding();
        kill(process, signal);
        kill(process, signal);
        letExpansionGoOn();
        EXPECT_EQ(wait(process).status, 0);
    }
}

// --- Settings that another program holds

TEST_F(HeldRun, ARunThatStoresNothingDoesNotWaitForTheSettings) {
    const std::string read1 = writePair("a_S1_L001");
    ASSERT_EQ(run({"analyze", read1}).status, 0); // stores first-run values
    holdSettingsLock();
    const Finished finished = run({"analyze", read1});
    EXPECT_EQ(finished.status, 0);
    EXPECT_EQ(finished.err, tooFewReadsOf("a_S1_L001_R1_001.fastq"));
}

TEST_F(HeldRun, AWriteThatWaitsForTheSettingsSaysSoAndGoesOn) {
    const std::string read1 = writePair("a_S1_L001");
    holdSettingsLock();
    const pid_t process = start({"analyze", read1});
    waitUntilTheRunWaitsForTheSettings();
    letSettingsGo();
    const Finished finished = wait(process);
    EXPECT_EQ(finished.status, 0);
    EXPECT_TRUE(fs::exists(settingsPath()));
    EXPECT_EQ(finished.err.find("this run only"), std::string::npos);
}

} // namespace
