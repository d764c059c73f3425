// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include "document/input_discovery.h"

#include <random>

#include <gtest/gtest.h>

#include "support/temp_dir.h"

namespace {

using document::PatientSlot;

TEST(FindMate, GivesTheSamePairFromEitherFile) {
    const support::TempDir dir;
    const std::string read1 = dir.write("P_R1_001.fastq", "");
    const std::string read2 = dir.write("P_R2_001.fastq", "");
    for (const std::string& chosen : {read1, read2}) {
        const auto files = document::findMate(chosen);
        EXPECT_TRUE(files.paired);
        EXPECT_EQ(files.file1, "P_R1_001.fastq");
        EXPECT_EQ(files.file2, "P_R2_001.fastq");
        EXPECT_EQ(files.directory, dir.path());
    }
}

TEST(FindMate, TakesANameWithBothMarksAsRead1) {
    const support::TempDir dir;
    dir.write("a_R2_b_R2_c.fastq", "");
    const auto files = document::findMate(dir.write("a_R2_b_R1_c.fastq", ""));
    EXPECT_TRUE(files.paired);
    EXPECT_EQ(files.file1, "a_R2_b_R1_c.fastq");
    EXPECT_EQ(files.file2, "a_R2_b_R2_c.fastq");
}

TEST(FindMate, DropsWhatFollowsASecondMark) {
    const support::TempDir dir;
    const auto files = document::findMate(dir.file("a_R1_b_R1_c.fastq"));
    EXPECT_EQ(files.file2, "a_R2_b");
    EXPECT_FALSE(files.paired);
}

TEST(FindMate, PairsACompressedFileWithAPlainMate) {
    const support::TempDir dir;
    dir.write("x_R2_001.fastq", "");
    const auto files = document::findMate(dir.write("x_R1_001.fastq.gz", ""));
    EXPECT_TRUE(files.paired);
    EXPECT_EQ(files.file2, "x_R2_001.fastq");
}

TEST(FindMate, PairsAPlainFileWithACompressedMate) {
    const support::TempDir dir;
    dir.write("x_R1_001.fastq.gz", "");
    const auto files = document::findMate(dir.write("x_R2_001.fastq", ""));
    EXPECT_TRUE(files.paired);
    EXPECT_EQ(files.file1, "x_R1_001.fastq.gz");
}

TEST(FindMate, KeepsTheBuiltNameOfAMissingMate) {
    const support::TempDir dir;
    const auto files = document::findMate(dir.write("x_R1_001.fastq", ""));
    EXPECT_FALSE(files.paired);
    EXPECT_EQ(files.file1, "x_R1_001.fastq");
    EXPECT_EQ(files.file2, "x_R2_001.fastq");
}

TEST(FindMate, GivesNoNamesWithoutAMark) {
    const auto files = document::findMate("/data/x.fastq");
    EXPECT_FALSE(files.paired);
    EXPECT_EQ(files.file1, std::nullopt);
    EXPECT_EQ(files.file2, std::nullopt);
    EXPECT_EQ(files.directory, "/data");
}

TEST(FindMate, KnowsNoOtherExtension) {
    const support::TempDir dir;
    dir.write("x_R2_001.fq", "");
    EXPECT_FALSE(document::findMate(dir.write("x_R1_001.fq", "")).paired);
}

TEST(PatientNumber, StandsBehindTheFirstSUpToAnUnderscore) {
    EXPECT_EQ(document::patientNumberOf("P_S12_L001_R1_001.fastq"), "12");
    EXPECT_EQ(document::patientNumberOf("A_Sx_S3_L001"), "x");
    EXPECT_EQ(document::patientNumberOf("A_S"), "");
    EXPECT_EQ(document::patientNumberOf("P12_R1_001.fastq"), std::nullopt);
}

/// The same batch, the long way: every key against every name.
std::vector<PatientSlot> literalBatch(const std::vector<std::string>& names) {
    std::vector<PatientSlot> batch;
    for (int sample = 1; sample <= 1000; ++sample) {
        const std::string start = "_S" + std::to_string(sample) + "_L001_R";
        PatientSlot slot;
        for (const std::string& name : names) {
            if (name.empty() || name[0] == '_' || name[0] == '.') {
                continue;
            }
            if (name.find(start + "1_001.fastq") != std::string::npos) {
                slot.file1 = name;
            } else if (name.find(start + "2_001.fastq") != std::string::npos) {
                slot.file2 = name;
            }
        }
        slot.sampleNumber = sample;
        if (!slot.file1.empty() || !slot.file2.empty()) {
            batch.push_back(slot);
        }
    }
    return batch;
}

std::vector<std::string> described(const std::vector<PatientSlot>& batch) {
    std::vector<std::string> lines;
    for (const PatientSlot& slot : batch) {
        lines.push_back(std::to_string(slot.sampleNumber) + "|" + slot.file1 + "|" + slot.file2);
    }
    return lines;
}

using Lines = std::vector<std::string>;

TEST(PlanBatch, RunsSamplesInRisingNumberPlainOrCompressed) {
    EXPECT_EQ(
        described(document::planBatch({"b_S3_L001_R2_001.fastq.gz", "a_S1_L001_R1_001.fastq",
                                       "b_S3_L001_R1_001.fastq.gz", "a_S1_L001_R2_001.fastq"})),
        (Lines{"1|a_S1_L001_R1_001.fastq|a_S1_L001_R2_001.fastq",
               "3|b_S3_L001_R1_001.fastq.gz|b_S3_L001_R2_001.fastq.gz"}));
}

TEST(PlanBatch, FindsEverySampleFrom1To1000) {
    std::vector<std::string> names;
    Lines expected;
    for (int sample = 1; sample <= 1000; ++sample) {
        const std::string start = "x_S" + std::to_string(sample) + "_L001_R";
        names.insert(names.end(), {start + "1_001.fastq", start + "2_001.fastq.gz"});
        expected.push_back(std::to_string(sample) + "|" + start + "1_001.fastq|" + start +
                           "2_001.fastq.gz");
    }
    EXPECT_EQ(described(document::planBatch(names)), expected);
}

TEST(PlanBatch, LeavesOutNamesThatBeginWithAFullStopOrAnUnderscore) {
    EXPECT_TRUE(
        document::planBatch({"._x_S1_L001_R1_001.fastq", "_x_S1_L001_R2_001.fastq"}).empty());
}

TEST(PlanBatch, LeavesOutOtherSampleNumbersLanesAndSpellings) {
    EXPECT_TRUE(document::planBatch({"x_S1001_L001_R1_001.fastq", "x_S0_L001_R1_001.fastq",
                                     "x_S1_L002_R1_001.fastq", "x_S1_L001_R1_002.fastq",
                                     "x_S01_L001_R1_001.fastq",
                                     "x_S99999999999999999999_L001_R1_001.fastq", ""})
                    .empty());
    EXPECT_EQ(document::planBatch({"x_S1000_L001_R1_001.fastq"}).size(), 1U);
}

TEST(PlanBatch, UsesTheLaterOfTwoCandidates) {
    EXPECT_EQ(described(document::planBatch({"b_S1_L001_R1_001.fastq", "a_S1_L001_R1_001.fastq"})),
              (Lines{"1|a_S1_L001_R1_001.fastq|"}));
}

TEST(PlanBatch, TakesANameWithBothKeysOfASampleAsItsRead1) {
    const std::string name = "x_S4_L001_R2_001.fastq_S4_L001_R1_001.fastq";
    EXPECT_EQ(described(document::planBatch({name})), (Lines{"4|" + name + "|"}));
}

TEST(PlanBatch, TakesANameWithTheRead1KeysOfTwoSamplesAsTheRead1OfBoth) {
    const std::string both = "x_S4_L001_R1_001.fastq_S5_L001_R1_001.fastq";
    // Whichever of the two its read-2 key names, it is that sample's read 1 before.
    for (const std::string& name :
         {both + "_S4_L001_R2_001.fastq", both + "_S5_L001_R2_001.fastq"}) {
        EXPECT_EQ(described(document::planBatch({name})),
                  (Lines{"4|" + name + "|", "5|" + name + "|"}));
    }
}

TEST(PlanBatch, EqualsTestingEveryKeyAgainstEveryName) {
    const std::vector<std::string> pieces = {"x",
                                             "_S",
                                             "1",
                                             "2",
                                             "12",
                                             "01",
                                             "1000",
                                             "1001",
                                             "_",
                                             ".",
                                             "_L001_R1_001.fastq",
                                             "_L001_R2_001.fastq",
                                             "_L001_R",
                                             "_S7_L001_R1_001.fastq",
                                             "_S7_L001_R2_001.fastq",
                                             ".gz"};
    std::mt19937 random(20); // a fixed seed, so that a failure comes again
    for (int round = 0; round < 60; ++round) {
        std::vector<std::string> names(12);
        for (std::string& name : names) {
            name = random() % 8 == 0 ? "" : "n";
            for (std::size_t count = random() % 8; count > 0; --count) {
                name += pieces[random() % pieces.size()];
            }
        }
        ASSERT_EQ(described(document::planBatch(names)), described(literalBatch(names)));
    }
}

} // namespace
