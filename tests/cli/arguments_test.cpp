// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include "cli/arguments.h"

#include <cstdlib>
#include <string>
#include <vector>

#include <gmock/gmock.h>

namespace {

using cli::Command;
using cli::Outcome;
using cli::ParsedArguments;
using testing::HasSubstr;

ParsedArguments parse(std::vector<std::string> words) {
    words.insert(words.begin(), "vexta");
    std::vector<const char*> argv;
    argv.reserve(words.size());
    for (const std::string& word : words) {
        argv.push_back(word.c_str());
    }
    return cli::parseArguments(static_cast<int>(argv.size()), argv.data());
}

void expectRefused(const std::vector<std::string>& words, const std::string& reason) {
    const ParsedArguments parsed = parse(words);
    EXPECT_FALSE(parsed.arguments) << reason;
    EXPECT_EQ(parsed.outcome, Outcome::unusable);
    EXPECT_THAT(parsed.message, HasSubstr(reason));
}

TEST(Arguments, AnalyzeTakesAFileAndPrintsTheSummaryByDefault) {
    const auto parsed = parse({"analyze", "x_S1_L001_R1_001.fastq"});
    ASSERT_TRUE(parsed.arguments) << parsed.message;
    EXPECT_EQ(parsed.arguments->command, Command::analyze);
    EXPECT_EQ(parsed.arguments->input, "x_S1_L001_R1_001.fastq");
    EXPECT_EQ(parsed.arguments->outputs.summary, cli::kStandardOutput);
    EXPECT_FALSE(parsed.arguments->workingCopies);
    EXPECT_FALSE(parsed.arguments->quiet);
}

TEST(Arguments, ANamedOutputReplacesTheDefaultOne) {
    const auto parsed = parse({"analyze-all", "--json", "-", "--report", "r.txt", "DIR"});
    ASSERT_TRUE(parsed.arguments) << parsed.message;
    EXPECT_EQ(parsed.arguments->command, Command::analyzeAll);
    EXPECT_EQ(parsed.arguments->outputs.json, "-");
    EXPECT_EQ(parsed.arguments->outputs.report, "r.txt");
    EXPECT_EQ(parsed.arguments->outputs.summary, std::nullopt);
}

TEST(Arguments, UnassignedPairsDoNotReplaceTheDefaultOutput) {
    const auto parsed = parse({"analyze", "--unassigned", "u.txt", "x.fastq"});
    ASSERT_TRUE(parsed.arguments) << parsed.message;
    EXPECT_EQ(parsed.arguments->outputs.unassigned, "u.txt");
    EXPECT_EQ(parsed.arguments->outputs.summary, cli::kStandardOutput);
}

TEST(Arguments, SettingsAreTyped) {
    const auto parsed =
        parse({"analyze", "--set", "nD1Threshold=-12", "--set", "calculateFalsePositiveRate=true",
               "--set", "nD2Threshold=1x", "--set", "copyNumberOfInternalControl=", "x.fastq"});
    ASSERT_TRUE(parsed.arguments) << parsed.message;
    EXPECT_EQ(parsed.arguments->input, "x.fastq");
    const auto& settings = parsed.arguments->settings;
    EXPECT_EQ(settings.at("nD1Threshold"), settings::SettingValue(std::int64_t{-12}));
    EXPECT_EQ(settings.at("calculateFalsePositiveRate"), settings::SettingValue(true));
    EXPECT_EQ(settings.at("nD2Threshold"), settings::SettingValue(std::string("1x")));
    EXPECT_EQ(settings.at("copyNumberOfInternalControl"), settings::SettingValue(std::string()));
}

TEST(Arguments, TheLastOfTwoEqualSettingsHolds) {
    const auto parsed =
        parse({"analyze", "--set", "nD1Threshold=1", "--set", "nD1Threshold=2", "x.fastq"});
    ASSERT_TRUE(parsed.arguments) << parsed.message;
    EXPECT_EQ(parsed.arguments->settings.at("nD1Threshold"),
              settings::SettingValue(std::int64_t{2}));
}

TEST(Arguments, AMisspelledSettingIsRefusedAndTheKnownOnesAreNamed) {
    expectRefused({"analyze", "--set", "nD1Treshold=10", "x.fastq"},
                  "--set nD1Treshold=10: unknown key; known are nD1Threshold");
}

TEST(Arguments, ASettingWithoutValueOrBeyondTheRangeIsRefused) {
    expectRefused({"analyze", "--set", "nD1Threshold", "x.fastq"}, "expected KEY=VALUE");
    expectRefused({"analyze", "--set", "=1", "x.fastq"}, "expected KEY=VALUE");
    expectRefused({"analyze", "--set", "nD1Threshold=99999999999999999999", "x.fastq"},
                  "out of range");
}

TEST(Arguments, ThreadsAreBounded) {
    const auto parsed = parse({"analyze", "--threads", "3", "x.fastq"});
    ASSERT_TRUE(parsed.arguments) << parsed.message;
    EXPECT_EQ(parsed.arguments->threads, 3U);
    expectRefused({"analyze", "--threads", "0", "x.fastq"}, "--threads");
    expectRefused({"analyze", "--threads", "257", "x.fastq"}, "--threads");
    expectRefused({"analyze", "--threads", "-1", "x.fastq"}, "--threads");
    expectRefused({"analyze", "--threads", "two", "x.fastq"}, "--threads");
}

TEST(Arguments, ContradictionsAreRefused) {
    expectRefused({"analyze", "--direct", "--working-copies", "x.fastq"}, "exclude each other");
    expectRefused({"analyze", "--working-copies", "--unassigned", "u.txt", "x.fastq"},
                  "--unassigned u.txt: needs direct reading");
    expectRefused({"analyze-all", "--unassigned", "u.txt", "DIR"}, "--unassigned");
}

TEST(Arguments, MissingAndSurplusWordsAreRefused) {
    expectRefused({}, "expected a command: analyze, analyze-all, show, digest or catalogue");
    expectRefused({"analyse", "x.fastq"}, "analyse: no such command");
    expectRefused({"analyze"}, "FASTQ");
    expectRefused({"analyze", "a.fastq", "b.fastq"}, "b.fastq");
    expectRefused({"analyze", "--report"}, "--report");
    expectRefused({"analyze", "--no-such-option", "x.fastq"}, "--no-such-option");
    expectRefused({"catalogue"}, "catalogue: expected list or check");
    expectRefused({"catalogue", "show"}, "show: no such command");
}

TEST(Arguments, TwoFilesMayStandInPlaceOfOne) {
    const auto parsed =
        parse({"analyze", "--r1", "a", "--r2", "b", "--sample", "S", "--number", "7"});
    ASSERT_TRUE(parsed.arguments) << parsed.message;
    EXPECT_EQ(parsed.arguments->read1Path, "a");
    EXPECT_EQ(parsed.arguments->read2Path, "b");
    EXPECT_EQ(parsed.arguments->sample, "S");
    EXPECT_EQ(parsed.arguments->number, "7");
    EXPECT_EQ(parsed.arguments->input, "");
    expectRefused({"analyze", "--r1", "a"}, "need each other");
    expectRefused({"analyze", "--r2", "b"}, "need each other");
    expectRefused({"analyze", "--r1", "a", "--r2", "b", "x.fastq"}, "x.fastq: --r1 and --r2");
    expectRefused({"analyze", "--r1", "a", "--r2", "b", "--lanes", "all"}, "--lanes all");
    expectRefused({"analyze", "--r1", "a", "--r2", "b", "--number", "007"}, "--number 007");
    expectRefused({"analyze", "--r1", "a", "--r2", "b", "--sample", ""}, "--sample");
    expectRefused({"analyze", "--number", "7", "x.fastq"}, "--sample and --number need --r1");
}

TEST(Arguments, ASampleSheetMayStandInPlaceOfADirectory) {
    const auto parsed = parse({"analyze-all", "--sample-sheet", "s.tsv"});
    ASSERT_TRUE(parsed.arguments) << parsed.message;
    EXPECT_EQ(parsed.arguments->sampleSheet, "s.tsv");
    EXPECT_TRUE(parse({"analyze-all", "--sample-sheet", "s.tsv", "DIR"}).arguments);
    expectRefused({"analyze-all"}, "expected a DIRECTORY, or --sample-sheet");
    for (const char* option : {"--any-name", "--skip-unpaired", "--allow-shared-numbers"}) {
        expectRefused({"analyze-all", "--sample-sheet", "s.tsv", option}, "names the files itself");
    }
    expectRefused({"analyze-all", "--sample-sheet", "s.tsv", "--lanes", "all"},
                  "names the files itself");
}

TEST(Arguments, LanesAreAllOrThoseOfTheRule) {
    const auto parsed = parse({"analyze-all", "--lanes", "all", "DIR"});
    ASSERT_TRUE(parsed.arguments) << parsed.message;
    EXPECT_TRUE(parsed.arguments->everyLane);
    EXPECT_FALSE(parse({"analyze-all", "DIR"}).arguments->everyLane);
    expectRefused({"analyze", "--lanes", "1", "x.fastq"}, "--lanes");
}

TEST(Arguments, InputsByOtherNamesAreReadWhereTheyAre) {
    expectRefused({"analyze", "--working-copies", "--r1", "a", "--r2", "b"},
                  "--r1 and --r2: needs direct reading");
    expectRefused({"analyze", "--working-copies", "--lanes", "all", "x.fastq"},
                  "--lanes all: needs direct reading");
    expectRefused({"analyze-all", "--working-copies", "--sample-sheet", "s.tsv"},
                  "--sample-sheet: needs direct reading");
    expectRefused({"analyze-all", "--working-copies", "--any-name", "DIR"},
                  "--any-name: needs direct reading");
    EXPECT_TRUE(parse({"analyze-all", "--working-copies", "--skip-unpaired", "DIR"}).arguments);
    EXPECT_TRUE(parse({"analyze", "--unassigned", "u", "--lanes", "all", "x.fastq"}).arguments);
}

TEST(Arguments, AnOutputGivenTwiceIsRefused) {
    expectRefused({"analyze", "--json", "a", "--json", "b", "x.fastq"}, "--json");
}

TEST(Arguments, CatalogueCommandsTakeACatalogue) {
    const auto list = parse({"catalogue", "list", "--catalogue", "c.txt"});
    ASSERT_TRUE(list.arguments) << list.message;
    EXPECT_EQ(list.arguments->command, Command::catalogueList);
    EXPECT_EQ(list.arguments->cataloguePath, "c.txt");
    const auto check = parse({"catalogue", "check", "--set", "nD1Threshold=7"});
    ASSERT_TRUE(check.arguments) << check.message;
    EXPECT_EQ(check.arguments->command, Command::catalogueCheck);
}

/// VEXTA_CATALOGUE for one test; whoever runs the tests may have set it, too.
class CatalogueVariable : public testing::Test {
protected:
    static void set(const char* value) { ::setenv(cli::kCatalogueVariable, value, 1); }
    ~CatalogueVariable() override { ::unsetenv(cli::kCatalogueVariable); }
};

TEST_F(CatalogueVariable, NamesTheCatalogueWhereNoOptionDoes) {
    set("own.txt");
    for (const auto& words : {std::vector<std::string>{"analyze", "x.fastq"},
                              {"analyze-all", "DIR"},
                              {"catalogue", "list"},
                              {"catalogue", "check"}}) {
        const auto parsed = parse(words);
        ASSERT_TRUE(parsed.arguments) << parsed.message;
        EXPECT_EQ(parsed.arguments->cataloguePath, "own.txt");
        EXPECT_EQ(parsed.arguments->catalogueNamedBy, "VEXTA_CATALOGUE");
    }
}

TEST_F(CatalogueVariable, GivesWayToTheOption) {
    set("own.txt");
    const auto parsed = parse({"analyze", "--catalogue", "c.txt", "x.fastq"});
    ASSERT_TRUE(parsed.arguments) << parsed.message;
    EXPECT_EQ(parsed.arguments->cataloguePath, "c.txt");
    EXPECT_EQ(parsed.arguments->catalogueNamedBy, "--catalogue");
}

TEST_F(CatalogueVariable, CountsAsUnsetWhereItIsEmpty) {
    set("");
    const auto parsed = parse({"analyze", "x.fastq"});
    ASSERT_TRUE(parsed.arguments) << parsed.message;
    EXPECT_EQ(parsed.arguments->cataloguePath, std::nullopt);
}

TEST(Arguments, CatalogueCheckExplainsOrPrintsJson) {
    const auto plain = parse({"catalogue", "check"});
    ASSERT_TRUE(plain.arguments) << plain.message;
    EXPECT_FALSE(plain.arguments->check.explain);
    EXPECT_FALSE(plain.arguments->check.json);
    const auto explain = parse({"catalogue", "check", "--explain"});
    ASSERT_TRUE(explain.arguments) << explain.message;
    EXPECT_TRUE(explain.arguments->check.explain);
    const auto json = parse({"catalogue", "check", "--json"});
    ASSERT_TRUE(json.arguments) << json.message;
    EXPECT_TRUE(json.arguments->check.json);
    // Every object of the array has the explanations.
    expectRefused({"catalogue", "check", "--explain", "--json"}, "--explain");
    expectRefused({"catalogue", "list", "--explain"}, "--explain");
}

TEST(Arguments, CatalogueCheckTakesTheLengthOfReads) {
    const auto usual = parse({"catalogue", "check"});
    ASSERT_TRUE(usual.arguments) << usual.message;
    EXPECT_EQ(usual.arguments->check.readLength, 150U);
    const auto given = parse({"catalogue", "check", "--read-length", "75"});
    ASSERT_TRUE(given.arguments) << given.message;
    EXPECT_EQ(given.arguments->check.readLength, 75U);
    for (const char* const wrong : {"0", "510", "-1", "long"}) {
        expectRefused({"catalogue", "check", "--read-length", wrong}, "--read-length");
    }
}

TEST(Arguments, AFileNameMayBeginWithADashAfterTwoDashes) {
    const auto parsed = parse({"analyze", "--", "-x_S1_L001_R1_001.fastq"});
    ASSERT_TRUE(parsed.arguments) << parsed.message;
    EXPECT_EQ(parsed.arguments->input, "-x_S1_L001_R1_001.fastq");
}

TEST(Arguments, HelpShowsExamplesAndTheExitStatus) {
    for (const auto& words : {std::vector<std::string>{"--help"},
                              {"analyze", "--help"},
                              {"analyze-all", "--help"},
                              {"catalogue", "list", "--help"},
                              {"catalogue", "check", "--help"}}) {
        const auto parsed = parse(words);
        EXPECT_FALSE(parsed.arguments);
        EXPECT_EQ(parsed.outcome, Outcome::success);
        EXPECT_THAT(parsed.message,
                    HasSubstr("Examples:\n  vexta " + (words.size() > 1 ? words[0] : "analyze")));
        EXPECT_THAT(parsed.message, HasSubstr("Exit status:\n"));
    }
}

TEST(Arguments, VersionIsOneLine) {
    const auto parsed = parse({"--version"});
    EXPECT_EQ(parsed.outcome, Outcome::success);
    EXPECT_THAT(parsed.message, testing::MatchesRegex("vexta 0\\.1\\.0 \\(\\.gz by .*\\)\n"));
}

} // namespace
