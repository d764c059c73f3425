// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include "document/vexta_document.h"

#include <chrono>
#include <filesystem>
#include <future>
#include <thread>

#include <gtest/gtest.h>
#include <sys/stat.h>

#include "document_test.h"
#include "support/gzip.h"

namespace {

using document::AnalysisOutcome;
using document::AnalysisPlan;
using document::InputMode;
using document::Lines;
using document::PatientAccount;
using document::PlannedPatient;
using document::VextaDocumentTest;
using End = document::AnalysisOutcome::End;

bool nobodyRan(const AnalysisOutcome& outcome) {
    return outcome.patientsRun == 0 && outcome.patientsFailed == 0;
}

// --- Opening

TEST_F(VextaDocumentTest, OpensEitherFileOfAPairWithBothNames) {
    writePair(1);
    EXPECT_TRUE(document->readFromURL(dir.file("p_S1_L001_R2_001.fastq"), "fastq"));
    EXPECT_EQ(document->file1, "p_S1_L001_R1_001.fastq");
    EXPECT_EQ(document->file2, "p_S1_L001_R2_001.fastq");
    EXPECT_EQ(document->fastqFileDir, dir.path());
    EXPECT_TRUE(alerts.shown.empty());
}

TEST_F(VextaDocumentTest, ShowsAnAlertForAFileWithoutAMate) {
    EXPECT_FALSE(document->readFromURL(dir.write("p_S1_L001_R1_001.fastq", ""), "fastq"));
    EXPECT_EQ(alerts.shown, Lines{"Files are not paired or incompatible.|"});
    EXPECT_EQ(document->file2, "p_S1_L001_R2_001.fastq");
}

TEST_F(VextaDocumentTest, SetsBothNamesToNullWithoutAMark) {
    document->file1 = "old";
    EXPECT_FALSE(document->readFromURL(dir.write("p.fastq", ""), "fastq"));
    EXPECT_EQ(document->file1, std::nullopt);
    EXPECT_EQ(document->file2, std::nullopt);
}

// --- One patient

TEST_F(VextaDocumentTest, ASingleRunGivesOnePatientAndRemovesExactlyItsCopies) {
    const std::string read1 = writePair(12);
    const Lines before = namesInDir();
    const AnalysisOutcome outcome = analyze(read1);
    EXPECT_EQ(outcome.end, End::finished);
    EXPECT_EQ(outcome.patientsFailed, 0U);
    EXPECT_EQ(patientNumbers(), Lines{"12"});
    EXPECT_EQ(window.events,
              (Lines{"patients", "results", "update", "start 1/1", "busy",
                     "preparing p_S12_L001_R1_001.fastq", "preparing p_S12_L001_R2_001.fastq",
                     "prepared", "warning", "idle", "patients", "select 0", "ended"}));
    EXPECT_TRUE(window.analyzeEnabled && window.analyzeAllEnabled);
    EXPECT_TRUE(document->canMakeSummaryTable());
    EXPECT_EQ(document->mainRoutine().selectedPatientRowNo, 0);
    EXPECT_EQ(namesInDir(), before);
}

TEST_F(VextaDocumentTest, ASingleRunHoldsItsCallerUntilItsCopiesAreMade) {
    const std::string read1 = writePair(12);
    const std::string copy = dir.file("_p_S12_L001_R2_001.fastq");
    bool copiedBefore = true;
    Lines eventsBefore;
    callerHold.before = [&] {
        copiedBefore = platform::fileExists(copy);
        eventsBefore = window.events;
    };
    bool copiedAfter = false;
    Lines eventsAfter;
    callerHold.after = [&] {
        copiedAfter = platform::fileExists(copy);
        eventsAfter = window.events;
    };
    EXPECT_EQ(analyze(read1).patientsFailed, 0U);
    EXPECT_FALSE(copiedBefore);
    EXPECT_TRUE(copiedAfter);
    EXPECT_EQ(eventsBefore, (Lines{"patients", "results"}));
    EXPECT_EQ(eventsAfter, eventsBefore);
}

TEST_F(VextaDocumentTest, CommandsThatComeWhileTheCallerIsHeldDoNothing) {
    const std::string read1 = writePair(12);
    callerHold.after = [this] {
        document->analyze();
        document->analyzeAll();
        EXPECT_TRUE(window.analyzeEnabled && window.analyzeAllEnabled);
    };
    analyze(read1);
    EXPECT_EQ(patientNumbers(), Lines{"12"});
    EXPECT_EQ(window.countOf("start 1/1"), 1U);
    EXPECT_EQ(window.outcomes.size(), 1U);
}

TEST_F(VextaDocumentTest, APreparationThatThrowsIsAFailedRun) {
    const std::string read1 = writePair(12);
    callerHold.before = [] { throw std::runtime_error("no thread to be had"); };
    EXPECT_EQ(analyze(read1).patientsFailed, 1U);
    EXPECT_EQ(window.errorLog.rfind("The run ended early: no thread to be had\n", 0), 0U);
    EXPECT_TRUE(patientNumbers().empty());
    EXPECT_FALSE(window.analyzeEnabled || window.analyzeAllEnabled);
}

TEST_F(VextaDocumentTest, DirectReadingHoldsNobody) {
    const std::string read1 = writePair(12);
    callerHold.before = [] { FAIL() << "held"; };
    document->inputMode = InputMode::direct;
    EXPECT_EQ(analyze(read1).patientsFailed, 0U);
    EXPECT_EQ(window.countOf("prepared"), 0U);
}

TEST_F(VextaDocumentTest, ABatchPreparesEachPatientAfterItsStartAndHoldsNobody) {
    writePair(1);
    writePair(2);
    callerHold.before = [] { FAIL() << "held"; };
    analyzeAll();
    Lines told;
    for (const std::string& event : window.events) {
        if (event.rfind("start", 0) == 0 || event.rfind("prepar", 0) == 0) {
            told.push_back(event);
        }
    }
    EXPECT_EQ(told, (Lines{"start 1/2", "preparing p_S1_L001_R1_001.fastq",
                           "preparing p_S1_L001_R2_001.fastq", "prepared", "start 2/2",
                           "preparing p_S2_L001_R1_001.fastq", "preparing p_S2_L001_R2_001.fastq",
                           "prepared"}));
}

TEST_F(VextaDocumentTest, AFailedSingleRunLeavesTheButtonsDisabled) {
    const std::string read1 = writePair(1, 3, 3);
    std::filesystem::remove(dir.file("p_S1_L001_R2_001.fastq"));
    std::filesystem::create_directory(dir.file("p_S1_L001_R2_001.fastq"));
    const AnalysisOutcome outcome = analyze(read1);
    EXPECT_EQ(outcome.patientsFailed, 1U);
    EXPECT_FALSE(window.analyzeEnabled || window.analyzeAllEnabled);
    EXPECT_TRUE(window.busy);
    EXPECT_TRUE(patientNumbers().empty());
    EXPECT_FALSE(document->canMakeSummaryTable());
    const std::string last = "Error occurred for files " + dir.file("_p_S1_L001_R1_001.fastq") +
                             " and " + dir.file("_p_S1_L001_R2_001.fastq") + "\n";
    ASSERT_GE(window.errorLog.size(), last.size());
    EXPECT_EQ(window.errorLog.substr(window.errorLog.size() - last.size()), last);
    EXPECT_GT(window.broughtForward, 0);
    EXPECT_EQ(window.countOf("ended"), 1U);
    EXPECT_EQ(window.events.back(), "ended");
}

TEST_F(VextaDocumentTest, ANameWithoutANumberEndsTheCommandWithAMessage) {
    dir.write("p_R2_001.fastq", support::reads(1));
    const AnalysisOutcome outcome = analyze(dir.write("p_R1_001.fastq", support::reads(1)));
    EXPECT_EQ(outcome.end, End::noPatientNumber);
    EXPECT_TRUE(nobodyRan(outcome));
    ASSERT_EQ(alerts.shown.size(), 1U);
    EXPECT_NE(alerts.shown[0].find("p_R1_001.fastq"), std::string::npos);
    EXPECT_NE(alerts.shown[0].find("_S"), std::string::npos);
    EXPECT_TRUE(window.analyzeEnabled);
    EXPECT_EQ(namesInDir(), (Lines{"p_R1_001.fastq", "p_R2_001.fastq"}));
}

TEST_F(VextaDocumentTest, AFaultyCatalogueEndsTheCommandBeforeAnythingChanges) {
    analyze(writePair(1));
    own.write("catalogue.txt", support::kFaultyCatalogue);
    window.events.clear();
    document->analyze();
    loop.run();
    EXPECT_EQ(window.outcomes.back().end, End::catalogueFaulty);
    EXPECT_TRUE(nobodyRan(window.outcomes.back()));
    EXPECT_EQ(window.events, (Lines{"error", "ended"}));
    EXPECT_NE(window.errorLog.find("catalogue.txt"), std::string::npos);
    EXPECT_EQ(patientNumbers(), Lines{"1"});
}

// --- Every patient of a directory

TEST_F(VextaDocumentTest, ABatchRunsSamplesInOrderOnePatientEach) {
    writePair(3);
    writePair(1);
    const Lines before = namesInDir();
    EXPECT_EQ(analyzeAll().patientsRun, 2U);
    EXPECT_EQ(patientNumbers(), (Lines{"1", "3"}));
    EXPECT_EQ(window.countOf("select 0"), 1U);
    EXPECT_EQ(window.countOf("select 1"), 1U);
    EXPECT_EQ(window.texts.front(), "file1 p_S1_L001_R1_001.fastq");
    EXPECT_TRUE(window.analyzeEnabled);
    EXPECT_EQ(window.countOf("ended"), 1U);
    EXPECT_EQ(namesInDir(), before);
}

TEST_F(VextaDocumentTest, ASampleWithOneFileStopsTheBatchAndKeepsTheResults) {
    analyze(writePair(1));
    writePair(3);
    dir.write("p_S2_L001_R2_001.fastq", support::reads(1));
    EXPECT_EQ(analyzeAll().end, End::unpaired);
    EXPECT_TRUE(nobodyRan(window.outcomes.back()));
    EXPECT_EQ(alerts.shown, Lines{"Patient 2 has unpaired fastq file.|"});
    EXPECT_EQ(patientNumbers(), Lines{"1"});
    EXPECT_TRUE(window.analyzeEnabled);
    EXPECT_FALSE(window.busy);
}

TEST_F(VextaDocumentTest, AFailedPatientLeavesAGapAndTheSelectedRowIsTheBatchIndex) {
    writePair(1);
    writePair(2);
    writePair(3);
    std::filesystem::remove(dir.file("p_S2_L001_R2_001.fastq"));
    std::filesystem::create_directory(dir.file("p_S2_L001_R2_001.fastq"));
    const AnalysisOutcome outcome = analyzeAll();
    EXPECT_EQ(outcome.patientsRun, 3U);
    EXPECT_EQ(outcome.patientsFailed, 1U);
    EXPECT_EQ(patientNumbers(), (Lines{"1", "3"}));
    EXPECT_EQ(document->mainRoutine().selectedPatientRowNo, 2);
    EXPECT_EQ(window.countOf("select 2"), 1U);
    EXPECT_EQ(window.countOf("select 1"), 0U);
    EXPECT_NE(window.errorLog.find("Error occurred for files "), std::string::npos);
    EXPECT_TRUE(window.analyzeEnabled);
}

TEST_F(VextaDocumentTest, CancellingDuringPatient2Of5SkipsTheOthers) {
    for (int sample = 1; sample <= 5; ++sample) {
        writePair(sample);
    }
    settings.onRead = [this] {
        if (document->mainRoutine().summaryForEachPatient->patientNo == "2") {
            document->setCancelOperationFlag(true);
        }
    };
    EXPECT_EQ(analyzeAll().end, End::cancelled);
    EXPECT_EQ(patientNumbers(), (Lines{"1", "2"}));
    EXPECT_EQ(window.countOf("idle"), 3U);
    EXPECT_TRUE(window.analyzeEnabled);
    EXPECT_EQ(window.countOf("ended"), 1U);
}

TEST_F(VextaDocumentTest, AnEmptyDirectoryClearsTheTablesAndLeavesTheButtonsDisabled) {
    EXPECT_EQ(analyzeAll().end, End::noPatients);
    EXPECT_TRUE(nobodyRan(window.outcomes.back()));
    EXPECT_FALSE(window.analyzeEnabled || window.analyzeAllEnabled);
    EXPECT_EQ(window.events, (Lines{"busy", "update", "patients", "results", "ended"}));
}

TEST_F(VextaDocumentTest, AFaultyCatalogueStopsABatchAndEnablesTheControls) {
    writePair(1);
    own.write("catalogue.txt", support::kFaultyCatalogue);
    EXPECT_EQ(analyzeAll().end, End::catalogueFaulty);
    EXPECT_TRUE(nobodyRan(window.outcomes.back()));
    EXPECT_EQ(window.events, (Lines{"busy", "error", "idle", "ended"}));
}

TEST_F(VextaDocumentTest, ACatalogueSpoiltDuringABatchIsShownOnceAndFailsThePatients) {
    for (int sample = 1; sample <= 3; ++sample) {
        writePair(sample);
    }
    settings.onRead = [this] { own.write("catalogue.txt", support::kFaultyCatalogue); };
    EXPECT_EQ(analyzeAll().patientsFailed, 2U);
    EXPECT_EQ(patientNumbers(), Lines{"1"});
    const std::size_t first = window.errorLog.find("catalogue.txt");
    ASSERT_NE(first, std::string::npos);
    EXPECT_EQ(window.errorLog.find("catalogue.txt", first + 1), std::string::npos);
    EXPECT_TRUE(window.analyzeEnabled);
}

// --- Direct reading

TEST_F(VextaDocumentTest, NoCopiesAreMadeForRunsWhoseSettingsCannotBeRead) {
    const std::string path = writePair(1);
    writePair(2);
    const Lines before = namesInDir();
    settings.whetherReadable = platform::Error{"No permission"};
    EXPECT_EQ(analyzeAll().patientsFailed, 2U);
    EXPECT_EQ(namesInDir(), before);
    const std::string why = "The settings file cannot be read. No permission\n";
    const auto timesTold = [&] {
        int times = 0;
        for (auto at = window.errorLog.find(why); at != std::string::npos;
             at = window.errorLog.find(why, at + 1)) {
            ++times;
        }
        return times;
    };
    EXPECT_EQ(timesTold(), 2);
    EXPECT_EQ(analyze(path).patientsFailed, 1U);
    EXPECT_EQ(namesInDir(), before);
    EXPECT_EQ(timesTold(), 3);
}

TEST_F(VextaDocumentTest, DirectReadingLeavesInputsAndDirectoryAsTheyAre) {
    const std::string read1 = writePair(1);
    const std::string failing = support::gzipMember(support::reads(3));
    dir.write("q_S2_L001_R1_001.fastq.gz", failing.substr(0, failing.size() - 5));
    dir.write("q_S2_L001_R2_001.fastq", support::reads(3));
    const Lines before = namesInDir();
    document->inputMode = InputMode::direct;
    analyze(read1);
    EXPECT_EQ(patientNumbers(), Lines{"1"});
    EXPECT_EQ(analyzeAll().patientsFailed, 1U);
    EXPECT_EQ(patientNumbers(), Lines{"1"});
    EXPECT_EQ(namesInDir(), before);
    EXPECT_EQ(support::readFile(read1), support::reads(3));
    EXPECT_EQ(support::readFile(dir.file("q_S2_L001_R1_001.fastq.gz")),
              failing.substr(0, failing.size() - 5));
    EXPECT_EQ(support::readFile(dir.file("q_S2_L001_R2_001.fastq")), support::reads(3));
}

/// When an entry was last made, renamed or removed in the directory.
std::pair<std::int64_t, std::int64_t> changeTime(const std::string& directory) {
    struct stat facts {};
    EXPECT_EQ(::stat(directory.c_str(), &facts), 0);
    return {facts.st_mtim.tv_sec, facts.st_mtim.tv_nsec};
}

TEST_F(VextaDocumentTest, DirectReadingSurvivesCancellationAndAReadOnlyDirectory) {
    for (int sample = 1; sample <= 3; ++sample) {
        writePair(sample);
    }
    const Lines before = namesInDir();
    // Whoever may do everything is stopped by no permission: the time tells of a file that came and
    // went.
    const auto timeBefore = changeTime(dir.path());
    namespace fs = std::filesystem;
    fs::permissions(dir.path(), fs::perms::owner_read | fs::perms::owner_exec);
    document->inputMode = InputMode::direct;
    settings.onRead = [this] { document->setCancelOperationFlag(true); };
    EXPECT_EQ(analyzeAll().end, End::cancelled);
    fs::permissions(dir.path(), fs::perms::owner_all);
    EXPECT_EQ(patientNumbers(), Lines{"1"});
    EXPECT_EQ(namesInDir(), before);
    EXPECT_EQ(changeTime(dir.path()), timeBefore);
    EXPECT_TRUE(window.errorLog.empty());
    EXPECT_EQ(window.warnings, Lines{tooFewReadsOf("p_S1_L001_R1_001.fastq")});
}

// --- Lifetime and exports

TEST_F(VextaDocumentTest, ADocumentThatGoesWaitsForItsPatientAndSilencesItsTasks) {
    for (int sample = 1; sample <= 3; ++sample) {
        writePair(sample);
    }
    document->analyzeAll();
    document.reset();
    window.events.clear();
    loop.async([this] { loop.stop(); });
    loop.run();
    EXPECT_TRUE(window.events.empty());
}

TEST_F(VextaDocumentTest, ADocumentThatGoesStartsNoFurtherPatient) {
    for (int sample = 1; sample <= 3; ++sample) {
        writePair(sample);
    }
    auto& going = *document;
    std::vector<std::string> started; // the run's own thread fills it, which ends with the document
    std::promise<void> running;
    settings.onRead = [&] {
        const std::string patient =
            archive::stringOrEmpty(going.mainRoutine().summaryForEachPatient->patientNo);
        if (!started.empty() && started.back() == patient) {
            return;
        }
        started.push_back(patient);
        if (started.size() > 1) {
            return;
        }
        running.set_value();
        const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(10);
        while (!going.cancelOperationFlag() && std::chrono::steady_clock::now() < deadline) {
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
        }
    };
    document->analyzeAll();
    running.get_future().wait();
    document.reset();
    EXPECT_EQ(started, Lines{"1"});
}

TEST_F(VextaDocumentTest, PutsTheReportOfSelectedPatientsAndTheSummaryTableOnTheClipboard) {
    analyze(writePair(1));
    window.selection = {0};
    document->copy();
    EXPECT_EQ(clipboard.text.rfind("p_S1_L001_R1_001.fastq\n", 0), 0U);
    document->makeSummaryTable();
    EXPECT_EQ(clipboard.text.rfind("File\tMutation\t", 0), 0U);
}

/// A patient of two lanes, three and two pairs, in the test's directory.
PlannedPatient patientOfTwoLanes(const support::TempDir& dir) {
    PlannedPatient patient;
    patient.sample = "Anna";
    patient.number = "77";
    patient.numberIsFromName = false;
    patient.directory = dir.path();
    patient.lanes = {
        {dir.write("a_R1.fq", support::reads(3)), dir.write("a_R2.fq", support::reads(3))},
        {dir.write("b_R1.fq", support::reads(2)), dir.write("b_R2.fq", support::reads(2))}};
    return patient;
}

TEST_F(VextaDocumentTest, AGivenPatientHasItsNumberAndAllItsLanes) {
    document->inputMode = InputMode::direct;
    AnalysisPlan plan;
    plan.directory = dir.path();
    plan.patients = {patientOfTwoLanes(dir)};
    document->openPatient(plan);
    document->analyze();
    loop.run();
    ASSERT_EQ(window.outcomes.back().patientsFailed, 0U);
    EXPECT_EQ(patientNumbers(), Lines{"77"});
    const run::SummaryForEachPatient& result = *driver().summaryForEachPatient;
    EXPECT_EQ(result.totalNumberOfReads, 5);
    EXPECT_EQ(result.file1, "a_R1.fq");
    EXPECT_EQ(result.file2, "a_R2.fq");
    EXPECT_EQ(result.fastqFileDir, dir.path());
    const PatientAccount& account = document->analysisAccount().patients.at(0);
    EXPECT_EQ(account.sample, "Anna");
    EXPECT_EQ(account.furtherFiles,
              (std::vector<std::pair<std::string, std::string>>{{"b_R1.fq", "b_R2.fq"}}));
    // A pair that is opened afterwards is found by the rule of names again.
    analyze(writePair(5));
    EXPECT_EQ(patientNumbers(), Lines{"5"});
}

TEST_F(VextaDocumentTest, APlanRunsInItsOrderAndTellsOfWhomItPassesOver) {
    document->inputMode = InputMode::direct;
    writePair(9);
    AnalysisPlan plan;
    plan.directory = dir.path();
    plan.patients = {
        document::patientOfPair(dir.path(), "p_S9_L001_R1_001.fastq", "p_S9_L001_R2_001.fastq"),
        patientOfTwoLanes(dir)};
    plan.passedOver = {PatientAccount()};
    plan.passedOver[0].lines = {"Patient 3 has unpaired fastq file."};
    document->analyzePlan(plan);
    loop.run();
    EXPECT_EQ(window.outcomes.back().patientsRun, 2U);
    EXPECT_EQ(patientNumbers(), (Lines{"9", "77"}));
    const auto& patients = document->analysisAccount().patients;
    ASSERT_EQ(patients.size(), 3U);
    EXPECT_EQ(patients[1].outcome, PatientAccount::Outcome::analysed);
    EXPECT_EQ(patients[2].outcome, PatientAccount::Outcome::skipped);
    EXPECT_TRUE(window.analyzeEnabled);
}

} // namespace
