// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include "document/name_plan.h"

#include <algorithm>
#include <string>
#include <vector>

#include <gmock/gmock.h>

#include "support/temp_dir.h"

namespace {

using document::NameRules;
using document::planByNames;
using document::Planned;
using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using Names = std::vector<std::string>;

constexpr NameRules kEveryLane = {false, true, false, false};
constexpr NameRules kAnyName = {true, false, false, false};
constexpr NameRules kAllOfBoth = {true, true, false, false};

/// Both reads of each; "?" stands for the number of the read.
Names pairsOf(const Names& patterns) {
    Names names;
    for (const std::string& pattern : patterns) {
        for (const char read : {'1', '2'}) {
            std::string name = pattern;
            std::replace(name.begin(), name.end(), '?', read);
            names.push_back(name);
        }
    }
    return names;
}

/// "number sample: read-1 names" of each patient.
Names patientsOf(const Planned& planned) {
    Names lines;
    for (const auto& patient : planned.plan.patients) {
        std::string line = patient.number + " " + patient.sample + ":";
        for (const auto& lane : patient.lanes) {
            line += " " + lane.read1Path.substr(lane.read1Path.rfind('/') + 1);
        }
        lines.push_back(line);
    }
    return lines;
}

Names unusedOf(const Planned& planned) {
    Names lines;
    for (const auto& file : planned.plan.unusedReads) {
        lines.push_back(file.name + ": " + file.reason);
    }
    return lines;
}

TEST(NamePlan, PutsTheLanesOfASampleInRisingOrder) {
    const Planned planned = planByNames(
        "/d",
        pairsOf({"P_S2_L010_R?_001.fastq", "P_S2_L001_R?_001.fastq.gz", "P_S2_L002_R?_001.fastq",
                 "Q_S1_L003_R?_001.fastq", "Undetermined_S0_L001_R?_001.fastq"}),
        kEveryLane);
    EXPECT_THAT(planned.faults, IsEmpty());
    EXPECT_EQ(patientsOf(planned), (Names{"1 Q: Q_S1_L003_R1_001.fastq",
                                          "2 P: P_S2_L001_R1_001.fastq.gz P_S2_L002_R1_001.fastq "
                                          "P_S2_L010_R1_001.fastq"}));
    EXPECT_EQ(planned.plan.patients[1].lanes[0].read2Path, "/d/P_S2_L001_R2_001.fastq.gz");
    ASSERT_EQ(planned.plan.unusedReads.size(), 2U);
    EXPECT_TRUE(planned.plan.unusedReads[0].isUsual);
}

TEST(NamePlan, OfLanesTakesNoOtherNamesThanTheUsualOnes) {
    const Planned planned = planByNames(
        "/d",
        {"P_S1_L001_R1_001.fastq", "P_S1_L001_R2_001.fastq", "a_S1500_L001_R1_001.fastq",
         "b_S3_R1_001.fastq", "c_S4_L002_R1_002.fastq", "d_R1.fastq", "e_S5_L002_R1_001.fq.gz",
         "f_S6_L002_R1_001.fastq.bz2", "_g_S7_L001_R1_001.fastq"},
        kEveryLane);
    EXPECT_EQ(patientsOf(planned), Names{"1 P: P_S1_L001_R1_001.fastq"});
    EXPECT_THAT(unusedOf(planned),
                ElementsAre("_g_S7_L001_R1_001.fastq: names that begin with \"_\" are passed over",
                            HasSubstr("1500: only 1 to 1000"), HasSubstr("no lane"),
                            HasSubstr("the part is not 001"),
                            AllOf(HasSubstr("d_R1"), HasSubstr("is none of")),
                            HasSubstr("names end in"), HasSubstr("is none of")));
}

TEST(NamePlan, NamesBothFilesOfALaneThatIsNotWhole) {
    Names names = pairsOf({"P_S1_L001_R?_001.fastq.gz", "P_S1_L003_R?_001.fastq.gz"});
    names.push_back("P_S1_L002_R2_001.fastq.gz");
    for (const bool skipUnpaired : {false, true}) {
        EXPECT_THAT(planByNames("/d", names, {false, true, skipUnpaired, false}).faults,
                    ElementsAre("sample P, lane 002: P_S1_L002_R2_001.fastq.gz: found neither "
                                "P_S1_L002_R1_001.fastq nor P_S1_L002_R1_001.fastq.gz"));
    }
}

TEST(NamePlan, TakesAnyNameThatTellsSampleAndRead) {
    const Planned planned =
        planByNames("/d",
                    pairsOf({"P_S1500_R?_001.fastq.gz", "Q_S7_L001_R?_003.fq", "Zoe_R?.fq.gz",
                             "SRR9_?.fastq.gz", "P2_S12_L002_R?_001.fastq"}),
                    kAnyName);
    EXPECT_THAT(planned.faults, IsEmpty());
    EXPECT_EQ(patientsOf(planned),
              (Names{"7 Q: Q_S7_L001_R1_003.fq", "1500 P: P_S1500_R1_001.fastq.gz",
                     "3 SRR9: SRR9_1.fastq.gz", "4 Zoe: Zoe_R1.fq.gz"}));
    ASSERT_EQ(planned.plan.warnings.size(), 1U);
    EXPECT_THAT(planned.plan.warnings[0].text, HasSubstr("SRR9 is 3, Zoe is 4"));
    EXPECT_THAT(unusedOf(planned), ElementsAre(HasSubstr("L002_R1"), HasSubstr("--lanes all")));
}

TEST(NamePlan, GivesNoNumberThatAnotherPatientHas) {
    const Planned planned = planByNames(
        "/d", pairsOf({"P_S2_R?.fastq", "Q_S3_R?.fastq", "A_R?.fastq", "B_R?.fastq"}), kAnyName);
    EXPECT_EQ(patientsOf(planned), (Names{"2 P: P_S2_R1.fastq", "3 Q: Q_S3_R1.fastq",
                                          "4 A: A_R1.fastq", "5 B: B_R1.fastq"}));
    const Planned shifted =
        planByNames("/d", pairsOf({"P_S2_R?.fastq", "A_R?.fastq", "B_R?.fastq"}), kAnyName);
    EXPECT_EQ(patientsOf(shifted),
              (Names{"2 P: P_S2_R1.fastq", "3 A: A_R1.fastq", "4 B: B_R1.fastq"}));
}

TEST(NamePlan, KeepsTheRuleOfPatientNumbers) {
    const Planned planned =
        planByNames("/d", pairsOf({"pat_Suzuki_S12_L001_R?_001.fastq"}), kEveryLane);
    EXPECT_EQ(patientsOf(planned), Names{"uzuki pat_Suzuki: pat_Suzuki_S12_L001_R1_001.fastq"});
}

TEST(NamePlan, RefusesTwoSamplesWithOneNumber) {
    const Names names = pairsOf({"Anna_S1_L001_R?_001.fastq", "Bert_S1_L001_R?_001.fastq"});
    EXPECT_THAT(planByNames("/d", names, kEveryLane).faults,
                ElementsAre("Anna_S1_L001_R1_001.fastq and Bert_S1_L001_R1_001.fastq are of two "
                            "samples with the number 1"));
    const Planned allowed = planByNames("/d", names, {false, true, false, true});
    EXPECT_EQ(allowed.plan.patients.size(), 2U);
    EXPECT_EQ(allowed.plan.warnings.size(), 1U);
    EXPECT_THAT(planByNames("/d", pairsOf({"A_S07_R?.fastq", "B_S7_R?.fastq"}), kAnyName).faults,
                Not(IsEmpty()));
}

TEST(NamePlan, RefusesTwoFilesForOneRead) {
    const auto faultsOf = [](const Names& patterns, const NameRules& rules) {
        return planByNames("/d", pairsOf(patterns), rules).faults;
    };
    EXPECT_THAT(faultsOf({"P_S1_L001_R?_001.fastq", "P_S1_L001_R?_002.fastq"}, kAnyName),
                ElementsAre("P_S1_L001_R1_001.fastq and P_S1_L001_R1_002.fastq are both read 1 of "
                            "sample P, lane 001",
                            HasSubstr("both read 2")));
    EXPECT_THAT(faultsOf({"P_S1_L1_R?_001.fastq", "P_S1_L001_R?_001.fastq"}, kEveryLane),
                Not(IsEmpty()));
    EXPECT_THAT(faultsOf({"P_R?.fastq", "P_?.fastq"}, kAnyName), Not(IsEmpty()));
    for (const NameRules& rules : {kAnyName, kAllOfBoth}) {
        EXPECT_THAT(faultsOf({"P_S1_R?_001.fastq", "P_S1_L001_R?_001.fastq"}, rules),
                    ElementsAre(HasSubstr("tells no lane")));
    }
}

TEST(NamePlan, RefusesAPairOfTwoForms) {
    const Names names = {"P_R1.fastq", "P_2.fastq"};
    EXPECT_THAT(planByNames("/d", names, kAnyName).faults,
                ElementsAre(HasSubstr("differ in more")));
    EXPECT_EQ(planByNames("/d", names, {true, false, false, true}).plan.patients.size(), 1U);
}

TEST(NamePlan, ReadsThePlainFileOfTwoTwins) {
    Names names = pairsOf({"P_S1_L001_R?_001.fastq.gz"});
    names.insert(names.begin() + 1, "P_S1_L001_R1_001.fastq");
    const Planned planned = planByNames("/d", names, kEveryLane);
    EXPECT_EQ(patientsOf(planned), Names{"1 P: P_S1_L001_R1_001.fastq"});
    EXPECT_EQ(unusedOf(planned),
              Names{"P_S1_L001_R1_001.fastq.gz: another file of this sample is read"});
}

TEST(NamePlan, NamesAnUnpairedFileOrPassesOverIt) {
    Names names = pairsOf({"P_R?.fq.gz"});
    names.emplace_back("Q_S9_R2.fq.gz");
    EXPECT_THAT(planByNames("/d", names, kAnyName).faults,
                ElementsAre("Patient 9 has unpaired fastq file.",
                            "Q_S9_R2.fq.gz: found neither Q_S9_R1.fq nor Q_S9_R1.fq.gz"));
    const Planned skipped = planByNames("/d", names, {true, false, true, false});
    EXPECT_THAT(skipped.faults, IsEmpty());
    EXPECT_EQ(patientsOf(skipped), Names{"1 P: P_R1.fq.gz"});
    ASSERT_EQ(skipped.plan.passedOver.size(), 1U);
    EXPECT_EQ(skipped.plan.passedOver[0].file2, "Q_S9_R2.fq.gz");
    ASSERT_EQ(skipped.plan.unusedReads.size(), 1U);
    EXPECT_TRUE(skipped.plan.unusedReads[0].isTold);
    EXPECT_EQ(skipped.plan.warnings[0].text, "Patient 9 has unpaired fastq file");
}

TEST(NamePlan, OfTenThousandNamesIsMadeInOneLookAtEach) {
    Names patterns;
    for (int i = 0; i < 5000; ++i) {
        patterns.push_back("P" + std::to_string(i) + "_R?.fastq.gz");
    }
    const Planned planned = planByNames("/d", pairsOf(patterns), kAnyName);
    EXPECT_EQ(planned.plan.patients.size(), 5000U);
    EXPECT_LT(planned.plan.warnings[0].text.size(), 1000U);
}

TEST(NamePlan, OfEveryLaneTakesOneSampleAlone) {
    support::TempDir dir;
    Names names =
        pairsOf({"P_S1_L001_R?_001.fastq", "P_S1_L002_R?_001.fastq.gz", "P_S1_L003_R?_002.fastq",
                 "P_S2_L004_R?_001.fastq", "_P_S1_L005_R?_001.fastq", "PP_S1_L006_R?_001.fastq"});
    for (const std::string& name : names) {
        dir.write(name, "");
    }
    const Planned planned = document::planOfEveryLane(
        {"P_S1_L002_R1_001.fastq.gz", "P_S1_L002_R2_001.fastq.gz", dir.path(), true}, names);
    EXPECT_THAT(planned.faults, IsEmpty());
    EXPECT_EQ(patientsOf(planned), Names{"1 P: P_S1_L001_R1_001.fastq P_S1_L002_R1_001.fastq.gz"});
    EXPECT_THAT(unusedOf(planned),
                ElementsAre("P_S1_L003_R1_002.fastq: another lane of this sample",
                            "P_S1_L003_R2_002.fastq: another lane of this sample"));
    EXPECT_THAT(
        document::planOfEveryLane({"x_R1_.fastq", "x_R2_.fastq", dir.path(), true}, names).faults,
        ElementsAre(HasSubstr("tells no lane")));
    names.erase(names.begin());
    EXPECT_THAT(
        document::planOfEveryLane(
            {"P_S1_L002_R1_001.fastq.gz", "P_S1_L002_R2_001.fastq.gz", dir.path(), true}, names)
            .faults,
        ElementsAre(
            AllOf(HasSubstr("P_S1_L001_R2_001.fastq"), HasSubstr("P_S1_L001_R1_001.fastq"))));
}

} // namespace
