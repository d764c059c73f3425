// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include <filesystem>

#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

#include "program.h"

namespace {

using program::Finished;
using testing::HasSubstr;

class CatalogueCommand : public program::ProgramTest {};

TEST_F(CatalogueCommand, ListsEveryMutationAsATable) {
    const Finished finished = run({"catalogue", "list", "--catalogue", cataloguePath()});
    EXPECT_EQ(finished.status, 0);
    EXPECT_EQ(finished.out, "Domain\tType\tMutation\tStrand\tCore length\tReference frequency\t"
                            "False-positive rate\tFalse-negative rate\tInformative reads\n"
                            "KRAS\tSomaticDNA\tKRAS_wt\tR1\t40\t0.001\t0.001\t0.001\t30\n"
                            "KRAS\tSomaticDNA\tKRAS_G12D\tR1\t40\t0.001\t0.001\t0.001\t30\n");
    EXPECT_EQ(finished.err, "");
}

TEST_F(CatalogueCommand, TheCatalogueThatShipsIsListedAndHasNoError) {
    const Finished list = run({"catalogue", "list"});
    EXPECT_EQ(list.status, 0) << list.err;
    EXPECT_THAT(list.out, HasSubstr("\nBIM\tGermline\t"));
    const Finished check = run({"catalogue", "check"});
    EXPECT_EQ(check.status, 0) << check.out;
    EXPECT_THAT(check.out, HasSubstr("ReferenceNucleotideSequence.txt: 0 errors, "));
}

TEST_F(CatalogueCommand, CheckNamesFileAndLineAndFailsOnErrors) {
    const std::string path = outputs().write(
        "faulty.txt", "*KRAS SomaticDNA\n>KRAS_wt GGGG CCCC R1 0.1 0.1 0.1 1\nACGTACGT\n");
    const Finished finished = run({"catalogue", "check", "--catalogue", path});
    EXPECT_EQ(finished.status, 1);
    EXPECT_THAT(finished.out, HasSubstr(path + ":2: error: "));
    EXPECT_THAT(finished.out, testing::ContainsRegex("faulty.txt: [1-9][0-9]* errors?, "));
    EXPECT_EQ(finished.err, "");
}

TEST_F(CatalogueCommand, CheckExplainsEachFinding) {
    const std::string path = outputs().write(
        "faulty.txt", "*KRAS SomaticDNA\n>KRAS_wt GGGG CCCC R1 0.1 0.1 0.1 1\nACGTACGT\n");
    const Finished finished = run({"catalogue", "check", "--catalogue", path, "--explain"});
    EXPECT_EQ(finished.status, 1);
    EXPECT_THAT(finished.out, testing::ContainsRegex("faulty.txt:2: error: [^\n]*\n"
                                                     "    what happens: No run starts[^\n]*\n"
                                                     "    what to do: [^\n]*\n"));
}

TEST_F(CatalogueCommand, CheckPrintsJsonAndKeepsItsStatus) {
    const std::string path = outputs().write(
        "faulty.txt", "*KRAS SomaticDNA\n>KRAS_wt GGGG CCCC R1 0.1 0.1 0.1 1\nACGTACGT\n");
    const Finished faulty = run({"catalogue", "check", "--catalogue", path, "--json"});
    EXPECT_EQ(faulty.status, 1);
    const auto findings = nlohmann::json::parse(faulty.out);
    ASSERT_TRUE(findings.is_array());
    std::vector<std::string> rules;
    for (const auto& finding : findings) {
        EXPECT_EQ(finding["file"], path);
        rules.push_back(finding["rule"]);
    }
    EXPECT_THAT(rules, testing::IsSupersetOf({"entry-faulty", "too-few-entries"}));
    const Finished sound = run({"catalogue", "check", "--catalogue", cataloguePath(), "--json"});
    EXPECT_EQ(sound.status, 0) << sound.out;
}

TEST_F(CatalogueCommand, CheckHoldsCoresAgainstTheLengthOfReads) {
    const auto check = [this](const char* readLength) {
        return run(
            {"catalogue", "check", "--catalogue", cataloguePath(), "--read-length", readLength});
    };
    // The cores have 40 bases.
    EXPECT_THAT(check("39").out, HasSubstr("more than a read of 39"));
    EXPECT_THAT(check("50").out, testing::Not(HasSubstr("a read of")));
    EXPECT_EQ(check("39").status, 0) << "reads may be longer than what the user thinks";
}

TEST_F(CatalogueCommand, AMutantOnTheOtherStrandAndALateWildTypeAreErrors) {
    const std::string left = "ACTTGTGGTAGTTGGAGCTG";
    const std::string right = "TGGCGTAGGCAAGAGTGCCT";
    const auto entry = [](const std::string& name, const std::string& sequence) {
        return ">" + name + " " + sequence.substr(0, 10) + " " +
               sequence.substr(sequence.size() - 10) + " R1 0.001 0.0001 0.05 1000\n" + sequence +
               "\n";
    };
    const std::string wildType = entry("KRAS_wt", left + "G" + right);
    const std::string mutant = entry("KRAS_G12D", left + "A" + right);
    const std::string reversed = entry("KRAS_G12D", "AGGCACTCTTGCCTACGCCATCAGCTCCAACTACCACAAGT");
    const auto check = [&](const std::string& entries) {
        const std::string path =
            outputs().write("panel.txt", "*KRAS SomaticDNA\n" + entries + "//EntryEnds\n");
        return run({"catalogue", "check", "--catalogue", path});
    };
    EXPECT_EQ(check(wildType + mutant).status, 0);
    const Finished late = check(mutant + wildType);
    EXPECT_EQ(late.status, 1);
    EXPECT_THAT(late.out, HasSubstr("panel.txt:4: error: mutation KRAS_wt: its name says wild"));
    const Finished other = check(wildType + reversed);
    EXPECT_EQ(other.status, 1);
    EXPECT_THAT(other.out, HasSubstr("panel.txt:4: error: mutation KRAS_G12D: it is like its wild "
                                     "type KRAS_wt (line 2) only after"));
}

TEST_F(CatalogueCommand, AFileThatCannotBeOpenedIsNamedAndNothingIsPrinted) {
    for (const char* command : {"check", "list"}) {
        const Finished finished =
            run({"catalogue", command, "--catalogue", outputs().file("missing.txt")});
        EXPECT_EQ(finished.status, 2) << command;
        EXPECT_EQ(finished.out, "");
        EXPECT_THAT(finished.err, HasSubstr(outputs().file("missing.txt")));
    }
}

TEST_F(CatalogueCommand, CheckStoresNoSettings) {
    run({"catalogue", "check", "--catalogue", cataloguePath()});
    EXPECT_EQ(program::snapshot(home().path()).count(home().file("config")), 0U);
}

TEST_F(CatalogueCommand, CheckSetsNoDamagedSettingsAside) {
    std::filesystem::create_directories(home().file("config/vexta"));
    home().write("config/vexta/settings.json", "damaged");
    const auto before = program::snapshot(home().file("config/vexta"));
    const Finished finished = run({"catalogue", "check", "--catalogue", cataloguePath()});
    EXPECT_NE(finished.status, 2);
    EXPECT_THAT(finished.err, HasSubstr(settingsPath()));
    EXPECT_EQ(program::snapshot(home().file("config/vexta")), before);
}

TEST_F(CatalogueCommand, CheckRefusesANamedFileThatHoldsNoSettings) {
    const std::string catalogue = support::readFile(cataloguePath());
    const Finished finished =
        run({"catalogue", "check", "--catalogue", cataloguePath(), "--settings", cataloguePath()});
    EXPECT_EQ(finished.status, 2);
    EXPECT_THAT(finished.err, HasSubstr("--settings: " + cataloguePath()));
    EXPECT_EQ(support::readFile(cataloguePath()), catalogue);
    EXPECT_FALSE(std::filesystem::exists(cataloguePath() + ".damaged"));
}

TEST_F(CatalogueCommand, CheckTakesTheThresholdOfANamedFileAndOfSet) {
    // With this threshold a positive call without any mutant read is possible.
    const std::string settings = outputs().write("s.json", R"({"nD1Threshold": "1"})");
    const auto before = program::snapshot(outputs().path());
    const Finished named =
        run({"catalogue", "check", "--catalogue", cataloguePath(), "--settings", settings});
    const Finished given =
        run({"catalogue", "check", "--catalogue", cataloguePath(), "--set", "nD1Threshold=1"});
    const Finished first = run({"catalogue", "check", "--catalogue", cataloguePath()});
    EXPECT_EQ(named.out, given.out);
    EXPECT_NE(named.out, first.out);
    EXPECT_EQ(program::snapshot(outputs().path()), before);
}

TEST_F(CatalogueCommand, AnUnreadableCatalogueIsUnusable) {
    for (const char* command : {"list", "check"}) {
        for (const std::string& path : {outputs().file("missing"), outputs().path()}) {
            const Finished finished = run({"catalogue", command, "--catalogue", path});
            EXPECT_EQ(finished.status, 2);
            EXPECT_EQ(finished.out, "");
            EXPECT_THAT(finished.err, HasSubstr(path));
        }
    }
}

TEST_F(CatalogueCommand, AFullStandardOutputIsAFailure) {
    const Finished finished =
        runInto("/dev/full", {"catalogue", "list", "--catalogue", cataloguePath()});
    EXPECT_EQ(finished.status, 1);
    EXPECT_THAT(finished.err, HasSubstr("cannot write to standard output"));
}

} // namespace
