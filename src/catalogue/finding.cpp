// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
//
// The rules of the check in words. A message says what is wrong at its line; these texts say what
// comes of it and what to do. A rule is an error only where the file surely does not mean what it
// says, since a laboratory's script stops at an error; everything that one laboratory may want and
// another may not is a warning.
#include "catalogue/finding.h"

#include <cstddef>
#include <iterator>

namespace catalogue {
namespace {

constexpr auto kError = Finding::Severity::error;
constexpr auto kWarning = Finding::Severity::warning;

constexpr RuleText kTexts[] = {
    // --- The file
    {Rule::noDomain, "no-domain", kError,
     "Nothing is searched for: every pair of every patient stays unmapped.",
     "Begin the first domain with a line \"*NAME TYPE\". Check that this is the right file."},
    {Rule::lineTooLong, "line-too-long", kError,
     "Loading ends at this line without a word, and a run searches only for what stands above.",
     "Break the line, or make it a comment of several lines that each begin with \"/\"."},
    {Rule::endMarkerMissing, "end-marker-missing", kWarning,
     "The file is read to its end. If it was cut short, the targets behind the cut are missing "
     "from every result.",
     "Compare the file with its original and end it with the line \"//EntryEnds\", without a "
     "trailing blank."},
    {Rule::headerIgnored, "header-ignored", kWarning,
     "The line does not count. A mutation below it goes to the domain above, and a sequence below "
     "it is ignored too.",
     "Delete what stands before the \"*\" or \">\". For a byte order mark, save the file as UTF-8 "
     "without one."},
    {Rule::entryFaulty, "entry-faulty", kError,
     "No run starts with this catalogue, because reads cannot be searched for this entry.",
     "Copy both flanks from the entry's own sequence, the left one from before the right one, and "
     "write every rate as a plain number such as 0.001."},
    {Rule::noRNAQualityControl, "no-rna-quality-control", kWarning,
     "No report says whether the RNA was intact, so a degraded sample looks like a negative one.",
     "Add a domain of type germline_mRNA whose first entry is named OAZ1. A catalogue for DNA "
     "alone needs none."},

    // --- An entry by itself
    {Rule::entryBeforeAnyDomain, "entry-before-any-domain", kError,
     "The entry is dropped, and no result mentions it.",
     "Put the entry below the header of its domain. A header that blanks or a byte order mark "
     "precede is none."},
    {Rule::fieldsMissing, "fields-missing", kError,
     "What was not read is 0, or a text of an earlier line. The entry is counted or called by "
     "values that nobody wrote.",
     "Give all eight fields with blanks between them and none inside a name, numbers with a "
     "decimal point and without a per cent sign."},
    {Rule::fieldCarriedOver, "field-carried-over", kError,
     "The entry is searched for with a field of another line.", "Write the field."},
    {Rule::minimumMalformed, "minimum-malformed", kError,
     "The entry is called with the shorter number.", "Write a whole number of read pairs."},
    {Rule::textAfterFields, "text-after-fields", kWarning,
     "The text has no effect. If it was meant as a field, the eight fields before it mean "
     "something else than intended.",
     "Delete it, or make it a comment line of its own that begins with \"/\"."},
    {Rule::sequenceMissing, "sequence-missing", kError,
     "The entry's name is searched for as if it were bases, which no read holds.",
     "Put the sequence on the line right below the header."},
    {Rule::sequenceLineTooLong, "sequence-line-too-long", kError,
     "The sequence is cut, and what follows is taken for a line of its own.",
     "Shorten the sequence around its core; only the core is searched for."},
    {Rule::strandWordUnknown, "strand-word-unknown", kError,
     "No pair ever counts for the entry: it is always negative.",
     "Write R1, R2 or R1R2, in upper case."},
    {Rule::rateOutOfRange, "rate-out-of-range", kError,
     "The statistics behind the call do not hold, and the call means nothing.",
     "Write the rate as a fraction: 0.001 for 0.1 per cent."},
    {Rule::positiveWithoutMutantReads, "positive-without-mutant-reads", kWarning,
     "A patient without a single mutant pair can be reported as positive.",
     "Choose a false-positive rate below the background frequency, or raise nD1Threshold."},

    // --- Domains
    {Rule::domainWithoutName, "domain-without-name", kError,
     "Its results stand in the report without a name.", "Write \"*NAME TYPE\"."},
    {Rule::domainWithoutType, "domain-without-type", kError,
     "Its pairs are counted but never called.",
     "Write the type behind the name: SomaticDNA, Germline, germline_mRNA, fusion_RNA or "
     "control."},
    {Rule::flagWordUnknown, "flag-word-unknown", kWarning,
     "Pairs that match in the domain are tried in the domains below as well.",
     "Write StopSearchIfMatched or leave the word out. A name holds no blanks."},
    {Rule::textAfterDomain, "text-after-domain", kWarning, "The text has no effect.",
     "Delete it, or make it a comment line of its own that begins with \"/\"."},
    {Rule::typeUnknown, "type-unknown", kWarning,
     "Its pairs are counted but never called, so no finding in it ever reaches the report.",
     "Write one of the types of docs/formats/definition-file.md letter by letter. A name holds no "
     "blanks: the word behind the first one is the type."},
    {Rule::typeCalledNotCounted, "type-called-not-counted", kWarning,
     "The report calls the domain but its count table has no column for it.",
     "Nothing, as long as the calls are what is wanted; the JSON output has the counts."},
    {Rule::typeCountedNotCalled, "type-counted-not-called", kWarning,
     "The count table has a column for the domain but the report never calls it.",
     "Write germline_mRNA or fusion_RNA if it is to be called."},
    {Rule::germlineNotCalled, "germline-not-called", kWarning,
     "Its pairs are counted but no allele type is reported.",
     "Name the domain BIM if it holds that polymorphism; no other is typed."},
    {Rule::tooFewEntries, "too-few-entries", kError,
     "The domain's result does not rest on any measurement.",
     "Add what is missing: the wild type first, then at least one mutant."},
    {Rule::domainEmpty, "domain-empty", kWarning, "The domain has no result.",
     "Add its entries or delete its header."},
    {Rule::domainNameTwice, "domain-name-twice", kError,
     "Two results stand in the report under one name.", "Give each domain a name of its own."},
    {Rule::entryNameTwice, "entry-name-twice", kError,
     "Two results stand in the report under one name.", "Give each entry a name of its own."},
    {Rule::rowNameTwice, "row-name-twice", kWarning,
     "A report row shows the entry's name alone, so nobody can tell which of the two was found.",
     "Begin the names with those of their genes or domains."},
    {Rule::internalControlMissing, "internal-control-missing", kWarning,
     "A failed reaction is reported as negative.",
     "Put the spiked-in control first and give it a name that holds \"control\", in lower case."},
    {Rule::transcriptCalledAsFusion, "transcript-called-as-fusion", kWarning,
     "Every patient with intact RNA is reported with OAZ1 as a positive fusion.",
     "Move OAZ1 to a domain of type germline_mRNA, and begin this one with the internal control."},

    // --- Cores
    {Rule::coreEmpty, "core-empty", kError, "Every pair counts for the entry.",
     "Write both flanks."},
    {Rule::coreBeyondAnyRead, "core-beyond-any-read", kError,
     "No pair ever counts for the entry: it is always negative.",
     "Choose flanks that lie closer to the change."},
    {Rule::coreLetterUnmatchable, "core-letter-unmatchable", kError,
     "No ordinary read holds the core: the entry is always negative.",
     "Write the core's bases in upper case, and for a base that varies the code of two bases (R, "
     "Y, S, W, K or M)."},
    {Rule::coreNeverCounted, "core-never-counted", kError,
     "The entry never gets a pair: it is always negative, and its pairs count for the other one.",
     "Delete one of the two. If both are wanted, their flanks must take the change in, so that "
     "the cores differ."},
    {Rule::coreTwice, "core-twice", kWarning,
     "The earlier entry takes every pair that it can, and the later one gets the rest.",
     "Delete one of the two, unless the split by strand word is wanted."},
    {Rule::coreShadowed, "core-shadowed", kError,
     "The earlier entry takes the later one's pairs: the later one is as good as never found.",
     "Give both the same flanks, outside every change of the domain, or put the entry with the "
     "longer core first."},
    {Rule::coreInTwoDomains, "core-in-two-domains", kWarning,
     "A pair with this core counts in both domains.",
     "Delete one of the two, unless counting twice is wanted."},

    // --- Rates
    {Rule::backgroundTooHigh, "background-too-high", kWarning,
     "Background alone looks like the real mutation that the negative call is made for, at "
     "0.005 of the pairs. No number of pairs tells the two apart: such a mutation is called "
     "Negative or stays open.",
     "Write the background as a fraction (0.001 for 0.1 per cent). If it really is that high, "
     "the assay cannot find a mutation at half a per cent; lower it by asking for both reads "
     "(R1R2)."},
    {Rule::negativeOutOfReach, "negative-out-of-reach", kWarning,
     "A patient without a mutant pair gets no call at all there: the row stays empty or says "
     "Not Determined.",
     "Raise the false-negative rate, or set MINIMUM and nD1Threshold to the number of pairs "
     "that the rate needs."},

    // --- What a core is made of
    {Rule::coreLongerThanRead, "core-longer-than-read", kWarning,
     "No read of this length holds the core: the entry is never found.",
     "Choose flanks that lie closer to the change, or give the length of your reads with "
     "--read-length."},
    {Rule::coreSeldomReached, "core-seldom-reached", kWarning,
     "Of the reads that cover the middle of the core fewer than one in five hold all of it, "
     "so most pairs of the target do not count. In amplicons it depends on the primers.",
     "Choose flanks that lie closer to the change, or give the length of your reads with "
     "--read-length."},
    {Rule::coreShort, "core-short", kWarning,
     "A core this short can occur in the genome by chance. Pairs from elsewhere then count "
     "for the entry.",
     "Choose flanks that lie farther from the change: 30 to 50 bases in all serve well."},
    {Rule::coreLowComplexity, "core-low-complexity", kWarning,
     "Repeats of this kind stand in many places of a genome, and their length varies from "
     "read to read. Pairs from elsewhere count for the entry, and its own are missed.",
     "Move or lengthen the core so that most of it lies outside the repeat."},
    {Rule::coreHomopolymer, "core-homopolymer", kWarning,
     "Amplification and sequencing often miss or add a base in such a run. Those reads count "
     "neither for the wild type nor for the mutant.",
     "Move the core so that the run lies outside, or expect fewer pairs."},
    {Rule::flankRepeated, "flank-repeated", kWarning,
     "The core reaches from the first place of the left flank to the first place of the right "
     "one. If another place was meant, the core is too long, or ends before the change.",
     "Lengthen the flank by bases that make it occur once, and look at the core's length in "
     "\"vexta catalogue list\"."},

    // --- Wild type and mutants
    {Rule::wildTypeNotFirst, "wild-type-not-first", kError,
     "The wild type is called like a mutant: a healthy patient is Positive with up to 100 per "
     "cent, and the mutant that stands first is never called.",
     "Put the wild type first in its domain."},
    {Rule::wildTypeTwice, "wild-type-twice", kWarning,
     "Pairs of the later one count as mutant: whoever carries this variant of the wild type "
     "is Positive.",
     "Keep one wild type, and write the base that varies as an ambiguity code in every core "
     "of the domain; or rename the entry."},
    {Rule::firstEntryNamedAsMutant, "first-entry-named-as-mutant", kWarning,
     "Its pairs count as normal: it is never called, and the shares of the other mutants are "
     "wrong.",
     "Put the wild type before it."},
    {Rule::firstEntryUnlikeOthers, "first-entry-unlike-others", kWarning,
     "If the first entry is a mutant, it is never called, and the wild type is called as a "
     "mutant in every healthy patient.",
     "Put the wild type first. If it stands first, say so in its name (wt), and this rule "
     "trusts it."},
    {Rule::flanksDiffer, "flanks-differ", kWarning,
     "Reads that hold one core whole do not hold the other, so the share of mutant pairs is "
     "too high or too low.",
     "Give the mutants the flanks of their wild type, outside every change of the domain."},
    {Rule::strandWordDiffers, "strand-word-differs", kWarning,
     "The entry is looked for in other reads than the rest of its domain. The share of a mutant "
     "is then too high or too low, and a fusion is missed where that read does not reach it.",
     "Give every entry of the domain the same strand word."},
    {Rule::mutantIsWildType, "mutant-is-wild-type", kError,
     "Reads that hold this core but not all of the wild type's count as mutant: a healthy "
     "patient can be Positive.",
     "Write the mutant's sequence with its change, and flanks on either side of the change."},
    {Rule::variantTwice, "variant-twice", kWarning,
     "The pairs of one variant are split between two names, and either may fall below its "
     "threshold.",
     "Keep one of the two."},
    {Rule::nearerToAnotherWildType, "nearer-to-another-wild-type", kWarning,
     "Its pairs are compared with the wild-type pairs of another place, so its share means "
     "nothing.",
     "Move the entry to the domain of that wild type, or correct its sequence."},

    // --- Strands
    {Rule::coreIsWildTypeReversed, "core-is-wild-type-reversed", kError,
     "In reads of the other strand the wild type itself counts as this mutant; in all others "
     "the entry is never found.",
     "Write the mutant's sequence, on the strand of its wild type."},
    {Rule::coreOnOtherStrand, "core-on-other-strand", kError,
     "Reads that hold the wild type can never hold this entry, so a patient with the mutation "
     "is Negative.",
     "Reverse-complement the sequence, or only the core in it if the finding names the core, and "
     "swap and reverse-complement both flanks."},
    {Rule::sequenceOnOtherStrand, "sequence-on-other-strand", kWarning,
     "All reads of a directional library lie on one strand, so one of the two is never found.",
     "Write all sequences on the strand of read 1. Reverse-complement the sequence, or only the "
     "core in it if the finding names the core, and swap and reverse-complement both flanks; "
     "for a wild type, do so for every entry of its domain."},
    {Rule::domainStrandWordDiffers, "domain-strand-word-differs", kWarning,
     "The domain is looked for in another read than its neighbours. In most libraries that "
     "read does not reach it, or not as deep.",
     "Give the domain the strand word of the others, unless its primers lie the other way "
     "round."},

    // --- Targets of two domains that one pair can hold
    {Rule::coreInsideAnother, "core-inside-another", kWarning,
     "Every pair with the longer core counts in both domains.",
     "Move one of the two cores, unless counting twice is wanted."},
    {Rule::coreNearAnother, "core-near-another", kWarning,
     "A read error or a common variant at that base makes a pair of one domain count in the "
     "other.",
     "Move the cores apart, so that they differ in more than one base."},
    {Rule::coreReversedInAnother, "core-reversed-in-another", kWarning,
     "If the library has no direction, pairs of one count for the other as well. If the "
     "sequence was typed in twice, once from either strand, one of the two is never found.",
     "Delete the one on the wrong strand, or move the cores apart."},
    {Rule::stopFlagHidesDomain, "stop-flag-hides-domain", kWarning,
     "A pair that holds a target of both does not count in the later domain: its counts are "
     "too low, and a mutant there can be missed.",
     "Delete the flag word StopSearchIfMatched."},
};

constexpr bool standInOrder() {
    for (std::size_t i = 0; i < std::size(kTexts); ++i) {
        if (kTexts[i].rule != static_cast<Rule>(i)) {
            return false;
        }
    }
    return std::size(kTexts) == static_cast<std::size_t>(Rule::kCount);
}
static_assert(standInOrder(), "textOf() takes a rule's text by its place");

} // namespace

const RuleText& textOf(Rule rule) {
    return kTexts[static_cast<std::size_t>(rule)];
}

std::span<const RuleText> allRuleTexts() {
    return kTexts;
}

} // namespace catalogue
