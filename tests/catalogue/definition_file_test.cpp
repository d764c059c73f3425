// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include "catalogue/definition_file.h"

#include <clocale>
#include <cstdint>
#include <cstdio>
#include <limits>
#include <random>
#include <string>

#include <gtest/gtest.h>

#include "catalogue/load_text.h"
#include "support/temp_dir.h"

namespace catalogue {
namespace {

const std::string kDomain = "*BIM Germline StopSearchIfMatched\n";
const std::string kMutation = ">wt ACGT GGCC R1 0.001 0.0001 0.05 1000\nTTACGTAAGGCCTT\n";

/// The text of a field of the only mutation of the only domain after `header`.
Catalogue loadHeader(const std::string& header) {
    return loadText("*D T F\n>" + header + "\nTTACGTAAGGCCTT\n//EntryEnds\n");
}

TEST(DefinitionFile, LoadsADomainWithItsMutation) {
    const Catalogue catalogue = loadText(kDomain + kMutation + "//EntryEnds\n");
    ASSERT_EQ(catalogue.domains->size(), 1U);
    const MutDomain& domain = *(*catalogue.domains)[0];
    EXPECT_EQ(domain.name, "BIM");
    EXPECT_EQ(domain.type, "Germline");
    EXPECT_TRUE(domain.canStopSearchIfMatched);
    ASSERT_EQ(mutationCountOf(catalogue, 0), 1U);
    const Mutation& mutation = mutationOf(catalogue, 0, 0);
    EXPECT_EQ(mutation.name, "wt");
    EXPECT_EQ(mutation.before10bp, "ACGT");
    EXPECT_EQ(mutation.after10bp, "GGCC");
    EXPECT_EQ(mutation.strandRequiredToRead, "R1");
    EXPECT_EQ(mutation.referenceFrequencyOfTheMutantReads, 0.001);
    EXPECT_EQ(mutation.allowableFalsePositiveRate, 0.0001);
    EXPECT_EQ(mutation.allowableFalseNegativeRate, 0.05);
    EXPECT_EQ(mutation.minimumRequiredNumberOfInformativeReads, 1000);
    EXPECT_EQ(mutation.seq, "TTACGTAAGGCCTT");
    EXPECT_EQ(mutation.coreSeq, "ACGTAAGGCC");
    EXPECT_STREQ(mutation.coreSeqC(), "ACGTAAGGCC");
    EXPECT_FALSE(mutation.seqContainsWildCard);
    EXPECT_EQ(mutation.match, 0);
    EXPECT_EQ(mutation.comment, "");
    EXPECT_TRUE(catalogue.endMarkerSeen);
    EXPECT_TRUE(catalogue.faults.empty());
}

TEST(DefinitionFile, KeepsTheOrderOfDomainsAndMutations) {
    const Catalogue catalogue = loadText(
        "*B t\n>b2 A A R1 0 0 0 0\nA\n>b1 A A R1 0 0 0 0\nA\n*A t\n>a A A R1 0 0 0 0\nA\n");
    ASSERT_EQ(catalogue.domains->size(), 2U);
    EXPECT_EQ((*catalogue.domains)[0]->name, "B");
    EXPECT_EQ((*catalogue.domains)[1]->name, "A");
    EXPECT_EQ(mutationOf(catalogue, 0, 0).name, "b2");
    EXPECT_EQ(mutationOf(catalogue, 0, 1).name, "b1");
    EXPECT_EQ(mutationOf(catalogue, 1, 0).name, "a");
}

TEST(DefinitionFile, KnowsTheStopWordInAnyLetterCase) {
    EXPECT_TRUE((*loadText("*D T stopsearchifmatched\n").domains)[0]->canStopSearchIfMatched);
    EXPECT_TRUE((*loadText("*D T STOPSEARCHIFMATCHED\n").domains)[0]->canStopSearchIfMatched);
    EXPECT_FALSE((*loadText("*D T StopSearch\n").domains)[0]->canStopSearchIfMatched);
    EXPECT_FALSE((*loadText("*D T\n").domains)[0]->canStopSearchIfMatched);
}

TEST(DefinitionFile, AllowsBlanksAfterTheFirstCharacterOfAHeader) {
    const Catalogue catalogue = loadText("*  \t D   T\n>  m ACGT\tGGCC R1 0 0 0 7\nACGTGGCC\n");
    EXPECT_EQ((*catalogue.domains)[0]->name, "D");
    EXPECT_EQ(mutationOf(catalogue, 0, 0).name, "m");
    EXPECT_EQ(mutationOf(catalogue, 0, 0).minimumRequiredNumberOfInformativeReads, 7);
}

TEST(DefinitionFile, DomainHeaderWithFewerTokensGivesEmptyTexts) {
    const Catalogue catalogue = loadText("*A T StopSearchIfMatched\n*B\n*\n");
    ASSERT_EQ(catalogue.domains->size(), 3U);
    EXPECT_EQ((*catalogue.domains)[1]->name, "B");
    EXPECT_EQ((*catalogue.domains)[1]->type, "");
    EXPECT_FALSE((*catalogue.domains)[1]->canStopSearchIfMatched);
    EXPECT_EQ((*catalogue.domains)[2]->name, "");
    EXPECT_EQ(catalogue.domainSources[2].tokensScanned, 0);
}

TEST(DefinitionFile, SkipsEveryOtherLine) {
    const Catalogue catalogue =
        loadText("\nACGT\n *X Y\n/ comment\n//Comment\n" + kDomain + "\n #\n" + kMutation);
    ASSERT_EQ(catalogue.domains->size(), 1U);
    EXPECT_EQ(mutationCountOf(catalogue, 0), 1U);
}

TEST(DefinitionFile, EndsAtTheEndMarkerOnly) {
    const Catalogue catalogue = loadText("//EntryEnds \n//entryends\n//EntryEndsHere\n" + kDomain +
                                         kMutation + "//EntryEnds\n*After X\n" + kMutation);
    ASSERT_EQ(catalogue.domains->size(), 1U);
    EXPECT_EQ(mutationCountOf(catalogue, 0), 1U);
    EXPECT_TRUE(catalogue.endMarkerSeen);
    EXPECT_EQ(catalogue.lineCount, 7U);
}

TEST(DefinitionFile, TrailingBlankHidesTheEndMarker) {
    const Catalogue catalogue = loadText("//EntryEnds \n" + kDomain);
    EXPECT_EQ(catalogue.domains->size(), 1U);
    EXPECT_FALSE(catalogue.endMarkerSeen);
}

TEST(DefinitionFile, ReadsEveryKindOfLineEndAlike) {
    const std::string text = kDomain + kMutation + ">m ACGT GGCC R2 0.5 0.5 0.5 1\nACGTGGCC\n";
    for (const char* const lineEnd : {"\n", "\r\n", "\r"}) {
        std::string other;
        for (const char byte : text) {
            other += byte == '\n' ? lineEnd : std::string(1, byte);
        }
        const Catalogue catalogue = loadText(other);
        ASSERT_EQ(catalogue.domains->size(), 1U);
        ASSERT_EQ(mutationCountOf(catalogue, 0), 2U);
        EXPECT_EQ(mutationOf(catalogue, 0, 0).seq, "TTACGTAAGGCCTT");
        EXPECT_EQ(mutationOf(catalogue, 0, 1).strandRequiredToRead, "R2");
        EXPECT_EQ(catalogue.mutationSources[1].headerLine, 4U);
        EXPECT_EQ(catalogue.lineCount, 5U);
    }
}

TEST(DefinitionFile, ReadsALastLineWithoutLineEnd) {
    const Catalogue catalogue = loadText(kDomain + ">m ACGT GGCC R2 0 0 0 1\nACGTGGCC");
    EXPECT_EQ(mutationOf(catalogue, 0, 0).seq, "ACGTGGCC");
}

TEST(DefinitionFile, HeaderWithSevenFieldsHasNoMinimumOfReads) {
    const Catalogue catalogue = loadHeader("m ACGT GGCC R1 0.1 0.2 0.3");
    EXPECT_EQ(mutationOf(catalogue, 0, 0).allowableFalseNegativeRate, 0.3);
    EXPECT_EQ(mutationOf(catalogue, 0, 0).minimumRequiredNumberOfInformativeReads, 0);
    EXPECT_EQ(catalogue.mutationSources[0].fieldsScanned, 7);
}

TEST(DefinitionFile, MissingTextFieldsCarryOverFromTheHeaderBefore) {
    const Catalogue catalogue =
        loadText("*D T\n>m ACGT GGCC R2 0.1 0.2 0.3 4\nACGTGGCC\n>n CG\nACGTGGCC\n");
    const Mutation& second = mutationOf(catalogue, 0, 1);
    EXPECT_EQ(second.name, "n");
    EXPECT_EQ(second.before10bp, "CG");
    EXPECT_EQ(second.after10bp, "GGCC");
    EXPECT_EQ(second.strandRequiredToRead, "R2");
    EXPECT_EQ(second.referenceFrequencyOfTheMutantReads, 0.0);
    EXPECT_EQ(second.minimumRequiredNumberOfInformativeReads, 0);
    EXPECT_EQ(catalogue.mutationSources[1].fieldsScanned, 2);
}

TEST(DefinitionFile, DomainHeaderFillsTheBuffersThatCarryOver) {
    const Catalogue catalogue = loadText("*GGACC CC GG\n>\nGGACC\n");
    const Mutation& mutation = mutationOf(catalogue, 0, 0);
    EXPECT_EQ(mutation.name, "GGACC");
    EXPECT_EQ(mutation.before10bp, "CC");
    EXPECT_EQ(mutation.after10bp, "GG");
    EXPECT_EQ(mutation.strandRequiredToRead, "");
    EXPECT_EQ(catalogue.mutationSources[0].fieldsScanned, 0);
}

TEST(DefinitionFile, DomainHeaderClearsThreeBuffersButNotTheStrandWord) {
    const Catalogue catalogue = loadText("*A T\n>m ACGT GGCC R2 0 0 0 0\nACGTGGCC\n*\n>\nACGT\n");
    const Mutation& mutation = mutationOf(catalogue, 1, 0);
    EXPECT_EQ(mutation.name, "");
    EXPECT_EQ(mutation.before10bp, "");
    EXPECT_EQ(mutation.after10bp, "");
    EXPECT_EQ(mutation.strandRequiredToRead, "R2");
}

TEST(DefinitionFile, SequenceIsScannedIntoTheBufferOfTheName) {
    const Catalogue catalogue = loadText("*A T\n>m ACGT GGCC R2 0 0 0 0\nACGTGGCC\n>\nACGTGGCC\n");
    EXPECT_EQ(mutationOf(catalogue, 0, 1).name, "ACGTGGCC");
}

TEST(DefinitionFile, FirstHeaderOfAllFindsEveryBufferEmpty) {
    const Catalogue catalogue = loadText(">\n\n*D T\n");
    ASSERT_EQ(catalogue.mutationSources.size(), 1U);
    EXPECT_EQ(catalogue.mutationSources[0].mutation->name, "");
    EXPECT_EQ(catalogue.mutationSources[0].mutation->strandRequiredToRead, "");
    EXPECT_EQ(catalogue.mutationSources[0].mutation->seq, "");
}

TEST(DefinitionFile, MissingSequenceIsTheNameOfTheMutation) {
    for (const char* const rest : {"", "\n", "  \t\n", "\r"}) {
        const Catalogue catalogue =
            loadText(std::string("*D T\n>ACGTGGCC ACGT GGCC R1 0 0 0 0\n") + rest);
        ASSERT_EQ(mutationCountOf(catalogue, 0), 1U);
        EXPECT_EQ(mutationOf(catalogue, 0, 0).seq, "ACGTGGCC");
        EXPECT_TRUE(catalogue.mutationSources[0].sequenceMissing);
        EXPECT_FALSE(catalogue.mutationSources[0].sequenceCut);
    }
}

TEST(DefinitionFile, SequenceIsTheFirstTokenBetweenBlanksOfEveryKind) {
    // As everywhere in C; a lone CR ends the line besides.
    for (const char* const blank : {" ", "\t", "\v", "\f", " \v\f\t"}) {
        SCOPED_TRACE(testing::PrintToString(blank));
        const std::string header = "*D T\n>m ACGT GGCC R1 0 0 0 0\n";
        const Catalogue before = loadText(header + blank + "ACGTGGCC\n");
        EXPECT_EQ(mutationOf(before, 0, 0).seq, "ACGTGGCC");
        const Catalogue between = loadText(header + "ACGTGGCC" + blank + "TTTT\n");
        EXPECT_EQ(mutationOf(between, 0, 0).seq, "ACGTGGCC");
        EXPECT_EQ(mutationOf(between, 0, 0).coreSeq, "ACGTGGCC");
        const Catalogue alone = loadText(header + blank + "\n");
        EXPECT_TRUE(alone.mutationSources[0].sequenceMissing);
        EXPECT_EQ(mutationOf(alone, 0, 0).seq, "m");
    }
}

TEST(DefinitionFile, LoneCarriageReturnEndsASequenceLine) {
    const Catalogue catalogue =
        loadText("*D T\n>m ACGT GGCC R1 0 0 0 0\nACGTGGCC\rTTTT\n>n A A R1 0 0 0 0\n\rA\n");
    EXPECT_EQ(mutationOf(catalogue, 0, 0).seq, "ACGTGGCC");
    EXPECT_EQ(mutationOf(catalogue, 0, 1).seq, "n");
    EXPECT_TRUE(catalogue.mutationSources[1].sequenceMissing);
}

TEST(DefinitionFile, LineAfterAMutationHeaderIsItsSequenceWhateverItBeginsWith) {
    const Catalogue catalogue = loadText(
        "*D T\n>m ACGT GGCC R1 0 0 0 0\n*ACGTGGCC x\n>n A A R1 0 0 0 0\n//EntryEnds\n*E T\n");
    EXPECT_EQ(mutationOf(catalogue, 0, 0).seq, "*ACGTGGCC");
    EXPECT_EQ(mutationOf(catalogue, 0, 1).seq, "//EntryEnds");
    EXPECT_EQ(catalogue.domains->size(), 2U);
}

TEST(DefinitionFile, MutationBeforeAnyDomainIsDropped) {
    const Catalogue catalogue = loadText(">lost A C R1 0 0 0 0\nTTTT\n" + kDomain + kMutation);
    ASSERT_EQ(mutationCountOf(catalogue, 0), 1U);
    EXPECT_EQ(mutationOf(catalogue, 0, 0).name, "wt");
    ASSERT_EQ(catalogue.mutationSources.size(), 2U);
    EXPECT_EQ(catalogue.mutationSources[0].domain, nullptr);
    // What is dropped cannot make the catalogue faulty.
    EXPECT_TRUE(catalogue.faults.empty());
}

TEST(DefinitionFile, LineOf998CharactersIsRead) {
    const std::string name(998 - 1, 'D');
    const Catalogue catalogue = loadText("*" + name + "\n*E T\n");
    ASSERT_EQ(catalogue.domains->size(), 2U);
    EXPECT_EQ((*catalogue.domains)[0]->name, name);
    EXPECT_EQ(catalogue.overlongLine, 0U);
}

TEST(DefinitionFile, LineOf999CharactersEndsLoading) {
    const Catalogue catalogue = loadText(kDomain + "*" + std::string(998, 'D') + "\n*E T\n");
    EXPECT_EQ(catalogue.domains->size(), 1U);
    EXPECT_EQ(catalogue.overlongLine, 2U);
    EXPECT_EQ(catalogue.lineCount, 2U);
}

TEST(DefinitionFile, OverlongSequenceGivesItsFirst999Characters) {
    const std::string sequence = "ACGT" + std::string(993, 'A') + "GG";
    ASSERT_EQ(sequence.size(), 999U);
    const std::string header = kDomain + ">m ACGT GG R1 0 0 0 0\n";
    const Catalogue catalogue = loadText(header + sequence + "CCCC\n" + kMutation);
    EXPECT_EQ(mutationOf(catalogue, 0, 0).seq, sequence);
    EXPECT_TRUE(catalogue.mutationSources[0].sequenceCut);
    ASSERT_EQ(mutationCountOf(catalogue, 0), 2U);
    EXPECT_EQ(catalogue.overlongLine, 0U);
}

TEST(DefinitionFile, RestOfAnOverlongSequenceIsALineOfItsOwn) {
    const std::string header = kDomain + ">m A A R1 0 0 0 0\n" + std::string(999, 'A');
    EXPECT_EQ(loadText(header + "*E T\n").domains->size(), 2U);
    EXPECT_EQ(loadText(header + "CCCC\n*E T\n").domains->size(), 2U);
    EXPECT_EQ(loadText(header + "\n*E T\n").domains->size(), 2U);
    EXPECT_EQ(loadText(header + "//EntryEnds\n*E T\n").domains->size(), 1U);
    // The rest is read as an ordinary line, which may be too long itself.
    const Catalogue ended = loadText(header + std::string(999, 'C') + "\n*E T\n");
    EXPECT_EQ(ended.domains->size(), 1U);
    EXPECT_EQ(ended.overlongLine, 3U);
}

TEST(DefinitionFile, RestOfACutSequenceKeepsTheNumberOfItsLine) {
    const Catalogue catalogue =
        loadText("*D T\n>m A A R1 0 0 0 0\n" + std::string(999, 'A') + "*E T\n*F T\n");
    ASSERT_EQ(catalogue.domainSources.size(), 3U);
    EXPECT_EQ(catalogue.domainSources[1].headerLine, 3U);
    EXPECT_EQ(catalogue.domainSources[2].headerLine, 4U);
    EXPECT_EQ(catalogue.lineCount, 4U);
}

TEST(DefinitionFile, NulCutsWhatIsSeenOfALineButCountsTowardsItsLength) {
    using namespace std::string_literals;
    const Catalogue cut = loadText("*D T\0 StopSearchIfMatched\n//EntryEnds\0 x\n*E T\n"s);
    ASSERT_EQ(cut.domains->size(), 1U);
    EXPECT_FALSE((*cut.domains)[0]->canStopSearchIfMatched);
    EXPECT_TRUE(cut.endMarkerSeen);
    const Catalogue ended = loadText(kDomain + "\0"s + std::string(998, 'x') + "\n*E T\n");
    EXPECT_EQ(ended.overlongLine, 2U);
    const Catalogue onlyNul = loadText(kDomain + "\0"s);
    EXPECT_EQ(onlyNul.lineCount, 2U);
}

TEST(DefinitionFile, EmptyFileOrFileWithoutDomainGivesAnEmptyList) {
    for (const char* const text : {"", "\n", "no domain here\n", ">m A A R1 0 0 0 0\nA\n"}) {
        const Catalogue catalogue = loadText(text);
        ASSERT_TRUE(catalogue.domains.has_value());
        EXPECT_TRUE(catalogue.domains->empty());
    }
}

TEST(DefinitionFile, MissingFileIsAnErrorThatNamesIt) {
    const support::TempDir directory;
    const auto loaded = loadDefinitionFile(directory.file("none.txt"));
    ASSERT_FALSE(loaded.ok());
    EXPECT_NE(loaded.error().message.find("none.txt"), std::string::npos) << loaded.error().message;
}

TEST(DefinitionFile, DirectoryIsAnErrorWithAReason) {
    const support::TempDir directory;
    const auto loaded = loadDefinitionFile(directory.path());
    ASSERT_FALSE(loaded.ok());
    EXPECT_FALSE(loaded.error().message.empty());
}

TEST(DefinitionFile, FileOnDiskIsReadAnewEachTime) {
    const support::TempDir directory;
    const std::string path = directory.write("panel.txt", kDomain + kMutation);
    EXPECT_EQ(loadDefinitionFile(path).value().domains->size(), 1U);
    directory.write("panel.txt", kDomain + kMutation + "*E T\n");
    EXPECT_EQ(loadDefinitionFile(path).value().domains->size(), 2U);
}

TEST(DefinitionFile, ReadErrorIsAnErrorThoughAPartWasRead) {
    const std::string faulty = ">f TTTT GGCC R1 0.1 0.2 0.3 30\nACGTGGCC\n";
    support::MemoryStream stream(kDomain + kMutation + faulty, 16, "input/output error");
    const auto loaded = loadDefinition(stream, "panel.txt");
    ASSERT_FALSE(loaded.ok());
    EXPECT_EQ(loaded.error().message, "panel.txt: input/output error");
}

TEST(DefinitionFile, NumbersFollowTheCScan) {
    const Catalogue catalogue = loadHeader("m ACGT GGCC R1 +1e-3 0x1p-4 .5e0 -12");
    const Mutation& mutation = mutationOf(catalogue, 0, 0);
    EXPECT_EQ(mutation.referenceFrequencyOfTheMutantReads, 0.001);
    EXPECT_EQ(mutation.allowableFalsePositiveRate, 0.0625);
    EXPECT_EQ(mutation.allowableFalseNegativeRate, 0.5);
    EXPECT_EQ(mutation.minimumRequiredNumberOfInformativeReads, -12);
}

TEST(DefinitionFile, FractionForTheNumberOfReadsIsCut) {
    const Catalogue catalogue = loadHeader("m ACGT GGCC R1 0.1 0.2 0.3 30.5");
    EXPECT_EQ(mutationOf(catalogue, 0, 0).minimumRequiredNumberOfInformativeReads, 30);
    EXPECT_EQ(catalogue.mutationSources[0].fieldsScanned, 8);
    EXPECT_EQ(catalogue.mutationSources[0].textAfterFields, ".5");
}

TEST(DefinitionFile, MalformedNumberEndsTheScanOfItsLine) {
    const Catalogue catalogue = loadHeader("m ACGT GGCC R1 0.1 x0.2 0.3 30");
    const Mutation& mutation = mutationOf(catalogue, 0, 0);
    EXPECT_EQ(mutation.referenceFrequencyOfTheMutantReads, 0.1);
    EXPECT_EQ(mutation.allowableFalsePositiveRate, 0.0);
    EXPECT_EQ(mutation.allowableFalseNegativeRate, 0.0);
    EXPECT_EQ(mutation.minimumRequiredNumberOfInformativeReads, 0);
    EXPECT_EQ(catalogue.mutationSources[0].fieldsScanned, 5);
}

TEST(DefinitionFile, NumberOfReadsSaturates) {
    const std::string front = "m ACGT GGCC R1 0.1 0.2 0.3 ";
    EXPECT_EQ(mutationOf(loadHeader(front + "99999999999999999999"), 0, 0)
                  .minimumRequiredNumberOfInformativeReads,
              std::numeric_limits<std::int64_t>::max());
    EXPECT_EQ(mutationOf(loadHeader(front + "-99999999999999999999"), 0, 0)
                  .minimumRequiredNumberOfInformativeReads,
              std::numeric_limits<std::int64_t>::min());
}

/// Sets a locale of the process, and the one before when the test ends.
class ProcessLocale {
public:
    explicit ProcessLocale(const char* name)
        : m_previous(std::setlocale(LC_ALL, nullptr)),
          m_isSet(std::setlocale(LC_ALL, name) != nullptr) {}
    ~ProcessLocale() { std::setlocale(LC_ALL, m_previous.c_str()); }
    ProcessLocale(const ProcessLocale&) = delete;
    ProcessLocale& operator=(const ProcessLocale&) = delete;
    bool isSet() const noexcept { return m_isSet; }

private:
    std::string m_previous;
    bool m_isSet;
};

TEST(DefinitionFile, NumbersAreReadAlikeUnderACommaDecimalLocale) {
    const ProcessLocale german("de_DE.UTF-8");
    ASSERT_TRUE(german.isSet()) << "this test needs the locale de_DE.UTF-8";
    double naive = -1.0;
    ASSERT_EQ(std::sscanf("0.001", "%lf", &naive), 1);
    ASSERT_EQ(naive, 0.0) << "the locale does not write decimals with a comma";

    const Catalogue catalogue = loadHeader("m ACGT GGCC R1 0.001 0.0001 0.05 1000");
    const Mutation& mutation = mutationOf(catalogue, 0, 0);
    EXPECT_EQ(mutation.referenceFrequencyOfTheMutantReads, 0.001);
    EXPECT_EQ(mutation.allowableFalsePositiveRate, 0.0001);
    EXPECT_EQ(mutation.allowableFalseNegativeRate, 0.05);
    EXPECT_EQ(mutation.minimumRequiredNumberOfInformativeReads, 1000);
}

TEST(DefinitionFile, StopWordIsKnownUnderATurkishLocale) {
    const ProcessLocale turkish("tr_TR.UTF-8");
    ASSERT_TRUE(turkish.isSet()) << "this test needs the locale tr_TR.UTF-8";
    EXPECT_TRUE((*loadText("*D T STOPSEARCHIFMATCHED\n").domains)[0]->canStopSearchIfMatched);
}

TEST(DefinitionFile, BytesThatAreNotUtf8StayAsTheyAre) {
    const Catalogue catalogue = loadText("*\xC3\xFF T\n>\xFE A A R1 0 0 0 0\nA\xE9\n");
    EXPECT_EQ((*catalogue.domains)[0]->name, "\xC3\xFF");
    EXPECT_EQ(mutationOf(catalogue, 0, 0).name, "\xFE");
    EXPECT_EQ(mutationOf(catalogue, 0, 0).seq, "A\xE9");
}

} // namespace
} // namespace catalogue
