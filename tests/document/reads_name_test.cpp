// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include "document/reads_name.h"

#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace {

/// "sample|number|lane|read mark|part|ending", or "" for another form of name.
std::string described(const std::string& name) {
    const auto parts = document::readsNameOf(name);
    return parts ? parts->sample + "|" + parts->number + "|" + parts->lane + "|" +
                       (parts->hasR ? "R" : "") + std::to_string(parts->read) + "|" + parts->part +
                       "|" + parts->ending
                 : "";
}

TEST(ReadsName, IsTakenApartFromItsEnd) {
    const std::vector<std::pair<std::string, std::string>> cases = {
        {"P_S1_L001_R1_001.fastq.gz", "P|1|001|R1|001|.fastq.gz"},
        {"P_S1_L001_R2_001.fastq", "P|1|001|R2|001|.fastq"},
        {"pat_Suzuki_S12_L004_R1_001.fastq", "pat_Suzuki|12|004|R1|001|.fastq"},
        {"Anna_Smith_R2.fq.gz", "Anna_Smith|||R2||.fq.gz"},
        {"SRR123_1.fastq.gz", "SRR123|||1||.fastq.gz"},
        {"x_1_2.fq", "x_1|||2||.fq"},
        {"x_R1_1.fastq", "x|||R1|1|.fastq"},
        {"P_S1500_R1_002.fastq", "P|1500||R1|002|.fastq"},
        {"P_L002_R1.fastq", "P||002|R1||.fastq"},
        {"P.v2_S3_R1.fastq", "P.v2|3||R1||.fastq"},
        {"a_S1_S2_L001_R1_001.fastq", "a_S1|2|001|R1|001|.fastq"},
        {"L001_R1.fastq", "L001|||R1||.fastq"},
        {"S7_R1.fastq", "S7|||R1||.fastq"},
    };
    for (const auto& [name, parts] : cases) {
        EXPECT_EQ(described(name), parts) << name;
    }
}

TEST(ReadsName, HasNoOtherForm) {
    for (const char* name : {"", ".fastq", "R1.fastq", "_R1.fastq", "_1.fastq", "P_R3.fastq",
                             "P_R1.fastq.bz2", "P_R1.txt", "P_S1_L001_I1_001.fastq.gz",
                             "P_S1_L001_R1_001", "P_R1_001_x.fastq", "P_3.fastq", "P_R11.fastq"}) {
        EXPECT_EQ(described(name), "") << name;
    }
}

TEST(ReadsName, KnowsItsMate) {
    EXPECT_EQ(document::readsNameOf("R1_R1_R1_001.fastq.gz")->mate, "R1_R1_R2_001.fastq.gz");
    EXPECT_EQ(document::readsNameOf("x_1_2.fq")->mate, "x_1_1.fq");
}

TEST(ReadsName, KnowsNumbersThatPeopleGive) {
    for (const char* number : {"1", "42", "1001", "999999999999999999"}) {
        EXPECT_TRUE(document::isPatientNumber(number)) << number;
    }
    for (const char* text : {"", "0", "007", "-1", "+1", "1.0", "1 ", "x", "1000000000000000000"}) {
        EXPECT_FALSE(document::isPatientNumber(text)) << text;
    }
}

} // namespace
