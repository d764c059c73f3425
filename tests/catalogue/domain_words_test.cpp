// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include "catalogue/domain_words.h"

#include <optional>

#include <gtest/gtest.h>

namespace catalogue {
namespace {

DomainType typeOfWord(const archive::Text& word) {
    MutDomain domain;
    domain.type = word;
    return typeOf(domain);
}

std::optional<Strand> strandOfWord(const archive::Text& word) {
    Mutation mutation;
    mutation.strandRequiredToRead = word;
    return strandOf(mutation);
}

TEST(DomainWords, NameTheTypesExactly) {
    EXPECT_EQ(typeOfWord("Germline"), DomainType::germline);
    EXPECT_EQ(typeOfWord("SomaticDNA"), DomainType::somaticDNA);
    EXPECT_EQ(typeOfWord("germline_mRNA"), DomainType::germlineMRNA);
    EXPECT_EQ(typeOfWord("fusion_RNA"), DomainType::fusionRNA);
    EXPECT_EQ(typeOfWord("control"), DomainType::control);
    EXPECT_EQ(typeOfWord("germline_RNA"), DomainType::countedGermlineRNA);
    EXPECT_EQ(typeOfWord("fusion_mRNA"), DomainType::countedFusionMRNA);
    for (const char* word : {"germline", "SomaticDNA ", "Fusion_RNA", "mRNA", ""}) {
        EXPECT_EQ(typeOfWord(word), DomainType::unknown) << word;
    }
    EXPECT_EQ(typeOfWord(std::nullopt), DomainType::unknown);
}

TEST(DomainWords, NameTheStrandsExactly) {
    EXPECT_EQ(strandOfWord("R1"), Strand::read1);
    EXPECT_EQ(strandOfWord("R2"), Strand::read2);
    EXPECT_EQ(strandOfWord("R1R2"), Strand::both);
    for (const char* word : {"r1", "R1 ", "R2R1", "R", ""}) {
        EXPECT_EQ(strandOfWord(word), std::nullopt) << word;
    }
    EXPECT_EQ(strandOfWord(std::nullopt), std::nullopt);
}

} // namespace
} // namespace catalogue
