// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include "document/analysis_plan.h"

#include <filesystem>
#include <string>
#include <vector>

#include <gmock/gmock.h>

#include "support/temp_dir.h"

namespace {

using document::planBatch;
using testing::ElementsAre;
using Names = std::vector<std::string>;

TEST(AnalysisPlan, OfSlotsHasThePatientsOfTheBatch) {
    const Names names = {"b_S10_L001_R1_001.fastq", "b_S10_L001_R2_001.fastq.gz",
                         "a_S9_L001_R1_001.fastq", "a_S9_L001_R2_001.fastq",
                         "c_S9_L002_R1_001.fastq"};
    const auto plan = document::planOfSlots("/d", names, planBatch(names));
    ASSERT_EQ(plan.patients.size(), 2U);
    EXPECT_EQ(plan.patients[0].number, "9");
    EXPECT_EQ(plan.patients[0].sample, "a");
    EXPECT_EQ(plan.patients[1].directory, "/d");
    EXPECT_EQ(document::file1Of(plan.patients[1]), "b_S10_L001_R1_001.fastq");
    EXPECT_EQ(document::file2Of(plan.patients[1]), "b_S10_L001_R2_001.fastq.gz");
    EXPECT_EQ(plan.patients[1].lanes[0].read1Path, "/d/b_S10_L001_R1_001.fastq");
    ASSERT_EQ(plan.unusedReads.size(), 1U);
    EXPECT_TRUE(plan.warnings.empty());
}

TEST(AnalysisPlan, PassesOverAnUnpairedSampleWithItsLines) {
    const Names names = {"a_S1_L001_R1_001.fastq", "a_S1_L001_R2_001.fastq",
                         "b_S2_L001_R2_001.fastq.gz"};
    const auto plan = document::planWithoutUnpaired("/d", names, planBatch(names));
    EXPECT_EQ(plan.patients.size(), 1U);
    ASSERT_EQ(plan.passedOver.size(), 1U);
    EXPECT_THAT(plan.passedOver[0].lines,
                ElementsAre("Patient 2 has unpaired fastq file.",
                            "b_S2_L001_R2_001.fastq.gz: found neither b_S2_L001_R1_001.fastq nor "
                            "b_S2_L001_R1_001.fastq.gz"));
    EXPECT_EQ(plan.passedOver[0].outcome, document::PatientAccount::Outcome::skipped);
    ASSERT_EQ(plan.warnings.size(), 2U);
    EXPECT_TRUE(run::isSevere(plan.warnings[0].kind));
    ASSERT_EQ(plan.unusedReads.size(), 1U);
    EXPECT_EQ(plan.unusedReads[0].reason, "its mate is missing");
    // The two warnings have told of it.
    EXPECT_TRUE(document::warningsOf(plan.unusedReads, {}).empty());
}

TEST(AnalysisPlan, KnowsTheFilesThatItReadsInADirectoryUnderWhateverPath) {
    support::TempDir dir;
    support::TempDir other;
    std::filesystem::create_directory_symlink(dir.path(), other.file("link"));
    document::PlannedPatient patient;
    patient.lanes = {{dir.file("a"), other.file("b")}, {other.file("link/c"), dir.path() + "/./d"}};
    EXPECT_THAT(document::namesUsedIn(dir.path(), {patient}), ElementsAre("a", "c", "d"));
    EXPECT_THAT(document::namesUsedIn(other.path(), {patient}), ElementsAre("b"));
}

} // namespace
