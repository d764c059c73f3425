// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include "run/main_routine.h"

#include <filesystem>
#include <memory>

#include <gtest/gtest.h>

#include "platform/files.h"
#include "platform/program_end.h"
#include "run/match_read_pairs.h"
#include "settings/settings_table.h"
#include "support/small_run.h"
#include "support/temp_dir.h"

namespace {

using run::DirectReads;
using run::WorkingCopies;

class MainRoutineTest : public testing::Test {
protected:
    run::MainRoutine& driver() {
        if (!m_driver) {
            const run::RunServices services{settings, workers, definition};
            m_driver = std::make_unique<run::MainRoutine>(display, services);
            m_driver->summaryForEachPatient->file1 = "one";
            m_driver->summaryForEachPatient->file2 = "two";
            m_driver->summaryForEachPatient->patientNo = "7";
        }
        return *m_driver;
    }
    static bool there(const std::string& path) { return platform::fileExists(path); }

    support::TempDir dir;
    settings::MemorySettingsStore settings;
    platform::WorkerPool workers{2};
    run::Display display;
    std::string definition = dir.write("catalogue.txt", support::kSmallCatalogue);

private:
    std::unique_ptr<run::MainRoutine> m_driver;
};

TEST_F(MainRoutineTest, StartsWithNoPatientsNoSelectionAndAnOwnCopyOfTheCatalogue) {
    const run::MainRoutine& made = driver();
    EXPECT_TRUE(archive::orEmpty(made.summaryForEachPatientMutAr).empty());
    EXPECT_EQ(made.selectedPatientRowNo, -1);
    const auto& own = *made.summaryForEachPatient->mutDomains;
    ASSERT_EQ(own.size(), 1U);
    EXPECT_NE(own[0], (*made.mutDomains)[0]);
    (*own[0]->mutationMutAr)[0]->match = 5;
    EXPECT_EQ((*(*made.mutDomains)[0]->mutationMutAr)[0]->match, 0);
}

TEST_F(MainRoutineTest, ShowsNamesThenCountersAndBuildsTheRows) {
    driver().inputReads = DirectReads{dir.write("a_R1_001.fastq", support::reads(3)),
                                      dir.write("a_R2_001.fastq", support::reads(3)), std::nullopt};
    ASSERT_TRUE(driver().execute());
    ASSERT_GE(display.shown.size(), 5U);
    EXPECT_EQ(display.shown[0], "file1 one");
    EXPECT_EQ(display.shown[1], "file2 two");
    const std::vector<std::string> last(display.shown.end() - 4, display.shown.end());
    EXPECT_EQ(last, (std::vector<std::string>{
                        "total 3", "mapped 3", "failed 0",
                        "warning one: somatic DNA: not assessable (1 of 1 targets ND *1).\n"}));
    EXPECT_FALSE(archive::orEmpty(driver().summaryForEachPatient->somaticDNAResultMutAr).empty());
}

TEST_F(MainRoutineTest, AFailedReadShowsNoCountersCallsNothingAndRemovesNoFile) {
    const WorkingCopies copies{dir.write("_a_R1_001.fastq", support::reads(2)),
                               dir.file("_a_R2_001.fastq")};
    driver().inputReads = copies;
    EXPECT_FALSE(driver().execute());
    EXPECT_TRUE(there(copies.read1Path));
    // The reader begins by showing zeros; nothing is shown after its error.
    EXPECT_EQ(display.shown.back(),
              "error   Cannot open " + copies.read2Path + ": No such file or directory.\n");
    EXPECT_EQ(display.shown[display.shown.size() - 2],
              "error Cannot open4 " + copies.read2Path + ".\n");
    EXPECT_EQ(driver().summaryForEachPatient->totalNumberOfReads, 0);
    EXPECT_TRUE(archive::orEmpty(driver().summaryForEachPatient->somaticDNAResultMutAr).empty());
}

TEST_F(MainRoutineTest, WhatAFailedRunLeavesIsNoLongerUnfinished) {
    WorkingCopies copies{dir.write("_a_R1_001.fastq", support::reads(2)),
                         dir.file("_a_R2_001.fastq")};
    copies.unfinished = std::make_shared<platform::UnfinishedFiles>();
    copies.unfinished->add(copies.read1Path);
    driver().inputReads = copies;
    EXPECT_FALSE(driver().execute());
    platform::removeUnfinishedFiles();
    EXPECT_TRUE(there(copies.read1Path));
    EXPECT_TRUE(there(dir.file("_a.failedToBeAssignedReads")));
}

namespace {

/// A store of which nobody knows what it holds.
class UnreadableStore : public settings::MemorySettingsStore {
public:
    platform::Status readable() const override { return platform::Error{"No permission"}; }
};

} // namespace

TEST_F(MainRoutineTest, RunsNobodyWhileTheSettingsCannotBeRead) {
    UnreadableStore unreadable;
    settings::OverlaySettingsStore overlaid(unreadable, {});
    run::MainRoutine routine(display, {overlaid, workers, definition});
    routine.summaryForEachPatient->file1 = "one";
    routine.summaryForEachPatient->file2 = "two";
    routine.inputReads = DirectReads{dir.write("a_R1_001.fastq", support::reads(3)),
                                     dir.write("a_R2_001.fastq", support::reads(3)), std::nullopt};
    EXPECT_FALSE(routine.execute());
    EXPECT_EQ(display.shown.back(), "error The settings file cannot be read. No permission\n");
    EXPECT_EQ(routine.summaryForEachPatient->totalNumberOfReads, 0);
}

TEST_F(MainRoutineTest, RefusesObstructedCopiesWithoutReadingThem) {
    driver().inputReads = WorkingCopies{dir.write("_a_R1_001.fastq", support::reads(2)),
                                        dir.write("_a_R2_001.fastq", support::reads(2)), true};
    EXPECT_FALSE(driver().execute());
    EXPECT_EQ(driver().summaryForEachPatient->totalNumberOfReads, 0);
    EXPECT_TRUE(there(dir.file("_a_R1_001.fastq")));
}

TEST_F(MainRoutineTest, AMissingCatalogueRunsThroughToAnEmptyReport) {
    definition = dir.file("missing.txt");
    driver().inputReads = DirectReads{dir.write("a_R1_001.fastq", support::reads(2)),
                                      dir.write("a_R2_001.fastq", support::reads(2)), std::nullopt};
    EXPECT_FALSE(driver().catalogueStatus());
    EXPECT_TRUE(driver().execute());
    EXPECT_EQ(driver().summaryForEachPatient->readsFailedToBeMapped, 2);
    EXPECT_TRUE(archive::orEmpty(driver().summaryForEachPatient->somaticDNAResultMutAr).empty());
}

TEST_F(MainRoutineTest, ReadsTheDefinitionFileAnewWhenAsked) {
    ASSERT_TRUE(driver().catalogueFaults().empty());
    dir.write("catalogue.txt", support::kFaultyCatalogue);
    driver().setUpMutDomainsMutAr();
    EXPECT_EQ(driver().catalogueFaults().size(), 1U);
}

TEST_F(MainRoutineTest, ASuccessfulRunRemovesItsWorkingCopies) {
    driver().inputReads = WorkingCopies{dir.write("_a_R1_001.fastq", support::reads(2)),
                                        dir.write("_a_R2_001.fastq", support::reads(2))};
    dir.write("a_R1_001.fastq", "input");
    ASSERT_TRUE(driver().execute());
    EXPECT_FALSE(there(dir.file("_a_R1_001.fastq")));
    EXPECT_FALSE(there(dir.file("_a_R2_001.fastq")));
    EXPECT_FALSE(there(dir.file("_a.failedToBeAssignedReads")));
    EXPECT_TRUE(there(dir.file("a_R1_001.fastq")));
}

TEST_F(MainRoutineTest, InputsReadWhereTheyLieSurviveSuccessAndFailure) {
    const std::string read1 = dir.write("x_S1_L001_R1_001.fastq", support::reads(2));
    const std::string read2 = dir.write("x_S1_L001_R2_001.fastq", support::reads(2));
    driver().inputReads = DirectReads{read1, read2, std::nullopt};
    EXPECT_TRUE(driver().execute());
    EXPECT_EQ(support::readFile(read1), support::reads(2));
    EXPECT_EQ(support::readFile(read2), support::reads(2));
    dir.write("x_S1_L001_R2_001.fastq", support::reads(1));
    driver().inputReads = DirectReads{read1, dir.file("missing_R2_001.fastq"), std::nullopt};
    EXPECT_FALSE(driver().execute());
    EXPECT_EQ(support::readFile(read1), support::reads(2));
    EXPECT_EQ(support::readFile(read2), support::reads(1));
}

TEST_F(MainRoutineTest, CleanUpRemovesTheTwoCopiesAndTheFailedReadsFile) {
    for (const char* end : {"_R1_001.fastq", "_R2_001.fastq", ".failedToBeAssignedReads"}) {
        dir.write(std::string("P12_S3_L001") + end, "x");
    }
    driver().cleanupFiles({dir.file("P12_S3_L001_R1_001.fastq"), ""});
    for (const char* end : {"_R1_001.fastq", "_R2_001.fastq", ".failedToBeAssignedReads"}) {
        EXPECT_FALSE(there(dir.file(std::string("P12_S3_L001") + end))) << end;
    }
}

TEST_F(MainRoutineTest, KeepingTheFailedReadsFileKeepsNoCopy) {
    settings.setValue(settings::key::kLeaveFileForFailedToBeAssignedReads, true);
    const WorkingCopies copies{dir.write("P_R1_001.fastq", "x"), dir.write("P_R2_001.fastq", "x")};
    dir.write("P.failedToBeAssignedReads", "x");
    driver().cleanupFiles(copies);
    EXPECT_FALSE(there(copies.read1Path));
    EXPECT_FALSE(there(copies.read2Path));
    EXPECT_TRUE(there(dir.file("P.failedToBeAssignedReads")));
}

TEST_F(MainRoutineTest, CleanUpCutsAtTheFirstR1EvenInTheDirectorysName) {
    std::filesystem::create_directory(dir.file("run_R1_new"));
    dir.write("run_R1_new/P_R1_001.fastq", "kept");
    dir.write("run_R1_001.fastq", "removed");
    dir.write("run_R2_001.fastq", "removed");
    driver().cleanupFiles({dir.file("run_R1_new/P_R1_001.fastq"), ""});
    EXPECT_TRUE(there(dir.file("run_R1_new/P_R1_001.fastq")));
    EXPECT_FALSE(there(dir.file("run_R1_001.fastq")));
    EXPECT_FALSE(there(dir.file("run_R2_001.fastq")));
}

TEST_F(MainRoutineTest, CleanUpTakesTheWholePathWhenItHoldsNoR1) {
    dir.write("P.fastq_R1_001.fastq", "x");
    driver().cleanupFiles({dir.file("P.fastq"), ""});
    EXPECT_FALSE(there(dir.file("P.fastq_R1_001.fastq")));
}

TEST_F(MainRoutineTest, OnlyTheBooleanTrueKeepsTheFailedReadsFile) {
    const auto staysWith = [this](settings::SettingValue value) {
        settings.setValue(settings::key::kLeaveFileForFailedToBeAssignedReads, std::move(value));
        dir.write("P.failedToBeAssignedReads", "x");
        driver().cleanupFiles({dir.file("P_R1_001.fastq"), ""});
        return there(dir.file("P.failedToBeAssignedReads"));
    };
    EXPECT_TRUE(staysWith(true));
    EXPECT_FALSE(staysWith(false));
    EXPECT_FALSE(staysWith(std::int64_t{1}));
    EXPECT_FALSE(staysWith(std::string("1")));
}

} // namespace
