// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
// Saving an analysis and opening it again.
#include "document/result_document.h"

#include <csignal>
#include <filesystem>
#include <random>

#include <gmock/gmock.h>
#include <sys/wait.h>
#include <unistd.h>

#include "document_test.h"
#include "platform/files.h"

namespace {

using document::Lines;
using document::VextaDocumentTest;
using testing::HasSubstr;

constexpr const char* kSave = "saveVEXtAFile:";
constexpr const char* kMakeSummaryTable = "makeSummaryTable:";

class ResultDocument : public VextaDocumentTest {
protected:
    void analyzeBatchOf(int samples) {
        for (int sample = 1; sample <= samples; ++sample) {
            writePair(sample, sample, sample);
        }
        analyzeAll();
        ASSERT_EQ(patientNumbers().size(), static_cast<std::size_t>(samples));
    }
    void analyzeBatchThatFails() {
        dir.write("p_S1_L001_R1_001.fastq.gz", "no gzip data");
        dir.write("p_S1_L001_R2_001.fastq", support::reads(3));
        ASSERT_EQ(analyzeAll().patientsFailed, 1U);
    }
    /// Saves the document and returns the file's path.
    std::string save() {
        document->saveVEXtAFile();
        return own.write("run.vexta", window.offered.back().bytes);
    }
    bool open(const std::string& path) {
        makeDocument();
        return document->readFromURL(path, "VEXtAFile");
    }
    std::string report(std::int64_t row) {
        window.selection = {row};
        document->copy();
        return clipboard.text;
    }
    std::string summaryTable() {
        document->makeSummaryTable();
        return clipboard.text;
    }
};

TEST_F(ResultDocument, AfterABatchOfThreeWithRow2SelectedShowsThreePatientsAndTheThird) {
    analyzeBatchOf(3);
    driver().selectedPatientRowNo = 2;
    const std::string table = summaryTable();
    const std::string third = report(2);
    ASSERT_TRUE(open(save()));
    EXPECT_EQ(patientNumbers(), (Lines{"1", "2", "3"}));
    EXPECT_EQ(driver().selectedPatientRowNo, 2);
    EXPECT_EQ(summaryTable(), table);
    EXPECT_EQ(report(2), third);
}

TEST_F(ResultDocument, AfterABatchInWhichEveryPatientFailedHoldsAnEmptyListAndRowMinus1) {
    analyzeBatchThatFails();
    ASSERT_TRUE(open(save()));
    ASSERT_TRUE(driver().summaryForEachPatientMutAr.has_value());
    EXPECT_TRUE(driver().summaryForEachPatientMutAr->empty());
    EXPECT_EQ(driver().selectedPatientRowNo, -1);
    EXPECT_FALSE(document->canMakeSummaryTable());
    EXPECT_FALSE(document->validateUserInterfaceItem(kMakeSummaryTable));
}

TEST_F(ResultDocument, CannotBeSavedAgainSinceItsAnalyzeButtonIsDisabled) {
    analyzeBatchOf(1);
    EXPECT_TRUE(document->validateUserInterfaceItem(kSave));
    ASSERT_TRUE(open(save()));
    EXPECT_EQ(document->fileType(), document::kResultDocumentType);
    window.setAnalyzeButtonEnabled(false);
    EXPECT_FALSE(document->validateUserInterfaceItem(kSave));
}

TEST_F(ResultDocument, CannotBeSavedWithoutAWindow) {
    document->windowController = nullptr;
    EXPECT_FALSE(document->validateUserInterfaceItem(kSave));
    document->saveVEXtAFile();
    EXPECT_TRUE(window.offered.empty());
}

TEST_F(ResultDocument, CannotBeSavedWhileAPatientRuns) {
    settings.onRead = [this] { EXPECT_FALSE(document->validateUserInterfaceItem(kSave)); };
    analyzeBatchOf(1);
    settings.onRead = nullptr;
    EXPECT_TRUE(document->validateUserInterfaceItem(kSave));
}

TEST_F(ResultDocument, IsOfferedWithTheOneExtensionVexta) {
    analyzeBatchOf(1);
    save();
    ASSERT_EQ(window.offered.size(), 1U);
    EXPECT_EQ(window.offered[0].extension, "vexta");
}

TEST_F(ResultDocument, HoldsTheStateAtTheMomentOfTheCommand) {
    analyzeBatchOf(2);
    document->saveVEXtAFile();
    driver().selectedPatientRowNo = 7;
    (*driver().summaryForEachPatientMutAr)[0]->patientNo = "changed";
    ASSERT_TRUE(open(own.write("run.vexta", window.offered.back().bytes)));
    EXPECT_EQ(patientNumbers(), (Lines{"1", "2"}));
    EXPECT_EQ(driver().selectedPatientRowNo, 1);
}

TEST_F(ResultDocument, ReplacesTheDriversDictionaryWhenSavedAndWhenOpened) {
    analyzeBatchOf(2);
    const std::string path = save();
    EXPECT_EQ(driver().mainMutDictionary.selectedPatientRowNo, 1);
    EXPECT_EQ(driver().mainMutDictionary.summaryForEachPatientMutAr->size(), 2U);
    ASSERT_TRUE(open(path));
    EXPECT_EQ(driver().mainMutDictionary.selectedPatientRowNo, 1);
    ASSERT_TRUE(driver().mainMutDictionary.summaryForEachPatientMutAr.has_value());
    EXPECT_EQ((*driver().mainMutDictionary.summaryForEachPatientMutAr)[1],
              (*driver().summaryForEachPatientMutAr)[1]);
}

TEST_F(ResultDocument, EnablesTheSummaryTableWhenItHoldsAPatient) {
    analyzeBatchOf(1);
    ASSERT_TRUE(open(save()));
    EXPECT_TRUE(document->canMakeSummaryTable());
    EXPECT_TRUE(document->validateUserInterfaceItem(kMakeSummaryTable));
}

TEST_F(ResultDocument, EnablesNoOtherAction) {
    analyzeBatchOf(1);
    for (const char* action : {"saveDocument:", "saveDocumentAs:", "revertDocumentToSaved:",
                               "copy:", "saveVEXtAFile", "makeSummaryTable", ""}) {
        EXPECT_FALSE(document->validateUserInterfaceItem(action)) << action;
    }
}

TEST_F(ResultDocument, AutosavesInPlace) {
    EXPECT_TRUE(document::VextaDocument::autosavesInPlace());
}

TEST_F(ResultDocument, KeepsARowNumberBeyondTheList) {
    analyzeBatchOf(1);
    driver().selectedPatientRowNo = 12;
    ASSERT_TRUE(open(save()));
    EXPECT_EQ(driver().selectedPatientRowNo, 12);
    EXPECT_EQ(patientNumbers(), Lines{"1"});
}

TEST_F(ResultDocument, KeepsARowsDomainOneWithItsPatients) {
    analyzeBatchOf(1);
    const auto& before = *(*driver().summaryForEachPatientMutAr)[0];
    ASSERT_EQ((*before.somaticDNAResultMutAr)[0]->mutDomain, (*before.mutDomains)[0]);
    ASSERT_TRUE(open(save()));
    const auto& patient = *(*driver().summaryForEachPatientMutAr)[0];
    EXPECT_EQ((*patient.somaticDNAResultMutAr)[0]->mutDomain, (*patient.mutDomains)[0]);
}

// --- Files that cannot be opened

TEST_F(ResultDocument, ReportsADamagedFileOnceAndLeavesTheDocumentAsItWas) {
    analyzeBatchOf(2);
    const std::string whole = support::readFile(save());
    const std::string path = own.write("cut.vexta", whole.substr(0, whole.size() / 2));
    EXPECT_FALSE(document->readFromURL(path, "VEXtAFile"));
    ASSERT_EQ(alerts.shown.size(), 1U);
    EXPECT_THAT(alerts.shown[0], HasSubstr(path + ": "));
    EXPECT_EQ(patientNumbers(), (Lines{"1", "2"}));
    EXPECT_EQ(driver().selectedPatientRowNo, 1);
    EXPECT_EQ(document->fileType(), "");
}

TEST_F(ResultDocument, ReportsAFileLargerThanAnyWithoutReadingIt) {
    const std::string path = own.write("huge.vexta", "bplist00");
    std::filesystem::resize_file(path, std::uintmax_t{1} << 36U);
    EXPECT_FALSE(open(path));
    ASSERT_EQ(alerts.shown.size(), 1U);
    EXPECT_THAT(alerts.shown[0], HasSubstr(path + ": it is larger than"));
}

TEST_F(ResultDocument, ReportsAForeignFileAMissingOneAndADirectory) {
    const std::string foreign = own.write("foreign.vexta", "{\"no\": \"archive\"}");
    for (const std::string& path : {foreign, own.file("missing.vexta"), own.path()}) {
        alerts.shown.clear();
        EXPECT_FALSE(open(path));
        ASSERT_EQ(alerts.shown.size(), 1U) << path;
        EXPECT_THAT(alerts.shown[0], HasSubstr(path));
        EXPECT_FALSE(document->canMakeSummaryTable());
    }
}

TEST_F(ResultDocument, OpensAsReadsUnderAnyOtherType) {
    analyzeBatchOf(1);
    const std::string path = save();
    makeDocument();
    EXPECT_FALSE(document->readFromURL(path, "fastq"));
    EXPECT_TRUE(patientNumbers().empty());
}

TEST_F(ResultDocument, WithANumberThatIsNotFiniteIsNotOffered) {
    analyzeBatchOf(1);
    const auto& patient = *(*driver().summaryForEachPatientMutAr)[0];
    (*(*patient.mutDomains)[0]->mutationMutAr)[0]->allowableFalsePositiveRate = 1.0 / 0.0;
    document->saveVEXtAFile();
    EXPECT_TRUE(window.offered.empty());
    loop.async([this] { loop.stop(); });
    loop.run();
    EXPECT_THAT(window.errorLog, HasSubstr("not finite"));
}

// --- A save that is cut short

TEST_F(ResultDocument, IsTheOldFileOrTheNewOneWhenItsWriterIsKilled) {
    analyzeBatchOf(1);
    const std::string oldBytes = support::readFile(save());
    const std::string newBytes = oldBytes + std::string(1'000'000, '\0');
    const std::string path = own.file("run.vexta");
    std::minstd_rand random(1);
    for (int attempt = 0; attempt < 25; ++attempt) {
        const pid_t writer = fork();
        if (writer == 0) {
            for (bool even = false;; even = !even) {
                static_cast<void>(platform::writeFileAtomically(path, even ? oldBytes : newBytes));
            }
        }
        ASSERT_GT(writer, 0);
        usleep(static_cast<useconds_t>(random() % 3000));
        kill(writer, SIGKILL);
        ASSERT_EQ(waitpid(writer, nullptr, 0), writer);
        const std::string found = support::readFile(path);
        ASSERT_TRUE(found == oldBytes || found == newBytes) << found.size() << " bytes";
    }
}

} // namespace
