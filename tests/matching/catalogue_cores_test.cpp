// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include "matching/catalogue_cores.h"

#include <gtest/gtest.h>

#include "support/catalogue_builder.h"

namespace matching {
namespace {

using support::catalogueOf;
using support::domainOf;

TEST(CatalogueCores, HoldsEachCoreOnceWithAllWhoAskForIt) {
    const auto [cores, entries] = catalogueCores(
        catalogueOf({domainOf({{"R1", "AC"}, {"R2", "GT"}}), domainOf({{"R1R2", "AC"}}, true)}));
    ASSERT_EQ(cores.size(), 2u);
    EXPECT_EQ(cores[0].text, "AC");
    EXPECT_EQ(cores[1].text, "GT");
    ASSERT_EQ(entries.size(), 3u);
    EXPECT_EQ(cores[0].firstEntry, 0u);
    EXPECT_EQ(entries[0].mutation, 0u);
    EXPECT_FALSE(entries[0].stops);
    EXPECT_FALSE(entries[0].isLastOfCore);
    EXPECT_EQ(entries[1].mutation, 2u);
    EXPECT_EQ(entries[1].domain, 1u);
    EXPECT_TRUE(entries[1].stops);
    EXPECT_TRUE(entries[1].isLastOfCore);
    EXPECT_EQ(cores[1].firstEntry, 2u);
    EXPECT_EQ(entries[2].mutation, 1u);
}

TEST(CatalogueCores, KeepsTheTwoKindsOfSearchForOneTextApart) {
    const auto [cores, entries] =
        catalogueCores(catalogueOf({domainOf({{"R1", "AC", true}, {"R1", "AC", false}})}));
    EXPECT_EQ(cores.size(), 2u);
    EXPECT_EQ(entries.size(), 2u);
}

TEST(CatalogueCores, LeavesOutWhatCannotWin) {
    const auto [cores, entries] = catalogueCores(catalogueOf(
        {domainOf({{"r1", "AC"}, {"R1", "AC"}, {"R1", "GT"}, {"R1", "AC"}, {"R2", "AC"}}),
         domainOf({{"", "TT"}})}));
    EXPECT_EQ(cores.size(), 2u);
    ASSERT_EQ(entries.size(), 3u);
    EXPECT_EQ(entries[0].mutation, 1u);
    EXPECT_EQ(entries[1].mutation, 4u);
    EXPECT_EQ(entries[2].mutation, 2u);
}

TEST(CatalogueCores, SaysInWhichReadsACoreIsSearched) {
    const auto [cores, entries] = catalogueCores(
        catalogueOf({domainOf({{"R1", "A"}, {"R2", "C"}, {"R1R2", "G"}, {"R1", "T"}}),
                     domainOf({{"R2", "T"}})}));
    const auto reads = [](const CatalogueCore& core) {
        return std::pair(core.isSearchedInRead1, core.isSearchedInRead2);
    };
    EXPECT_EQ(reads(cores[0]), std::pair(true, false));
    EXPECT_EQ(reads(cores[1]), std::pair(false, true));
    EXPECT_EQ(reads(cores[2]), std::pair(true, true));
    EXPECT_EQ(reads(cores[3]), std::pair(true, true));
}

TEST(CatalogueCores, TakesAMissingCoreForAnEmptyOneAndNoCatalogueForNoCores) {
    const auto domains = catalogueOf({domainOf({{"R1", "A"}})});
    domains.value()[0]->mutationMutAr.value()[0]->coreSeq.reset();
    EXPECT_EQ(catalogueCores(domains).cores[0].text, "");
    EXPECT_TRUE(catalogueCores(std::nullopt).cores.empty());
}

} // namespace
} // namespace matching
