// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
//
// One definition file per rule in tests/data/catalogue/, each with all that is found in it, a line
// per finding, in the file of the same name that ends in ".expected".
#include "catalogue/catalogue_check.h"

#include <algorithm>
#include <filesystem>
#include <iterator>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

#include "catalogue/load_text.h"
#include "support/temp_dir.h"

namespace catalogue {
namespace {

const std::string kFixtures = VEXTA_TEST_DATA "/catalogue/";

/// Stands for the statistics, which are not of this room.
bool isNamedRisky(const Mutation& mutation) {
    return mutation.name == "risky";
}

std::optional<std::int64_t> readsForNegative(const Mutation& mutation, std::int64_t from) {
    return std::max<std::int64_t>(from, mutation.name == "hesitant" ? 1379 : 400);
}

std::string textOf(const std::vector<Finding>& findings) {
    std::string text;
    for (const Finding& finding : findings) {
        const bool isError = finding.severity == Finding::Severity::error;
        text += std::to_string(finding.line) + (isError ? ": error: " : ": warning: ") +
                finding.message + "\n";
    }
    return text;
}

std::size_t errorCount(const std::vector<Finding>& findings) {
    return static_cast<std::size_t>(
        std::count_if(findings.begin(), findings.end(), [](const Finding& finding) {
            return finding.severity == Finding::Severity::error;
        }));
}

std::vector<Finding> checkFile(const std::string& path) {
    CheckOptions options;
    options.positiveWithoutMutantReads = isNamedRisky;
    options.readsForNegative = readsForNegative;
    options.readThreshold = 500;
    options.frequencyOfTrulyMutantReads = 0.005;
    return checkCatalogue(loadDefinitionFile(path).value(), options);
}

/// A fixture, and what must be found for the rule that it shows.
struct Rule {
    const char* fixture;
    Finding::Severity severity;
    std::size_t line;
    const char* part;
};

constexpr auto kError = Finding::Severity::error;
constexpr auto kWarning = Finding::Severity::warning;

const Rule kRules[] = {
    {"left_flank_not_found", kError, 9, "the left flank CCCCCCCC is not found"},
    {"right_flank_not_found", kError, 9, "the right flank CCCCCCCC is not found"},
    {"right_flank_ends_before_left", kError, 9, "ends before the left flank"},
    {"number_not_finite", kError, 9, "its reference frequency is not a finite number"},
    {"fewer_than_eight_fields", kError, 9, "only 7 of 8 fields can be read"},
    {"malformed_number", kError, 9, "only 6 of 8 fields can be read"},
    {"malformed_minimum_of_reads", kError, 9, "it is read as 30, without \".5\""},
    {"ninth_field", kWarning, 9, "what follows the eighth field is ignored: \"500\""},
    {"carried_over_fields", kError, 9, "\"GGATCCATGA\" is carried over"},
    {"line_too_long", kError, 9, "the line is longer than 998 characters"},
    {"sequence_line_too_long", kError, 10, "its sequence line is longer than 998 characters"},
    {"mutation_before_any_domain", kError, 1, "stands before any domain"},
    {"sequence_line_empty", kError, 10, "its sequence line holds no text"},
    {"unknown_strand_word", kError, 9, "the strand word \"r1\" is none of"},
    {"unknown_type_word", kWarning, 9, "the type \"somaticDNA\" is unknown"},
    {"type_called_but_not_counted", kWarning, 9, "is called but has no column"},
    {"type_counted_but_not_called", kWarning, 9, "has a column in the count table but"},
    {"type_counted_but_not_called", kWarning, 12, "has a column in the count table but"},
    {"germline_domain_not_named_bim", kWarning, 9, "is called in a domain named BIM only"},
    {"domain_without_type", kError, 9, "it has no type"},
    {"domain_without_name", kError, 9, "the domain has no name"},
    {"mutation_name_in_two_domains", kWarning, 12,
     "the name stands in another domain too (line 7)"},
    {"fusion_panel_with_oaz1_first", kWarning, 9, "reported as a positive fusion"},
    {"domain_header_with_fourth_word", kWarning, 9, "third word is ignored: \"codon 12\""},
    {"blanks_before_a_domain", kWarning, 9, "blanks stand before \"*second control\""},
    {"blanks_before_a_mutation", kWarning, 12, "so it begins no mutation"},
    {"byte_order_mark", kWarning, 1, "a byte order mark stands before"},
    {"unknown_flag_word", kWarning, 9, "the flag word \"StopSearch\""},
    {"core_inside_a_later_core", kError, 11, "that of shadowing (line 9) is found too"},
    {"core_with_code_before_its_base", kError, 11, "that of shadowing (line 9) is found too"},
    {"core_with_n", kError, 9, "its core holds N"},
    {"core_in_lower_case", kError, 9, "its core holds t"},
    {"core_empty", kError, 10, "its core is empty"},
    {"core_of_510_bases", kError, 9, "its core has 510 bases"},
    {"mutation_name_twice", kError, 9, "the name stands in this domain already (line 7)"},
    {"domain_name_twice", kError, 9, "a domain of this name stands in line 4 already"},
    {"core_twice_in_a_domain", kError, 9, "its core is that of mutant (line 7)"},
    {"core_twice_with_other_strand_word", kWarning, 9, "its core is that of mutant (line 7)"},
    {"core_twice_in_two_domains", kWarning, 10, "in another domain"},
    {"rates_outside_zero_to_one", kError, 9, "its reference frequency 0 does not lie"},
    {"rates_outside_zero_to_one", kError, 9, "its false-positive rate 1 does not lie"},
    {"rates_outside_zero_to_one", kError, 9, "its false-negative rate -0.5 does not lie"},
    {"positive_without_mutant_reads", kWarning, 9, "Positive without a mutant read"},
    {"background_too_high", kWarning, 9, "its background frequency 0.1 is not below the 0.005"},
    {"negative_out_of_reach", kWarning, 9, "with these rates 1000 informative pairs"},
    {"core_is_wild_type_reversed", kError, 9, "on the other strand its core is that of its wild"},
    {"core_on_other_strand", kError, 9, "it is like its wild type wild_type (line 5) only after"},
    {"wild_type_on_other_strand", kError, 5, "it is like the other entries of its domain only"},
    {"core_alone_on_other_strand", kError, 9, "its core is like that of its wild type wild_type"},
    {"core_of_wild_type_on_other_strand", kError, 5, "its core is like those of the other entries"},
    {"wild_type_not_first", kError, 7, "but it is not the first entry of its domain"},
    {"wild_type_twice", kWarning, 9, "its name says wild type, as that of wild_type (line 5)"},
    {"first_entry_named_as_mutant", kWarning, 5, "its name says mutant"},
    {"first_entry_unlike_others", kWarning, 5, "every other entry is second (line 7) with one"},
    {"flanks_differ", kWarning, 9, "does not begin and end where"},
    {"strand_word_differs", kWarning, 9, "its strand word is R1, that of its wild type"},
    {"mutant_is_wild_type", kError, 7, "it is the wild type wild_type (line 5) without any change"},
    {"variant_twice", kWarning, 9, "it is the same variant as mutant (line 7)"},
    {"nearer_to_another_wild_type", kWarning, 12, "is like that of wild_type (line 5), the wild"},
    {"sequence_on_other_strand", kWarning, 9, "overlaps with left_wt (line 5) only after"},
    {"fusion_core_on_other_strand", kWarning, 9,
     "the bases around its core overlap with one (line 7), but its core only after"},
    {"fusion_strand_word_differs", kWarning, 9,
     "its strand word is R1, that of most entries of its"},
    {"domain_strand_word_differs", kWarning, 14, "its strand word is R2, that of the other"},
    {"core_inside_another", kWarning, 10, "its core holds that of wild_type (line 5) in another"},
    {"core_near_another", kWarning, 10, "but for one base its core is that of wild_type (line 5)"},
    {"core_reversed_in_another", kWarning, 10, "on the other strand but for one base its core is"},
    {"stop_flag_hides_domain", kWarning, 4, "its pairs do not reach the domain right (line 9)"},
    {"core_longer_than_read", kWarning, 5, "its core has 156 bases, more than a read of 150"},
    {"core_seldom_reached", kWarning, 5, "its core has 125 bases, more than four fifths"},
    {"core_short", kWarning, 5, "its core has 19 bases, fewer than 20"},
    {"core_low_complexity", kWarning, 5, "is of low complexity (DUST score "},
    {"core_homopolymer", kWarning, 9, "its core holds 7 A in a row"},
    {"core_homopolymer_shared", kWarning, 5, "in a row; 2 other entries of its domain share this"},
    {"flank_repeated", kWarning, 9, "its right flank GGATCCATGA stands in its sequence more than"},
    // Slips of typing that rules above find.
    {"percentage", kError, 9, "only 5 of 8 fields can be read"},
    {"blank_in_a_name", kError, 9, "only 4 of 8 fields can be read"},
    {"blank_in_a_domain_name", kWarning, 9, "the type \"one\" is unknown"},
    {"sequence_wrapped", kError, 9, "the right flank GGATCCATGA is not found"},
    {"flank_with_n", kError, 9, "the left flank ACCTGGNACT is not found"},
    {"change_outside_core", kError, 9, "its core is that of wild_type (line 5)"},
    {"no_oaz1", kWarning, 0, "no germline_mRNA domain begins with OAZ1"},
    {"fusion_panel_without_control", kWarning, 9, "its first entry is no internal control"},
    {"too_few_mutations", kError, 1, "allele typing needs"},
    {"too_few_mutations", kError, 4, "reported Negative"},
    {"too_few_mutations", kError, 7, "rests on its first entry"},
    {"too_few_mutations", kError, 8, "rests on its first entry"},
    {"too_few_mutations", kWarning, 9, "it holds no mutation"},
    {"no_domain", kError, 0, "the file holds no domain"},
    {"end_marker_missing", kWarning, 0, "no line \"//EntryEnds\""},
};

TEST(CatalogueCheck, FindsWhatEachFixtureShowsAtItsLine) {
    for (const Rule& rule : kRules) {
        const std::vector<Finding> findings = checkFile(kFixtures + rule.fixture + ".txt");
        const bool found =
            std::any_of(findings.begin(), findings.end(), [&rule](const Finding& finding) {
                return finding.severity == rule.severity && finding.line == rule.line &&
                       finding.message.find(rule.part) != std::string::npos;
            });
        EXPECT_TRUE(found) << rule.fixture << ": " << rule.part << "\n" << textOf(findings);
    }
}

TEST(CatalogueCheck, FindsNothingElseInAnyFixture) {
    std::size_t fixtures = 0;
    for (const auto& entry : std::filesystem::directory_iterator(kFixtures)) {
        if (entry.path().extension() == ".txt") {
            ++fixtures;
            const std::string expected =
                entry.path().parent_path() / (entry.path().stem().string() + ".expected");
            EXPECT_EQ(textOf(checkFile(entry.path())), support::readFile(expected))
                << entry.path().filename();
        }
    }
    std::set<std::string> named{"clean"};
    for (const Rule& rule : kRules) {
        named.insert(rule.fixture);
    }
    EXPECT_EQ(fixtures, named.size()) << "every fixture stands in the table of rules";
}

TEST(CatalogueCheck, FindsNoErrorInACleanCatalogue) {
    // OAZ1 needs a type that has no column in the count table: that warning always stands.
    const std::vector<Finding> findings = checkFile(kFixtures + "clean.txt");
    EXPECT_EQ(findings.size(), 1U) << textOf(findings);
    EXPECT_EQ(errorCount(findings), 0U) << textOf(findings);
}

TEST(CatalogueCheck, FindsNoErrorInTheCatalogueThatShips) {
    const std::vector<Finding> findings =
        checkFile(VEXTA_SOURCE_DIR "/resources/ReferenceNucleotideSequence.txt");
    EXPECT_EQ(errorCount(findings), 0U) << textOf(findings);
}

TEST(CatalogueCheck, DoesWithoutTheStatistics) {
    const auto loaded = loadDefinitionFile(kFixtures + "positive_without_mutant_reads.txt");
    EXPECT_EQ(checkCatalogue(loaded.value(), {}).size(), 1U);
}

TEST(CatalogueCheck, AsksTheStatisticsAboutCalledMutationsOnly) {
    std::vector<std::string> asked;
    checkCatalogue(loadDefinitionFile(kFixtures + "clean.txt").value(),
                   {[&asked](const Mutation& mutation) {
                       asked.push_back(mutation.name.value());
                       return false;
                   }});
    EXPECT_EQ(asked, std::vector<std::string>{"mutant"});
}

TEST(CatalogueCheck, ReportsFindingsInLineOrder) {
    std::size_t withSeveralLines = 0;
    for (const auto& entry : std::filesystem::directory_iterator(kFixtures)) {
        if (entry.path().extension() == ".txt") {
            const std::vector<Finding> findings = checkFile(entry.path());
            EXPECT_TRUE(
                std::is_sorted(findings.begin(), findings.end(),
                               [](const Finding& a, const Finding& b) { return a.line < b.line; }));
            const bool several = !findings.empty() && findings.front().line != findings.back().line;
            withSeveralLines += several ? 1U : 0U;
        }
    }
    EXPECT_GT(withSeveralLines, 0U);
}

TEST(CatalogueCheck, NamesEachRuleOnceAndInLowerCase) {
    std::set<std::string_view> identifiers;
    for (const RuleText& text : allRuleTexts()) {
        EXPECT_TRUE(identifiers.insert(text.identifier).second) << text.identifier;
        EXPECT_EQ(text.identifier.find_first_not_of("abcdefghijklmnopqrstuvwxyz-"),
                  std::string_view::npos)
            << text.identifier;
        EXPECT_TRUE(text.explanation.ends_with('.')) << text.identifier;
        EXPECT_TRUE(text.advice.ends_with('.')) << text.identifier;
    }
}

TEST(CatalogueCheck, ShowsEachRuleByAFixture) {
    std::set<std::string_view> shown;
    for (const auto& entry : std::filesystem::directory_iterator(kFixtures)) {
        if (entry.path().extension() == ".txt") {
            for (const Finding& finding : checkFile(entry.path())) {
                shown.insert(textOf(finding.rule).identifier);
            }
        }
    }
    for (const RuleText& text : allRuleTexts()) {
        EXPECT_TRUE(shown.contains(text.identifier)) << text.identifier;
    }
}

TEST(CatalogueCheck, IsDocumentedRuleByRule) {
    const std::string page = support::readFile(VEXTA_SOURCE_DIR "/docs/formats/definition-file.md");
    for (const RuleText& text : allRuleTexts()) {
        const bool isError = text.severity == Finding::Severity::error;
        const std::string start =
            "| `" + std::string(text.identifier) + "` | " + (isError ? "error" : "warning") + " | ";
        EXPECT_NE(page.find(start), std::string::npos) << start;
    }
}

TEST(CatalogueCheck, ShowsLettersThatCannotBePrintedInHexadecimal) {
    const Catalogue catalogue = loadText("*D control\n>m AC GT R1 0.1 0.1 0.1 1\nAC\xFF\x1BGT\n");
    EXPECT_NE(textOf(checkCatalogue(catalogue, {})).find("its core holds \\xFF, \\x1B,"),
              std::string::npos);
}

} // namespace
} // namespace catalogue
