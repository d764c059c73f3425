// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include "document/analysis_account.h"

#include <gtest/gtest.h>

namespace document {
namespace {

using Kind = run::Warning::Kind;

TEST(AnalysisAccount, NamesEachUnusedFileWithItsReason) {
    const auto warnings = warningsOf({{"a", "lane L002: only lane L001 is read", false}}, {});
    ASSERT_EQ(warnings.size(), 1u);
    EXPECT_EQ(warnings[0].kind, Kind::unusedReads);
    EXPECT_EQ(warnings[0].text, "a: these reads are not used: lane L002: only lane L001 is read");
}

TEST(AnalysisAccount, TenThousandUnusedFilesTakeAFewLines) {
    const std::vector<UnusedReads> unused(10'000, {"a", "reason", false});
    const auto warnings = warningsOf(unused, {});
    ASSERT_EQ(warnings.size(), 21u);
    EXPECT_EQ(warnings.back().text, "9980 more files of reads are not used");
}

TEST(AnalysisAccount, UsualFilesAreOneLineAndNotSevere) {
    const auto warnings = warningsOf({{"a_I1", "", true}, {"b_S0", "", true}}, {});
    ASSERT_EQ(warnings.size(), 1u);
    EXPECT_EQ(warnings[0].text, "2 files of index reads or of sample 0 are not used, as usual");
    EXPECT_FALSE(run::isSevere(warnings[0].kind));
}

TEST(AnalysisAccount, ReadsOfTwoPeopleComeFirst) {
    const auto warnings =
        warningsOf({{"a", "b", false}}, {{3, "one", "other", DoubtfulPair::Kind::sameRead}});
    ASSERT_EQ(warnings.size(), 2u);
    EXPECT_EQ(warnings[0].kind, Kind::doubtfulNames);
    EXPECT_EQ(warnings[0].text, "one and other are both the same read of sample 3. Reads of two "
                                "people may be mixed up");
}

} // namespace
} // namespace document
