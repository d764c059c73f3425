// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
// What a command leaves of the run before it, and what it tells the window meanwhile.
#include <filesystem>
#include <fstream>
#include <new>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "document_test.h"
#include "support/gzip.h"

namespace {

using document::AnalysisOutcome;
using document::InputMode;
using document::Lines;
using document::VextaDocumentTest;
using End = document::AnalysisOutcome::End;

class DocumentStateTest : public VextaDocumentTest {
protected:
    void writeBatch(int samples) const {
        for (int sample = 1; sample <= samples; ++sample) {
            writePair(sample);
        }
    }
};

// --- Results and selection of the run before

TEST_F(DocumentStateTest, OpeningAPairClearsTheSelectionAndNamesThePairInTheRecord) {
    analyze(writePair(1));
    ASSERT_EQ(driver().selectedPatientRowNo, 0);
    ASSERT_TRUE(document->readFromURL(writePair(2), "fastq"));
    EXPECT_EQ(driver().selectedPatientRowNo, -1);
    EXPECT_EQ(driver().summaryForEachPatient->file1, "p_S2_L001_R1_001.fastq");
    EXPECT_EQ(driver().summaryForEachPatient->file2, "p_S2_L001_R2_001.fastq");
}

TEST_F(DocumentStateTest, ASecondSingleRunReplacesTheFirst) {
    analyze(writePair(1));
    analyze(writePair(2));
    EXPECT_EQ(patientNumbers(), Lines{"2"});
    EXPECT_EQ(driver().selectedPatientRowNo, 0);
}

TEST_F(DocumentStateTest, ASingleRunOverEarlierResultsShowsEmptyTablesAndSelectsNothing) {
    writeBatch(2);
    analyzeAll();
    ASSERT_EQ(driver().selectedPatientRowNo, 1);
    std::vector<std::size_t> listed;
    window.onReloadPatients = [&] { listed.push_back(patientNumbers().size()); };
    settings.onRead = [this] { EXPECT_EQ(driver().selectedPatientRowNo, -1); };
    ASSERT_GT(patientNumbers().size(), 0U);
    document->file1 = "p_S1_L001_R1_001.fastq";
    document->file2 = "p_S1_L001_R2_001.fastq";
    document->analyze();
    loop.run();
    EXPECT_EQ(listed, (std::vector<std::size_t>{0, 1}));
    EXPECT_EQ(driver().selectedPatientRowNo, 0);
}

TEST_F(DocumentStateTest, AnEmptyDirectoryDropsResultsAndSelection) {
    analyze(writePair(1));
    ASSERT_EQ(patientNumbers(), Lines{"1"});
    document->fastqFileDir = own.path();
    EXPECT_EQ(analyzeAll().end, End::noPatients);
    EXPECT_TRUE(patientNumbers().empty());
    EXPECT_EQ(driver().selectedPatientRowNo, -1);
    EXPECT_TRUE(document->canMakeSummaryTable());
}

TEST_F(DocumentStateTest, ABatchAfterACancelledOneRunsEveryPatient) {
    writeBatch(2);
    document->setCancelOperationFlag(true);
    settings.onRead = [this] { document->setCancelOperationFlag(true); };
    ASSERT_EQ(analyzeAll().end, End::cancelled);
    ASSERT_EQ(patientNumbers(), Lines{"1"});
    settings.onRead = nullptr;
    EXPECT_EQ(analyzeAll().end, End::finished);
    EXPECT_EQ(patientNumbers(), (Lines{"1", "2"}));
    EXPECT_FALSE(document->cancelOperationFlag());
}

TEST_F(DocumentStateTest, TheSummaryTableStaysPossibleOnceAPatientSucceeded) {
    EXPECT_FALSE(document->canMakeSummaryTable());
    analyze(writePair(1));
    EXPECT_TRUE(document->canMakeSummaryTable());
    analyze(dir.file("p_S1_L001_R1_001.fastq"));
    EXPECT_TRUE(document->canMakeSummaryTable());
    writePair(2);
    analyzeAll();
    EXPECT_TRUE(document->canMakeSummaryTable());
}

// --- What the window is told

TEST_F(DocumentStateTest, ABatchPatientShowsItsNamesBeforeItsRunDoesAndThenItsCounts) {
    writePair(1);
    analyzeAll();
    ASSERT_GE(window.texts.size(), 7U);
    const Lines first(window.texts.begin(), window.texts.begin() + 4);
    EXPECT_EQ(first, (Lines{"file1 p_S1_L001_R1_001.fastq", "file2 p_S1_L001_R2_001.fastq",
                            "file1 p_S1_L001_R1_001.fastq", "file2 p_S1_L001_R2_001.fastq"}));
    const Lines last(window.texts.end() - 3, window.texts.end());
    EXPECT_EQ(last, (Lines{"total 3", "mapped 3", "failed 0"}));
}

TEST_F(DocumentStateTest, TheFinalCountsAreShownBeforeTheResult) {
    Lines shownBefore;
    window.onReloadPatients = [&] { shownBefore = window.texts; };
    analyze(writePair(1, 20500, 20500));
    ASSERT_GE(shownBefore.size(), 3U);
    const Lines last(shownBefore.end() - 3, shownBefore.end());
    EXPECT_EQ(last, (Lines{"total 20500", "mapped 20500", "failed 0"}));
    EXPECT_EQ(window.texts, shownBefore);
}

TEST_F(DocumentStateTest, AFailedPatientsRunningTotalsAreShownBeforeItsError) {
    Lines shownBefore;
    window.onError = [&] {
        if (shownBefore.empty()) {
            shownBefore = window.texts;
        }
    };
    const std::string read1 = writePair(1, 20500, 20500);
    std::ofstream(read1, std::ios::app) << "@other\nAC\n+\nII\n";
    std::ofstream(dir.file("p_S1_L001_R2_001.fastq"), std::ios::app) << "@than\nAC\n+\nII\n";
    EXPECT_EQ(analyze(read1).patientsFailed, 1U);
    EXPECT_EQ(window.countOf("error"), 2U);
    EXPECT_THAT(shownBefore, testing::Contains(testing::MatchesRegex("total ([0-9]+000|0)")));
    EXPECT_EQ(window.texts, shownBefore);
}

TEST_F(DocumentStateTest, ABatchPatientWhoseCatalogueIsFaultyStillShowsItsNames) {
    writeBatch(2);
    settings.onRead = [this] { own.write("catalogue.txt", support::kFaultyCatalogue); };
    analyzeAll();
    ASSERT_GE(window.texts.size(), 2U);
    const Lines last(window.texts.end() - 2, window.texts.end());
    EXPECT_EQ(last, (Lines{"file1 p_S2_L001_R1_001.fastq", "file2 p_S2_L001_R2_001.fastq"}));
}

TEST_F(DocumentStateTest, ABatchPatientKeepsItsNamesAndDirectory) {
    writePair(7);
    analyzeAll();
    const auto& patient = *(*driver().summaryForEachPatientMutAr)[0];
    EXPECT_EQ(patient.file1, "p_S7_L001_R1_001.fastq");
    EXPECT_EQ(patient.file2, "p_S7_L001_R2_001.fastq");
    EXPECT_EQ(patient.fastqFileDir, dir.path());
    EXPECT_EQ(patient.patientNo, "7");
}

TEST_F(DocumentStateTest, ASingleRunReloadsTheTableBeforeItsRowCounts) {
    std::vector<std::int64_t> rows;
    window.onReloadPatients = [&] { rows.push_back(driver().selectedPatientRowNo); };
    analyze(writePair(1));
    EXPECT_EQ(rows, (std::vector<std::int64_t>{-1, -1}));
    EXPECT_EQ(driver().selectedPatientRowNo, 0);
}

TEST_F(DocumentStateTest, ABatchSetsTheRowBeforeItReloadsTheTable) {
    writeBatch(2);
    std::vector<std::int64_t> rows;
    window.onReloadPatients = [&] { rows.push_back(driver().selectedPatientRowNo); };
    analyzeAll();
    EXPECT_EQ(rows, (std::vector<std::int64_t>{-1, 0, 1}));
}

TEST_F(DocumentStateTest, PlainAndCompressedPairsRunInSampleOrderThroughWorkingCopies) {
    for (const char* read : {"R1", "R2"}) {
        const std::string end = std::string("_L001_") + read + "_001.fastq";
        dir.write("a_S1" + end, support::reads(3));
        dir.write("b_S3" + end + ".gz", support::gzipMember(support::reads(5)));
    }
    const Lines before = namesInDir();
    EXPECT_EQ(analyzeAll().patientsRun, 2U);
    EXPECT_EQ(patientNumbers(), (Lines{"1", "3"}));
    const auto& patients = *driver().summaryForEachPatientMutAr;
    EXPECT_EQ(patients[0]->totalNumberOfReads, 3);
    EXPECT_EQ(patients[1]->totalNumberOfReads, 5);
    EXPECT_EQ(patients[1]->file1, "b_S3_L001_R1_001.fastq.gz");
    EXPECT_EQ(window.countOf("select 0"), 1U);
    EXPECT_EQ(window.countOf("select 1"), 1U);
    EXPECT_EQ(driver().selectedPatientRowNo, 1);
    EXPECT_TRUE(window.errorLog.empty());
    EXPECT_EQ(window.warnings, (Lines{tooFewReadsOf("a_S1_L001_R1_001.fastq"),
                                      tooFewReadsOf("b_S3_L001_R1_001.fastq.gz")}));
    EXPECT_EQ(window.warnedPatients, (Lines{"1", "3"}));
    EXPECT_EQ(namesInDir(), before);
}

// --- Warnings

TEST_F(DocumentStateTest, AWarningOfARunIsShownBeforeItsEndAndIsNoError) {
    const std::string behindTheMember(4, '\0');
    const std::string member = support::gzipMember(support::reads(3));
    dir.write("p_S7_L001_R2_001.fastq.gz", member);
    const std::string read1 = dir.write("p_S7_L001_R1_001.fastq.gz", member + behindTheMember);
    document->inputMode = InputMode::direct;
    EXPECT_EQ(analyze(read1).patientsFailed, 0U);
    ASSERT_EQ(window.warnings.size(), 2U);
    EXPECT_EQ(window.warnings[1], tooFewReadsOf("p_S7_L001_R1_001.fastq.gz"));
    EXPECT_EQ(window.warnings[0].rfind(read1 + ": 4 zero bytes ", 0), 0U) << window.warnings[0];
    EXPECT_EQ(window.warnings[0].back(), '\n');
    EXPECT_EQ(window.events.back(), "ended");
    EXPECT_TRUE(window.errorLog.empty());
    EXPECT_EQ(window.broughtForward, 0);
}

TEST_F(DocumentStateTest, AWarningTellsItsPatientUnlessItIsThatOfTheWholeBatch) {
    document->inputMode = InputMode::direct;
    writePair(1);
    writePair(2);
    dir.write("p_S1_L002_R1_001.fastq", support::reads(3));
    for (const char* read : {"R1", "R2"}) {
        dir.write(std::string("a_S3_S9_L001_") + read + "_001.fastq", support::reads(3));
    }
    analyzeAll();
    // The lane of the batch; a number that "_S" makes doubtful, before any patient runs; then each
    // patient's too few reads.
    EXPECT_EQ(window.warnedPatients, (Lines{"", "3", "1", "2", "3"}));
}

// --- A catalogue that cannot be used

TEST_F(DocumentStateTest, AFaultyCatalogueIsToldBeforeAnEmptyDirectory) {
    own.write("catalogue.txt", support::kFaultyCatalogue);
    EXPECT_EQ(analyzeAll().end, End::catalogueFaulty);
    EXPECT_TRUE(window.analyzeEnabled && window.analyzeAllEnabled);
    EXPECT_FALSE(window.busy);
}

TEST_F(DocumentStateTest, AFaultyCatalogueMakesNoWorkingCopies) {
    writeBatch(2);
    const std::string stale = dir.write("_p_S2_L001_R1_001.fastq", "of another run");
    settings.onRead = [this] { own.write("catalogue.txt", support::kFaultyCatalogue); };
    EXPECT_EQ(analyzeAll().patientsFailed, 1U);
    EXPECT_EQ(support::readFile(stale), "of another run");
    EXPECT_NE(window.errorLog.find("Error occurred for files " + stale + " and " +
                                   dir.file("_p_S2_L001_R2_001.fastq") + "\n"),
              std::string::npos);
}

TEST_F(DocumentStateTest, ANamedCatalogueThatGoesAwayFailsOnlyTheLaterPatients) {
    makeDocument(run::DefinitionOrigin::named);
    writeBatch(3);
    settings.onRead = [this] { std::filesystem::remove(definition); };
    const AnalysisOutcome outcome = analyzeAll();
    EXPECT_EQ(outcome.end, End::finished);
    EXPECT_EQ(outcome.patientsFailed, 2U);
    EXPECT_EQ(patientNumbers(), Lines{"1"});
    const std::size_t first = window.errorLog.find(definition);
    ASSERT_NE(first, std::string::npos);
    EXPECT_EQ(window.errorLog.find(definition, first + 1), std::string::npos);
    EXPECT_TRUE(window.analyzeEnabled);
    EXPECT_EQ(window.catalogueNotices, Lines{""});
}

TEST_F(DocumentStateTest, APatientWhoseRunCannotBeginHasNotTheAccountOfTheOneBefore) {
    makeDocument(run::DefinitionOrigin::named);
    writeBatch(2);
    settings.onRead = [this] { std::filesystem::remove(definition); };
    analyzeAll();
    const auto& patients = document->analysisAccount().patients;
    ASSERT_EQ(patients.size(), 2U);
    EXPECT_EQ(patients[0].run.inputs.read1.records, 3);
    EXPECT_GT(patients[0].run.seconds, 0.0);
    EXPECT_EQ(patients[1].outcome, document::PatientAccount::Outcome::failed);
    EXPECT_EQ(patients[1].run.inputs.read1.records, 0);
    EXPECT_EQ(patients[1].run.seconds, 0.0);
    EXPECT_TRUE(patients[1].run.warnings.empty());
}

TEST_F(DocumentStateTest, ANamedCatalogueThatWentAwayEndsASingleRunHoweverOftenItIsStarted) {
    makeDocument(run::DefinitionOrigin::named);
    const std::string read1 = writePair(1);
    std::filesystem::remove(definition);
    for (int attempt = 0; attempt < 2; ++attempt) {
        window.errorLog.clear();
        EXPECT_EQ(analyze(read1).end, End::catalogueFaulty);
        EXPECT_NE(window.errorLog.find(definition), std::string::npos);
    }
    EXPECT_TRUE(patientNumbers().empty());
}

TEST_F(DocumentStateTest, ANamedCatalogueThatWasNotThereWhenTheDocumentOpenedStartsNoRun) {
    const std::string read1 = writePair(1);
    std::filesystem::remove(definition);
    makeDocument(run::DefinitionOrigin::named);
    EXPECT_EQ(analyze(read1).end, End::catalogueFaulty);
    EXPECT_TRUE(patientNumbers().empty());
    EXPECT_TRUE(window.catalogueNotices.empty());
}

TEST_F(DocumentStateTest, AShippedCatalogueThatWasNeverThereIsTheEmptyOne) {
    writeBatch(2);
    std::filesystem::remove(definition);
    makeDocument();
    EXPECT_EQ(analyzeAll().patientsFailed, 0U);
    EXPECT_EQ(patientNumbers(), (Lines{"1", "2"}));
    EXPECT_TRUE(window.errorLog.empty());
    EXPECT_THAT(window.catalogueNotices,
                testing::Contains("The catalogue could not be read for patients 1, 2: no target "
                                  "was searched, every result of theirs is empty. Cannot open " +
                                  definition + ": No such file or directory."));
}

TEST_F(DocumentStateTest, AShippedCatalogueThatWentAwayIsTheEmptyOneForASingleRun) {
    const std::string read1 = writePair(1);
    std::filesystem::remove(definition);
    const AnalysisOutcome outcome = analyze(read1);
    EXPECT_EQ(outcome.end, End::finished);
    EXPECT_EQ(outcome.patientsFailed, 0U);
    ASSERT_EQ(patientNumbers(), Lines{"1"});
    const auto& patient = *(*driver().summaryForEachPatientMutAr)[0];
    EXPECT_TRUE(patient.mutDomains->empty());
    EXPECT_EQ(patient.totalNumberOfReads, 3);
    EXPECT_EQ(patient.readsMapped, 0);
    EXPECT_TRUE(window.errorLog.empty());
    EXPECT_EQ(window.catalogueNotices,
              (Lines{"", "The catalogue could not be read: no target was searched, every result is "
                         "empty. Cannot open " +
                             definition + ": No such file or directory."}));
}

TEST_F(DocumentStateTest, ARunWithItsCatalogueBackTakesTheNoticeAway) {
    const std::string read1 = writePair(1);
    std::filesystem::remove(definition);
    analyze(read1);
    own.write("catalogue.txt", support::kSmallCatalogue);
    window.catalogueNotices.clear();
    analyze(read1);
    EXPECT_EQ(window.catalogueNotices, Lines{""});
    EXPECT_EQ((*driver().summaryForEachPatientMutAr)[0]->readsMapped, 3);
}

TEST_F(DocumentStateTest, TheNoticeStaysWithTheResultsThatARefusedCommandLeaves) {
    const std::string read1 = writePair(1);
    std::filesystem::remove(definition);
    analyze(read1);
    window.catalogueNotices.clear();
    own.write("catalogue.txt", support::kFaultyCatalogue);
    EXPECT_EQ(analyze(read1).end, End::catalogueFaulty);
    std::filesystem::remove(dir.file("p_S1_L001_R2_001.fastq"));
    EXPECT_EQ(analyzeAll().end, End::unpaired);
    EXPECT_TRUE(window.catalogueNotices.empty());
    EXPECT_EQ(patientNumbers(), Lines{"1"});
}

TEST_F(DocumentStateTest, AShippedCatalogueThatComesAndGoesIsMissingForThePatientsThatAreNamed) {
    writeBatch(6);
    // Read at the end of every patient's run, as its copies are removed.
    settings.onRead = [this] {
        const std::string patient = *driver().summaryForEachPatient->patientNo;
        if (patient == "1" || patient == "5") {
            std::filesystem::remove(definition);
        } else if (patient == "3") {
            own.write("catalogue.txt", support::kSmallCatalogue);
        }
    };
    EXPECT_EQ(analyzeAll().patientsFailed, 0U);
    EXPECT_TRUE(window.errorLog.empty());
    std::vector<std::int64_t> mapped;
    for (const auto& patient : *driver().summaryForEachPatientMutAr) {
        mapped.push_back(patient->readsMapped);
    }
    EXPECT_EQ(mapped, (std::vector<std::int64_t>{3, 0, 0, 3, 3, 0}));
    const auto notice = [this](const std::string& whom) {
        return "The catalogue could not be read for " + whom +
               ": no target was searched, every result of theirs is empty. Cannot open " +
               definition + ": No such file or directory.";
    };
    EXPECT_EQ(window.catalogueNotices, (Lines{"", notice("patient 2"), notice("patients 2, 3"),
                                              notice("patients 2, 3, 6")}));
}

// --- Exceptions

TEST_F(DocumentStateTest, MemoryThatRunsOutInASingleRunIsADisplayedFailure) {
    settings.onRead = [] { throw std::bad_alloc(); };
    EXPECT_EQ(analyze(writePair(1)).patientsFailed, 1U);
    EXPECT_NE(window.errorLog.find("The run ended early: "), std::string::npos);
    EXPECT_NE(window.errorLog.find("Error occurred for files "), std::string::npos);
}

TEST_F(DocumentStateTest, MemoryThatRunsOutForOnePatientFailsThatPatient) {
    writeBatch(2);
    settings.onRead = [this] {
        if (driver().summaryForEachPatient->patientNo == "1") {
            throw std::bad_alloc();
        }
    };
    EXPECT_EQ(analyzeAll().patientsFailed, 1U);
    EXPECT_EQ(patientNumbers(), Lines{"2"});
}

} // namespace
