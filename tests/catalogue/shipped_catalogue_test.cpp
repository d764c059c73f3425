// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
//
// What docs/catalogue.md promises of the definition file that ships.
#include <algorithm>
#include <set>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "calling/result_calc.h"
#include "calling/statistics.h"
#include "catalogue/catalogue_check.h"
#include "catalogue/core_sequence.h"
#include "catalogue/definition_file.h"
#include "catalogue/iupac.h"
#include "catalogue/load_text.h"
#include "support/temp_dir.h"

namespace {

using catalogue::Catalogue;
using catalogue::Mutation;
using testing::ElementsAre;

const std::string kShippedFile =
    std::string(VEXTA_SOURCE_DIR) + "/resources/ReferenceNucleotideSequence.txt";
constexpr std::int64_t kReadThreshold = 500;

const Catalogue& shipped() {
    static const Catalogue catalogue = catalogue::loadDefinitionFile(kShippedFile).value();
    // Else what is asked of every entry would hold of none.
    EXPECT_FALSE(catalogue.mutationSources.empty());
    return catalogue;
}

std::string nameOf(const Mutation& mutation) {
    return archive::stringOrEmpty(mutation.name);
}

std::string typeWordOf(const catalogue::MutDomain& domain) {
    return archive::stringOrEmpty(domain.type);
}

std::vector<std::string> domainsOfType(const std::string& type) {
    std::vector<std::string> names;
    for (const auto& domain : *shipped().domains) {
        if (typeWordOf(*domain) == type) {
            names.push_back(archive::stringOrEmpty(domain->name));
        }
    }
    return names;
}

std::string firstEntryOf(const std::string& type) {
    for (const auto& domain : *shipped().domains) {
        if (typeWordOf(*domain) == type) {
            return nameOf(*(*domain->mutationMutAr)[0]);
        }
    }
    return "";
}

/// Entries of other names whose sequence holds the core of `mutation`, on either strand.
std::vector<std::string> othersHolding(const Mutation& mutation) {
    std::vector<std::string> names;
    const std::string core = archive::stringOrEmpty(mutation.coreSeq);
    for (const auto& source : shipped().mutationSources) {
        const std::string seq = archive::stringOrEmpty(source.mutation->seq);
        const bool held = catalogue::findFlank(seq, core).has_value() ||
                          catalogue::findFlank(seq, catalogue::otherStrand(core)).has_value();
        if (held && source.mutation.get() != &mutation) {
            names.push_back(nameOf(*source.mutation));
        }
    }
    return names;
}

TEST(ShippedCatalogue, LoadsToItsEndMarkerWithoutAFault) {
    const auto loaded = catalogue::loadDefinitionFile(kShippedFile);
    ASSERT_TRUE(loaded.ok()) << loaded.error().message;
    EXPECT_TRUE(shipped().endMarkerSeen);
    EXPECT_EQ(shipped().overlongLine, 0U);
    EXPECT_TRUE(shipped().faults.empty());
}

TEST(ShippedCatalogue, EveryHeaderHasItsEightFieldsAndItsSequence) {
    for (const auto& source : shipped().mutationSources) {
        EXPECT_EQ(source.fieldsScanned, 8) << "line " << source.headerLine;
        EXPECT_FALSE(source.sequenceMissing) << "line " << source.headerLine;
        EXPECT_FALSE(source.sequenceCut) << "line " << source.headerLine;
        EXPECT_NE(source.domain, nullptr) << "line " << source.headerLine;
    }
}

std::vector<catalogue::Finding> findingsIn(const Catalogue& loaded, std::size_t readLength) {
    catalogue::CheckOptions options;
    options.positiveWithoutMutantReads = [](const Mutation& mutation) {
        return calling::ResultCalc::callsPositiveWithoutMutantReads(mutation, kReadThreshold);
    };
    options.readsForNegative = calling::ResultCalc::readsForNegative;
    options.readThreshold = kReadThreshold;
    options.frequencyOfTrulyMutantReads = calling::kFrequencyOfTrulyMutantReads;
    options.readLength = readLength;
    return catalogue::checkCatalogue(loaded, options);
}

TEST(ShippedCatalogue, RaisesNoFindingButTheTypesWithoutAColumn) {
    for (const std::size_t readLength : {75U, 150U, 300U}) {
        const auto findings = findingsIn(shipped(), readLength);
        EXPECT_EQ(findings.size(), 2U);
        for (const auto& finding : findings) {
            EXPECT_EQ(finding.rule, catalogue::Rule::typeCalledNotCounted)
                << "line " << finding.line << ": " << finding.message;
        }
    }
}

std::vector<std::string> linesOf(const std::string& text) {
    std::vector<std::string> lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);) {
        lines.push_back(line);
    }
    return lines;
}

std::string textOf(const std::vector<std::string>& lines) {
    std::string text;
    for (const std::string& line : lines) {
        text += line + "\n";
    }
    return text;
}

/// Whether the check of these lines finds the rule at the line, counted from 0. It does without the
/// statistics, which take longer.
bool findsAt(const std::vector<std::string>& lines, std::size_t line, catalogue::Rule rule) {
    const auto findings = catalogue::checkCatalogue(catalogue::loadText(textOf(lines)), {});
    return std::any_of(findings.begin(), findings.end(), [&](const catalogue::Finding& finding) {
        return finding.line == line + 1 && finding.rule == rule;
    });
}

/// An entry's two lines as somebody types them in who reads the gene on the other strand.
void reverseEntry(std::string& header, std::string& sequence) {
    std::istringstream fields(header);
    std::string name;
    std::string left;
    std::string right;
    std::string rest;
    fields >> name >> left >> right;
    std::getline(fields, rest);
    header = name + " " + catalogue::otherStrand(right) + " " + catalogue::otherStrand(left) + rest;
    sequence = catalogue::otherStrand(sequence);
}

/// The lines, counted from 0, of the mutants of all somatic domains.
std::vector<std::size_t> linesOfSomaticMutants() {
    std::vector<std::size_t> lines;
    for (const auto& source : shipped().mutationSources) {
        const bool isFirst = (*source.domain->mutationMutAr)[0] == source.mutation;
        if (typeWordOf(*source.domain) == "SomaticDNA" && !isFirst) {
            lines.push_back(source.headerLine - 1);
        }
    }
    return lines;
}

TEST(ShippedCatalogue, WouldNotPassWithAnyMutantReversed) {
    for (const std::size_t line : linesOfSomaticMutants()) {
        auto lines = linesOf(support::readFile(kShippedFile));
        reverseEntry(lines[line], lines[line + 1]);
        EXPECT_TRUE(findsAt(lines, line, catalogue::Rule::coreOnOtherStrand)) << lines[line];
    }
}

/// An entry's two lines with its core alone on the other strand, and the bases around it as they
/// were.
void reverseCore(std::string& header, std::string& sequence, const std::string& core) {
    const std::size_t begin = sequence.find(core);
    const std::string around = sequence;
    reverseEntry(header, sequence);
    sequence =
        around.substr(0, begin) + catalogue::otherStrand(core) + around.substr(begin + core.size());
}

/// Whether the check of these lines finds an entry on another strand than others: the one with its
/// header at the line, counted from 0, or another one that is held against it.
bool findsOtherStrandOf(const std::vector<std::string>& lines, std::size_t line) {
    const std::string thisLine = "(line " + std::to_string(line + 1) + ")";
    const auto findings = catalogue::checkCatalogue(catalogue::loadText(textOf(lines)), {});
    return std::any_of(findings.begin(), findings.end(), [&](const catalogue::Finding& finding) {
        return (finding.rule == catalogue::Rule::coreOnOtherStrand ||
                finding.rule == catalogue::Rule::sequenceOnOtherStrand) &&
               (finding.line == line + 1 || finding.message.find(thisLine) != std::string::npos);
    });
}

/// Those of the entries that are not the first of their domain.
std::vector<const catalogue::MutationSource*> laterEntries() {
    std::vector<const catalogue::MutationSource*> sources;
    for (const auto& source : shipped().mutationSources) {
        if ((*source.domain->mutationMutAr)[0] != source.mutation) {
            sources.push_back(&source);
        }
    }
    return sources;
}

TEST(ShippedCatalogue, WouldNotPassWithTheCoreOfAnyLaterEntryReversed) {
    EXPECT_EQ(laterEntries().size(), 59U);
    for (const auto* source : laterEntries()) {
        const std::size_t line = source->headerLine - 1;
        auto lines = linesOf(support::readFile(kShippedFile));
        reverseCore(lines[line], lines[line + 1],
                    archive::stringOrEmpty(source->mutation->coreSeq));
        EXPECT_TRUE(findsOtherStrandOf(lines, line)) << lines[line];
    }
}

// docs/formats/definition-file.md gives these numbers.
TEST(ShippedCatalogue, ShowsFiveOfItsNineteenDomainsReversedAsAWhole) {
    std::size_t found = 0;
    for (const auto& domain : shipped().domainSources) {
        auto lines = linesOf(support::readFile(kShippedFile));
        for (const auto& source : shipped().mutationSources) {
            if (source.domain == domain.domain) {
                reverseEntry(lines[source.headerLine - 1], lines[source.headerLine]);
            }
        }
        const auto findings = catalogue::checkCatalogue(catalogue::loadText(textOf(lines)), {});
        const bool isFound = std::any_of(findings.begin(), findings.end(), [](const auto& finding) {
            return finding.rule == catalogue::Rule::sequenceOnOtherStrand;
        });
        found += isFound ? 1U : 0U;
    }
    EXPECT_EQ(shipped().domainSources.size(), 19U);
    EXPECT_EQ(found, 5U);
}

TEST(ShippedCatalogue, WouldNotPassWithAnotherStrandWordAtAnyLaterEntry) {
    EXPECT_EQ(laterEntries().size(), 59U);
    for (const auto* source : laterEntries()) {
        const std::size_t line = source->headerLine - 1;
        const std::string word = archive::stringOrEmpty(source->mutation->strandRequiredToRead);
        auto lines = linesOf(support::readFile(kShippedFile));
        lines[line].replace(lines[line].find(" " + word + " ") + 1, word.size(),
                            word == "R1" ? "R2" : "R1");
        EXPECT_TRUE(findsAt(lines, line, catalogue::Rule::strandWordDiffers)) << lines[line];
    }
}

TEST(ShippedCatalogue, WouldNotPassWithAnyMutantBeforeItsWildType) {
    std::size_t tried = 0;
    for (const std::size_t line : linesOfSomaticMutants()) {
        auto lines = linesOf(support::readFile(kShippedFile));
        if (lines[line - 2].find("_wt ") != std::string::npos) {
            std::swap(lines[line], lines[line - 2]);
            std::swap(lines[line + 1], lines[line - 1]);
            EXPECT_TRUE(findsAt(lines, line, catalogue::Rule::wildTypeNotFirst)) << lines[line];
            ++tried;
        }
    }
    EXPECT_EQ(tried, 15U);
}

TEST(ShippedCatalogue, WouldNotPassWithAMutantInAnotherDomain) {
    auto lines = linesOf(support::readFile(kShippedFile));
    const auto header = [&lines](const std::string& start) {
        return std::find_if(lines.begin(), lines.end(), [&start](const std::string& line) {
            return line.rfind(start, 0) == 0;
        });
    };
    const auto from = header(">NRAS_Q61K ");
    const std::vector<std::string> entry(from, from + 2);
    lines.erase(from, from + 2);
    const auto to = lines.insert(header(">AKT1_E17K "), entry.begin(), entry.end());
    EXPECT_TRUE(findsAt(lines, static_cast<std::size_t>(to - lines.begin()),
                        catalogue::Rule::nearerToAnotherWildType));
}

TEST(ShippedCatalogue, HoldsOneDomainOfEachKindAndAllSomaticHotspots) {
    EXPECT_THAT(domainsOfType("Germline"), ElementsAre("BIM"));
    EXPECT_THAT(domainsOfType("germline_mRNA"), ElementsAre("OAZ1"));
    EXPECT_THAT(domainsOfType("fusion_RNA"), ElementsAre("Fusions"));
    EXPECT_THAT(domainsOfType("control"), ElementsAre("Native_junctions"));
    EXPECT_THAT(domainsOfType("SomaticDNA"),
                ElementsAre("EGFR_exon18", "EGFR_exon19", "EGFR_exon20_768_771", "EGFR_exon20_790",
                            "EGFR_exon20_797", "EGFR_exon21", "KRAS_12_13", "KRAS_61", "NRAS_61",
                            "BRAF_600", "PIK3CA_exon10", "PIK3CA_exon21", "ERBB2_exon20", "AKT1_17",
                            "MAP2K1_57"));
}

TEST(ShippedCatalogue, BeginsEachDomainWithItsNormalOrControlEntry) {
    EXPECT_EQ(firstEntryOf("Germline"), "BIM_wildtype");
    EXPECT_EQ(firstEntryOf("germline_mRNA"), "OAZ1");
    EXPECT_EQ(firstEntryOf("fusion_RNA"), "IC_control");
    for (const auto& domain : *shipped().domains) {
        if (typeWordOf(*domain) == "SomaticDNA") {
            EXPECT_EQ(nameOf(*(*domain->mutationMutAr)[0]),
                      archive::stringOrEmpty(domain->name) + "_wt");
            EXPECT_GE(domain->mutationMutAr->size(), 2U);
        }
    }
}

TEST(ShippedCatalogue, NamesEveryEntryOnce) {
    std::set<std::string> names;
    for (const auto& source : shipped().mutationSources) {
        EXPECT_TRUE(names.insert(nameOf(*source.mutation)).second) << nameOf(*source.mutation);
    }
}

TEST(ShippedCatalogue, HasCoresLongEnoughToBeUniqueAndShortEnoughForBothMates) {
    for (const auto& source : shipped().mutationSources) {
        const std::size_t length = archive::orEmpty(source.mutation->coreSeq).size();
        EXPECT_GE(length, 31U) << nameOf(*source.mutation);
        EXPECT_LE(length, 50U) << nameOf(*source.mutation);
    }
}

TEST(ShippedCatalogue, HasNoCoreInAnotherEntryOnEitherStrand) {
    for (const auto& source : shipped().mutationSources) {
        EXPECT_THAT(othersHolding(*source.mutation), testing::IsEmpty())
            << "core of " << nameOf(*source.mutation);
    }
}

TEST(ShippedCatalogue, GivesWildTypeAndMutantsOfASomaticDomainTheSameFlanks) {
    for (const auto& domain : *shipped().domains) {
        if (typeWordOf(*domain) != "SomaticDNA") {
            continue;
        }
        const Mutation& wildType = *(*domain->mutationMutAr)[0];
        for (const auto& mutation : *domain->mutationMutAr) {
            EXPECT_EQ(mutation->before10bp, wildType.before10bp) << nameOf(*mutation);
            EXPECT_EQ(mutation->after10bp, wildType.after10bp) << nameOf(*mutation);
            EXPECT_EQ(mutation->strandRequiredToRead, "R1R2") << nameOf(*mutation);
        }
    }
}

TEST(ShippedCatalogue, HoldsAnAmbiguityCodeOnlyWhereTheGermlineVariantLies) {
    std::vector<std::string> names;
    for (const auto& source : shipped().mutationSources) {
        if (source.mutation->coreSeqContainsWildCard) {
            names.push_back(nameOf(*source.mutation));
        }
    }
    EXPECT_THAT(names, ElementsAre("EGFR_exon20_790_wt", "EGFR_T790M"));
}

TEST(ShippedCatalogue, SaysThatItIsADemonstrationPanel) {
    const std::string text = support::readFile(kShippedFile);
    EXPECT_THAT(text, testing::HasSubstr("/ A DEMONSTRATION PANEL. It has not been validated"));
}

// The worked numbers of docs/catalogue.md: informative pairs, greatest negative count, least
// positive one.
TEST(ShippedCatalogue, CallsAsItsTableOfWorkedNumbersSays) {
    struct Row {
        std::int64_t pairs;
        double negativeUpTo;
        double positiveFrom;
    };
    const Row rows[] = {{500, -1, 5}, {597, -1, 5},  {598, 0, 5},    {600, 0, 5},    {1000, 1, 6},
                        {2000, 4, 9}, {3000, 8, 11}, {5000, 16, 15}, {20000, 83, 36}};
    const Mutation& mutant = *(*(*shipped().domains)[1]->mutationMutAr)[1];
    for (const Row& row : rows) {
        EXPECT_EQ(calling::ResultCalc::noMutantReadsAtFalseNegativeThresholdForTotalNoReads(
                      row.pairs, 0.005, mutant.allowableFalseNegativeRate),
                  row.negativeUpTo)
            << row.pairs;
        EXPECT_EQ(calling::ResultCalc::noMutantReadsAtFalsePositiveThresholdForTotalNoReads(
                      row.pairs, mutant.referenceFrequencyOfTheMutantReads,
                      mutant.allowableFalsePositiveRate),
                  row.positiveFrom)
            << row.pairs;
    }
}

} // namespace
