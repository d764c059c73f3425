// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include "document/folder_account.h"

#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace {

using document::planBatch;
using Names = std::vector<std::string>;

/// "name: reason" of each file that is not used.
Names unusedOf(const Names& names) {
    Names lines;
    for (const auto& unused : document::unusedReads(names, planBatch(names))) {
        lines.push_back(unused.name + ": " + unused.reason);
    }
    return lines;
}

TEST(FolderAccount, SaysNothingOfAFolderWhosePairsAreAllRead) {
    EXPECT_EQ(unusedOf({"a_S1_L001_R1_001.fastq", "a_S1_L001_R2_001.fastq",
                        "b_S2_L001_R1_001.fastq.gz", "b_S2_L001_R2_001.fastq.gz", "SampleSheet.csv",
                        "report.html", "reads.fastq.md5"}),
              Names{});
}

TEST(FolderAccount, GivesEveryUnusedFileItsReason) {
    EXPECT_EQ(unusedOf({"a_S1_L001_R1_001.fastq", "a_S1_L001_R2_001.fastq",
                        "a_S1_L002_R1_001.fastq", "a_S1_L001_R1_002.fastq",
                        "b_S1500_L001_R1_001.fastq.gz", "c_S3_L001_R1_001.fq.gz",
                        "d_S4_R1_001.fastq", "e_R1.fastq", "_f_S5_L001_R1_001.fastq",
                        "._g_S6_L001_R1_001.fastq", "h_S007_L001_R1_001.fastq"}),
              (Names{
                  "._g_S6_L001_R1_001.fastq: names that begin with \".\" are passed over",
                  "_f_S5_L001_R1_001.fastq: names that begin with \"_\" are passed over",
                  "a_S1_L001_R1_002.fastq: part 002: only part 001 is read",
                  "a_S1_L002_R1_001.fastq: lane L002: only lane L001 is read",
                  "b_S1500_L001_R1_001.fastq.gz: sample number 1500: only 1 to 1000 are read",
                  "c_S3_L001_R1_001.fq.gz: the name ends in \".fq\"; names end in \".fastq\" or "
                  "\".fastq.gz\"",
                  "d_S4_R1_001.fastq: the name tells no lane; names hold \"_L001_\"",
                  "e_R1.fastq: the name is none of <sample>_S<1-1000>_L001_R<1 or "
                  "2>_001.fastq[.gz]",
                  "h_S007_L001_R1_001.fastq: sample number 007: numbers begin with 1 to 9",
              }));
}

TEST(FolderAccount, KnowsTheFilesThatEverySequencerLeaves) {
    const Names names = {"Undetermined_S0_L001_R1_001.fastq.gz", "a_S1_L001_I1_001.fastq.gz",
                         "a_S1_L002_R1_001.fastq.gz"};
    const auto unused = document::unusedReads(names, planBatch(names));
    ASSERT_EQ(unused.size(), 3U);
    EXPECT_TRUE(unused[0].isUsual) << unused[0].reason;
    EXPECT_TRUE(unused[1].isUsual) << unused[1].reason;
    EXPECT_FALSE(unused[2].isUsual);
}

TEST(FolderAccount, TellsOfAnotherCandidateForASample) {
    EXPECT_EQ(
        unusedOf({"a_S1_L001_R1_001.fastq", "b_S1_L001_R1_001.fastq", "b_S1_L001_R2_001.fastq"}),
        Names{"a_S1_L001_R1_001.fastq: another file of this sample is read"});
}

TEST(FolderAccount, FindsTwoSamplesWithOneNumber) {
    const Names names = {"ann_S1_L001_R1_001.fastq", "ann_S1_L001_R2_001.fastq",
                         "bob_S1_L001_R1_001.fastq", "bob_S1_L001_R2_001.fastq"};
    const auto doubtful = document::doubtfulPairs(names, planBatch(names));
    ASSERT_EQ(doubtful.size(), 2U);
    EXPECT_EQ(doubtful[0].one, "ann_S1_L001_R1_001.fastq");
    EXPECT_EQ(doubtful[0].other, "bob_S1_L001_R1_001.fastq");
    EXPECT_EQ(doubtful[0].kind, document::DoubtfulPair::Kind::sameRead);
    EXPECT_EQ(doubtful[1].one, "ann_S1_L001_R2_001.fastq");
}

TEST(FolderAccount, FindsAPairOfTwoNames) {
    const Names names = {"ann_S1_L001_R1_001.fastq", "bob_S1_L001_R2_001.fastq"};
    const auto doubtful = document::doubtfulPairs(names, planBatch(names));
    ASSERT_EQ(doubtful.size(), 1U);
    EXPECT_EQ(doubtful[0].kind, document::DoubtfulPair::Kind::namesDiffer);
    EXPECT_EQ(doubtful[0].sampleNumber, 1);
}

TEST(FolderAccount, APlainAndACompressedMateAreOnePair) {
    const Names names = {"a_S1_L001_R1_001.fastq", "a_S1_L001_R2_001.fastq.gz",
                         "x_R1_S2_L001_R1_001.fastq", "x_R1_S2_L001_R2_001.fastq"};
    EXPECT_TRUE(document::doubtfulPairs(names, planBatch(names)).empty());
}

TEST(FolderAccount, AChecksumBesideReadsIsNobodysAndOneInTheirPlaceIsNamed) {
    const std::string read1 = "a_S1_L001_R1_001.fastq.gz";
    const std::string read2 = "a_S1_L001_R2_001.fastq.gz";
    const Names readsLast = {read1 + ".md5", read2 + ".md5", read1, read2};
    EXPECT_TRUE(document::doubtfulPairs(readsLast, planBatch(readsLast)).empty());
    const Names checksumLast = {read1, read2, read1 + ".md5"};
    const auto doubtful = document::doubtfulPairs(checksumLast, planBatch(checksumLast));
    ASSERT_EQ(doubtful.size(), 1U);
    EXPECT_EQ(doubtful[0].one, read1 + ".md5");
    EXPECT_EQ(doubtful[0].kind, document::DoubtfulPair::Kind::noReads);
}

TEST(FolderAccount, EndingsInCapitalsLookLikeReads) {
    const auto unused = document::unusedReads(Names{"a_S1_L001_R1_001.FASTQ.GZ"},
                                              std::vector<document::PatientSlot>());
    ASSERT_EQ(unused.size(), 1U);
    EXPECT_NE(unused[0].reason.find("small letters"), std::string::npos);
}

TEST(FolderAccount, AHalfPairIsNotDoubtful) {
    const Names names = {"a_S1_L001_R1_001.fastq"};
    EXPECT_TRUE(document::doubtfulPairs(names, planBatch(names)).empty());
}

TEST(FolderAccount, ASingleRunHearsOfTheOtherLanesOfItsSampleOnly) {
    document::ReadPairFiles pair;
    pair.file1 = "a_S1_L001_R1_001.fastq";
    pair.file2 = "a_S1_L001_R2_001.fastq";
    const auto others = document::otherReadsOfSample(
        {"a_S1_L001_R1_001.fastq", "a_S1_L001_R2_001.fastq", "a_S1_L002_R1_001.fastq",
         "a_S1_L002_R2_001.fastq", "b_S2_L002_R1_001.fastq", "a_S1_L001_I1_001.fastq",
         "a_S1_L001_R1_002.fastq"},
        pair);
    ASSERT_EQ(others.size(), 3U);
    EXPECT_EQ(others[0].name, "a_S1_L001_R1_002.fastq");
    EXPECT_EQ(others[1].name, "a_S1_L002_R1_001.fastq");
    EXPECT_EQ(others[2].name, "a_S1_L002_R2_001.fastq");
}

TEST(SampleName, IsWhatStandsBeforeTheLastSampleNumber) {
    EXPECT_EQ(document::sampleNameOf("P_S12_L001_R1_001.fastq"), "P");
    EXPECT_EQ(document::sampleNameOf("pat_Suzuki_S12_L001_R1_001.fastq"), "pat_Suzuki");
    EXPECT_EQ(document::sampleNameOf("a_S1_S22_L001_R1_001.fastq"), "a_S1");
    EXPECT_EQ(document::sampleNameOf("_S1_L001_R1_001.fastq"), "");
    EXPECT_EQ(document::sampleNameOf("x_Sy_L001_R1_001.fastq"), "");
}

TEST(SampleName, ANameThatHoldsTheMarkTwiceGivesADoubtfulNumber) {
    EXPECT_TRUE(document::patientNumberIsDoubtful("pat_Suzuki_S12_L001_R1_001.fastq"));
    EXPECT_FALSE(document::patientNumberIsDoubtful("P_S12_L001_R1_001.fastq"));
}

} // namespace
