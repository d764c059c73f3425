// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
// What the catalogue check says of two entries against what the search for reads does.
#include <algorithm>
#include <string_view>

#include <gtest/gtest.h>

#include "catalogue/catalogue_check.h"
#include "catalogue/iupac.h"
#include "matching/core_search.h"
#include "support/catalogue_builder.h"

namespace matching {
namespace {

constexpr std::string_view kReadBases = "ACGTN";
constexpr std::string_view kCoreBases = "ACGTNBDHKMRSVWY";

std::shared_ptr<catalogue::MutDomain> domainOfOneBase(char coreBase) {
    return support::domainOf({{"R1", std::string(1, coreBase), true}});
}

const catalogue::Mutation& firstOf(const std::shared_ptr<catalogue::MutDomain>& domain) {
    return *domain->mutationMutAr.value()[0];
}

TEST(CoreCodes, AgreeWithTheSearchForEveryPlainBaseAndCoreByte) {
    for (int byte = 0; byte < 256; ++byte) {
        const char core = static_cast<char>(byte);
        const std::string_view bases = catalogue::readBasesForCoreCode(core);
        for (const char read : kReadBases) {
            const bool listed = read == core || bases.find(read) != std::string_view::npos;
            EXPECT_EQ(baseAgrees(read, core), listed) << read << " against byte " << byte;
        }
    }
}

TEST(Shadowing, IsWhatTheSearchFindsInEveryReadOfPlainBases) {
    for (const char earlier : kCoreBases) {
        for (const char later : kCoreBases) {
            const bool always = std::all_of(kReadBases.begin(), kReadBases.end(), [&](char read) {
                return !baseAgrees(read, later) || baseAgrees(read, earlier);
            });
            const auto first = domainOfOneBase(earlier);
            const auto second = domainOfOneBase(later);
            EXPECT_EQ(catalogue::shadows(firstOf(first), firstOf(second)), always)
                << earlier << " before " << later;
        }
    }
}

} // namespace
} // namespace matching
