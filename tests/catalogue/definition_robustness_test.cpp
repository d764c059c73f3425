// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
//
// Whatever bytes a definition file holds, it is loaded and checked without harm.
#include <algorithm>
#include <random>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "catalogue/catalogue_check.h"
#include "catalogue/load_text.h"

namespace catalogue {
namespace {

const std::vector<std::string> kPieces = {"*",
                                          ">",
                                          "\n",
                                          "\r\n",
                                          "\r",
                                          " ",
                                          "\t",
                                          "//EntryEnds",
                                          "BIM",
                                          "R1",
                                          "R1R2",
                                          "ACGT",
                                          "NNRYK",
                                          "SomaticDNA",
                                          "0.5",
                                          "nan",
                                          "-inf",
                                          "1e999",
                                          "0x1p3",
                                          "30.5",
                                          "control",
                                          "OAZ1",
                                          "\xFF",
                                          "fusion_RNA",
                                          "wild ",
                                          "//Entry",
                                          ">m ACGT ACGT R1 0.1 0.1 0.1 5\nTACGTT\n",
                                          "*D SomaticDNA\n"};

const std::string kValid = "*BIM Germline StopSearchIfMatched\n"
                           ">wt ACGT GGCC R1 0.001 0.0001 0.05 1000\nTTACGTAAGGCCTT\n"
                           ">mut ACGT GGCC R1 0.001 0.0001 0.05 1000\nTTACGTCAGGCCTT\n"
                           "*hotspot SomaticDNA\n"
                           ">a ARGT GGCC R1R2 0.001 0.0001 0.05 1000\nTTACGTAAGGCCTT\n"
                           ">b ACGT GGCC R2 0.001 0.0001 0.05 1000\nTTACGTKAGGCCTT\n"
                           "//EntryEnds\n";

class Mutilator {
public:
    explicit Mutilator(unsigned seed) : m_random(seed) {}

    std::string next() {
        std::string text = below(3) == 0 ? std::string() : kValid;
        for (std::size_t changes = 1 + below(12); changes > 0; --changes) {
            change(text);
        }
        return text;
    }

private:
    std::size_t below(std::size_t bound) { return m_random() % bound; }

    void change(std::string& text) {
        const std::size_t place = below(text.size() + 1);
        switch (below(5)) {
        case 0:
            text.insert(place, kPieces[below(kPieces.size())]);
            break;
        case 1:
            text.insert(place, 1, static_cast<char>(below(256)));
            break;
        case 2:
            text.erase(place, below(20));
            break;
        case 3:
            text.insert(place, below(40) == 0 ? 1000 : below(10), 'A');
            break;
        default:
            text.insert(place, text.substr(0, below(80)));
            break;
        }
    }

    std::mt19937 m_random;
};

/// Counts the mutations that were looked at.
void expectSound(const Catalogue& catalogue, std::size_t& mutations) {
    ASSERT_TRUE(catalogue.domains.has_value());
    ASSERT_EQ(catalogue.domains->size(), catalogue.domainSources.size());
    for (const auto& domain : *catalogue.domains) {
        for (const auto& mutation : domain->mutationMutAr.value()) {
            ASSERT_TRUE(mutation->coreSeq.has_value());
            ASSERT_LE(mutation->coreSeq->size(), mutation->seq->size());
            ASSERT_LE(mutation->seq->size(), 999U);
            ++mutations;
        }
    }
}

TEST(DefinitionRobustness, AnyTextIsLoadedAndChecked) {
    constexpr unsigned kSeed = 20240229;
    Mutilator mutilator(kSeed);
    std::size_t mutations = 0;
    std::size_t findingCount = 0;
    for (int round = 0; round < 4000; ++round) {
        const std::string text = mutilator.next();
        SCOPED_TRACE("seed " + std::to_string(kSeed) + ", round " + std::to_string(round));
        const Catalogue catalogue = loadText(text);
        expectSound(catalogue, mutations);
        const std::vector<Finding> findings =
            checkCatalogue(catalogue, {[](const Mutation&) { return true; }});
        for (const Finding& finding : findings) {
            ASSERT_LE(finding.line, catalogue.lineCount + 1);
            ASSERT_FALSE(finding.message.empty());
            ++findingCount;
        }
        if (HasFatalFailure()) {
            return;
        }
    }
    EXPECT_GT(mutations, 4000U);
    EXPECT_GT(findingCount, 4000U);
}

TEST(DefinitionRobustness, EveryBeginningOfAFileIsLoaded) {
    for (std::size_t size = 0; size <= kValid.size(); ++size) {
        const Catalogue catalogue = loadText(kValid.substr(0, size));
        std::size_t mutations = 0;
        expectSound(catalogue, mutations);
        // A header counts from its first character on.
        EXPECT_EQ(mutations, std::count(kValid.begin(),
                                        kValid.begin() + static_cast<std::ptrdiff_t>(size), '>'));
        EXPECT_EQ(catalogue.endMarkerSeen, size + 1 >= kValid.size());
    }
}

TEST(DefinitionRobustness, SameTextGivesTheSameCatalogueWhateverTheBlocks) {
    for (const std::size_t blockSize : {1U, 2U, 3U, 1000U}) {
        support::MemoryStream stream(kValid, blockSize);
        const Catalogue catalogue = loadDefinition(stream, "panel.txt").value();
        ASSERT_EQ(catalogue.domains->size(), 2U);
        EXPECT_EQ(mutationOf(catalogue, 1, 1).coreSeq, "ACGTKAGGCC");
    }
}

} // namespace
} // namespace catalogue
