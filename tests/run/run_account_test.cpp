// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include "run/run_account.h"

#include <set>

#include <gmock/gmock.h>

#include "match_read_pairs.h"

namespace run {
namespace {

using Kind = Warning::Kind;
using testing::HasSubstr;

std::vector<Kind> kindsOf(const std::vector<Warning>& warnings) {
    std::vector<Kind> kinds;
    for (const Warning& warning : warnings) {
        kinds.push_back(warning.kind);
    }
    return kinds;
}

/// Runs of small files, with what their accounts say.
class RunAccountTest : public MatchReadPairs {
protected:
    std::vector<Kind> kindsAfter(const std::string& text1, const std::string& text2) {
        runTexts(text1, text2);
        return kindsOf(warningsOf(counters.inputs, "one", "two"));
    }
};

TEST_F(RunAccountTest, SoundFilesGiveNoWarning) {
    for (const int count : {1, 999, 1000, 1001, 20000}) {
        EXPECT_TRUE(kindsAfter(records(count, "ACGT"), records(count, "A")).empty()) << count;
        EXPECT_EQ(counters.inputs.read1.records, count);
        EXPECT_EQ(counters.inputs.read2.records, count);
        EXPECT_TRUE(counters.inputs.allWasRead());
        EXPECT_EQ(counters.inputs.read1.fileBytes, records(count, "ACGT").size());
    }
}

TEST_F(RunAccountTest, CarriageReturnsAndAMissingLastLineEndGiveNoWarning) {
    std::string text = records(1200, "ACGT");
    text.pop_back();
    EXPECT_TRUE(kindsAfter(text, records(1200, "A")).empty());
    EXPECT_TRUE(kindsAfter(records(1200, "ACGT") + "\n", records(1200, "A")).empty());
}

TEST_F(RunAccountTest, SurplusRecordsAreCountedForAnyNumberOfWorkers) {
    for (const std::size_t threads : {1u, 2u, 8u}) {
        runTexts(records(5820, "ACGT"), records(17000, "A"), threads);
        EXPECT_EQ(counters.inputs.read1.surplusRecords, 0);
        EXPECT_EQ(counters.inputs.read2.surplusRecords, 11180);
        runTexts(records(17000, "ACGT"), records(5820, "A"), threads);
        EXPECT_EQ(counters.inputs.read1.surplusRecords, 11180);
        EXPECT_EQ(counters.inputs.read2.surplusRecords, 0);
    }
}

TEST_F(RunAccountTest, AnEarlyEndIsNoSurplus) {
    const std::string text1 = records(1000, "ACGT") + "\n" + records(300, "ACGT");
    EXPECT_EQ(kindsAfter(text1, records(1300, "A")), std::vector<Kind>{Kind::earlyEnd});
    EXPECT_EQ(counters.inputs.read1.rest.bytes, records(300, "ACGT").size());
}

TEST_F(RunAccountTest, EmptyFilesAreNamedEach) {
    EXPECT_EQ(kindsAfter("", ""), (std::vector<Kind>{Kind::emptyFile, Kind::emptyFile}));
    EXPECT_EQ(kindsAfter("", records(3, "A")),
              (std::vector<Kind>{Kind::emptyFile, Kind::surplusRecords}));
}

TEST_F(RunAccountTest, AFailedRunSaysNothingOfHowFarItCame) {
    EXPECT_FALSE(runTexts(records(3, "ACGT"), "@0\nA\n"));
    EXPECT_FALSE(counters.inputs.complete);
    EXPECT_TRUE(warningsOf(counters.inputs, "one", "two").empty());
}

TEST_F(RunAccountTest, HeadersOfOneFileAloneAreNamedWithIt) {
    const std::string headers2 = "@a 2:N:0:1\nACGT\n+\nIIII\n";
    EXPECT_EQ(kindsAfter(headers2, headers2), std::vector<Kind>{Kind::headersOfOtherRead});
    EXPECT_THAT(warningsOf(counters.inputs, "one", "two")[0].text, HasSubstr("one: "));
}

TEST(RunAccount, EveryKindHasANameOfItsOwn) {
    std::set<std::string_view> names;
    for (int kind = 0; kind <= static_cast<int>(Kind::changedSettings); ++kind) {
        names.insert(nameOf(static_cast<Kind>(kind)));
    }
    EXPECT_EQ(names.size(), static_cast<std::size_t>(Kind::changedSettings) + 1);
    EXPECT_EQ(nameOf(Kind::earlyEnd), "early-end");
    EXPECT_EQ(nameOf(Kind::usualFiles), "usual-files");
    EXPECT_EQ(nameOf(Kind::changedSettings), "changed-settings");
}

TEST(RunAccount, OnlyWhatIsMissingFromTheCountsIsSevere) {
    for (const Kind kind : {Kind::earlyEnd, Kind::zeroBytes, Kind::surplusRecords, Kind::emptyFile,
                            Kind::headersOfOtherRead, Kind::nothingMapped, Kind::unusedReads}) {
        EXPECT_TRUE(isSevere(kind)) << nameOf(kind);
    }
    for (const Kind kind : {Kind::usualFiles, Kind::notAssessable, Kind::elsewhere,
                            Kind::doubtfulNames, Kind::doubtfulNumber}) {
        EXPECT_FALSE(isSevere(kind)) << nameOf(kind);
    }
}

} // namespace
} // namespace run
