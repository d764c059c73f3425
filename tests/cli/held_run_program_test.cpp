// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include <chrono>
#include <csignal>
#include <filesystem>
#include <functional>
#include <thread>

#include <gmock/gmock.h>
#include <nlohmann/json.hpp>
#include <sys/stat.h>

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
    void interruptAndWaitForTheNote(pid_t process) const {
        kill(process, SIGINT);
        waitUntil([this] {
            return support::readFile(errPath()).find("stopping after") != std::string::npos;
        });
    }
    void letExpansionGoOn() const { home().write("go", ""); }
};

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

TEST_F(HeldRun, AShippedCatalogueThatGoesAwayDuringABatchIsTheEmptyOneWithAWarning) {
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
    EXPECT_EQ(finished.status, 0);
    const json document = json::parse(finished.out);
    const json& patients = document["summaryForEachPatientMutAr"];
    ASSERT_EQ(patients.size(), 3U);
    EXPECT_EQ(patients[0]["readsMapped"], 160);
    EXPECT_EQ(patients[1]["readsMapped"], 0);
    EXPECT_EQ(patients[1]["mutDomains"], json::array());
    EXPECT_EQ(patients[2]["readsMapped"], 0);
    const auto warning = [&catalogue](const std::string& whom) {
        return "vexta: warning: The catalogue could not be read for " + whom +
               ": no target was searched, every result of theirs is empty. Cannot open " +
               catalogue + ": No such file or directory.\n";
    };
    EXPECT_EQ(finished.err, warning("patient 2") + warning("patients 2, 3"));
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
    const std::string pipe = outputs().file("pipe");
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    for (const std::string& target : {std::string("-"), outputs().file("u")}) {
        fs::remove(outputs().file("j"));
        const pid_t process = start({"analyze", "--summary", pipe, "--json", outputs().file("j"),
                                     "--unassigned", target, read1});
        waitUntil([this] { return fs::exists(outputs().file("j")); });
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
        support::readFile(pipe);
        EXPECT_EQ(wait(process).status, 0);
    }
    EXPECT_EQ(program::snapshot(outputs().path()).size(), 4U); // j, u, the pipe and the directory
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
    const pid_t child = std::stoi(support::readFile(home().file("pid")));
    waitUntil([child] {
        const std::string status = "/proc/" + std::to_string(child) + "/status";
        return !fs::exists(status) ||
               support::readFile(status).find("State:\tZ") != std::string::npos;
    });
    EXPECT_TRUE(fs::exists(inputs().file("a_S1_L001_R1_001.fastq.gz")));
}

} // namespace
