// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include <filesystem>
#include <fstream>

#include <gmock/gmock.h>
#include <nlohmann/json.hpp>
#include <sys/resource.h>
#include <sys/stat.h>

#include "platform/files.h"
#include "program.h"

namespace {

namespace fs = std::filesystem;
using nlohmann::json;
using program::fastq;
using program::Finished;
using program::gzipped;
using program::snapshot;
using testing::HasSubstr;

class Analyze : public program::ProgramTest {
protected:
    /// Runs it and expects that the inputs' directory stays as it was.
    Finished runUntouched(const std::vector<std::string>& arguments) const {
        const auto before = snapshot(inputs().path());
        const Finished finished = run(arguments);
        EXPECT_EQ(snapshot(inputs().path()), before) << finished.err;
        return finished;
    }
    std::string summaryOf(const std::string& file, const std::string& cells) const {
        return "File\tMutation\tMutantCellPercent or Read#\tND *1\tOAZ-1 reads\tBIM type\n" +
               platform::lastPathComponent(inputs().path()) + "/" + file + "\t" + cells + "\n";
    }
};

TEST_F(Analyze, PrintsTheSummaryTableAndNothingElse) {
    const std::string read1 = writePair("P_S1_L001");
    const Finished finished = runUntouched({"analyze", "--set", "nD1Threshold=10", read1});
    EXPECT_EQ(finished.status, 0);
    EXPECT_EQ(finished.out, summaryOf("P_S1_L001_R1_001.fastq", "KRAS_G12D\t75.0%\t\t\t"));
    EXPECT_EQ(finished.err, "");
}

TEST_F(Analyze, ThresholdOfTheFirstRunAsksForFiveHundredReads) {
    const Finished finished = runUntouched({"analyze", writePair("P_S1_L001")});
    EXPECT_EQ(finished.status, 0);
    EXPECT_EQ(finished.out, summaryOf("P_S1_L001_R1_001.fastq", "Negative\t\tKRAS\t\t"));
}

TEST_F(Analyze, Read2OrARelativeNameGiveTheSamePatient) {
    const std::string read1 = writePair("P_S1_L001");
    const Finished fromRead1 = run({"analyze", read1});
    const Finished fromRead2 = run({"analyze", inputs().file("./P_S1_L001_R2_001.fastq")});
    EXPECT_EQ(fromRead2.status, 0);
    EXPECT_EQ(fromRead1.out, fromRead2.out);
}

TEST_F(Analyze, GzipInputOfSeveralMembersGivesTheSameAsPlain) {
    const Finished plain = run({"analyze", writePair("P_S1_L001")});
    fs::remove(inputs().file("P_S1_L001_R1_001.fastq"));
    const std::string text = ordinaryRead1();
    const std::string read1 = inputs().write(
        "P_S1_L001_R1_001.fastq.gz", gzipped(text.substr(0, 5000)) + gzipped(text.substr(5000)));
    const Finished packed = runUntouched({"analyze", read1});
    EXPECT_EQ(packed.status, 0) << packed.err;
    EXPECT_EQ(packed.out, summaryOf("P_S1_L001_R1_001.fastq.gz", "Negative\t\tKRAS\t\t"));
    EXPECT_THAT(plain.out, HasSubstr("Negative\t\tKRAS\t\t"));
}

TEST_F(Analyze, WritesEveryOutputItIsAskedFor) {
    const std::string read1 = writePair("P_S1_L001");
    const Finished finished =
        runUntouched({"analyze", "--report", outputs().file("r"), "--summary", outputs().file("s"),
                      "--json", outputs().file("j"), "--unassigned", outputs().file("u"), read1});
    EXPECT_EQ(finished.status, 0) << finished.err;
    EXPECT_EQ(finished.out, "");
    EXPECT_THAT(support::readFile(outputs().file("r")),
                HasSubstr("P_S1_L001_R2_001.fastq\nTotalNumberOfReads\t200\nReadsMapped\t160\n"
                          "ReadsFailedToBeMapped\t40\n\nKRAS_wt\t100\nKRAS_G12D\t60\n"));
    EXPECT_EQ(support::readFile(outputs().file("s")),
              summaryOf("P_S1_L001_R1_001.fastq", "Negative\t\tKRAS\t\t"));
    const json document = json::parse(support::readFile(outputs().file("j")));
    EXPECT_EQ(document["selectedPatientRowNo"], 0);
    const json& patient = document["summaryForEachPatientMutAr"].at(0);
    EXPECT_EQ(patient["patientNo"], "1");
    EXPECT_EQ(patient["fastqFileDir"], inputs().path());
    EXPECT_EQ(patient["mutDomains"][0]["mutationMutAr"][1]["match"], 60);
    EXPECT_EQ(patient["somaticDNAResultMutAr"][0]["mutDomain"], "KRAS");
    std::string unassigned;
    for (int i = 0; i < 40; ++i) {
        unassigned += kNothing + "\n" + std::string(kNothing.size(), 'A') + "\n";
    }
    EXPECT_EQ(support::readFile(outputs().file("u")), unassigned);
    EXPECT_EQ(snapshot(outputs().path()).size(), 5U); // the four and the directory itself
}

TEST_F(Analyze, UnassignedPairsMayGoToStandardOutput) {
    const Finished finished = runUntouched(
        {"analyze", "--summary", outputs().file("s"), "--unassigned", "-", writePair("P_S1_L001")});
    EXPECT_EQ(finished.status, 0) << finished.err;
    EXPECT_EQ(finished.out.size(), 40 * 2 * (kNothing.size() + 1));
    EXPECT_EQ(snapshot(outputs().path()).size(), 2U);
}

TEST_F(Analyze, WorkingCopiesGiveTheSameResult) {
    const Finished direct = run({"analyze", writePair("P_S1_L001")});
    const auto before = snapshot(inputs().path());
    const Finished copied =
        run({"analyze", "--working-copies", inputs().file("P_S1_L001_R1_001.fastq")});
    EXPECT_EQ(copied.status, 0) << copied.err;
    EXPECT_EQ(copied.out, direct.out);
    auto after = snapshot(inputs().path());
    after["."] = before.at("."); // files came and went
    EXPECT_EQ(after, before);
}

TEST_F(Analyze, FirstRunStoresTheSettingsOfADocumentWithAWindow) {
    run({"analyze", writePair("P_S1_L001")});
    EXPECT_EQ(json::parse(support::readFile(settingsPath())),
              json::parse(R"({"leaveIntermediateFiles": false, "calculateFalsePositiveRate": false,
                              "nD1Threshold": "500", "nD2Threshold": "10", "windowSizeMidi": false,
                              "copyNumberOfInternalControl": "100000"})"));
}

TEST_F(Analyze, ASettingsFileIsReadAndAValueForOneRunIsNotStored) {
    const std::string settings =
        outputs().write("settings.json", R"({"nD1Threshold": 10, "unknown": [1]})");
    const std::string read1 = writePair("P_S1_L001");
    const Finished stored = run({"analyze", "--settings", settings, read1});
    EXPECT_THAT(stored.out, HasSubstr("\tKRAS_G12D\t75.0%\t"));
    const Finished once =
        run({"analyze", "--settings", settings, "--set", "nD1Threshold=500", read1});
    EXPECT_THAT(once.out, HasSubstr("\tNegative\t\tKRAS\t"));
    const json after = json::parse(support::readFile(settings));
    EXPECT_EQ(after["nD1Threshold"], 10);
    EXPECT_EQ(after["unknown"], json::parse("[1]"));
    EXPECT_FALSE(fs::exists(settingsPath()));
}

TEST_F(Analyze, ADamagedPerUserSettingsFileIsReportedEvenWhenQuietAndSetAside) {
    fs::create_directories(platform::directoryOf(settingsPath()));
    home().write("config/vexta/settings.json", "{\"nD1Threshold\": ");
    const Finished finished = run({"analyze", "--quiet", writePair("P_S1_L001")});
    EXPECT_EQ(finished.status, 0);
    EXPECT_THAT(finished.err, HasSubstr(settingsPath()));
    EXPECT_TRUE(fs::exists(settingsPath() + ".damaged"));
}

TEST_F(Analyze, SettingsThatCannotBeReadEndTheCommandBeforeARun) {
    // A link to itself: what it holds nobody can tell, so first-run values may be wrong.
    fs::create_directories(platform::directoryOf(settingsPath()));
    fs::create_symlink(settingsPath(), settingsPath());
    const std::string read1 = writePair("P_S1_L001");
    const Finished perUser = run({"analyze", "--json", outputs().file("j"), read1});
    EXPECT_EQ(perUser.status, 2);
    EXPECT_THAT(perUser.err, HasSubstr(settingsPath()));
    const Finished named =
        run({"analyze", "--settings", settingsPath(), "--json", outputs().file("j"), read1});
    EXPECT_EQ(named.status, 2);
    EXPECT_FALSE(fs::exists(outputs().file("j")));
    EXPECT_TRUE(fs::is_symlink(settingsPath()));
    EXPECT_EQ(run({"catalogue", "check", "--catalogue", cataloguePath()}).status, 2);
}

TEST_F(Analyze, ANamedSettingsFileThatIsNoneIsUnusableAndLeftAlone) {
    const std::string settings = outputs().write("notes.txt", "not a JSON object");
    const Finished finished = runUntouched(
        {"analyze", "--settings", settings, "--json", outputs().file("j"), writePair("P_S1_L001")});
    EXPECT_EQ(finished.status, 2);
    EXPECT_THAT(finished.err, HasSubstr("--settings: " + settings));
    EXPECT_EQ(support::readFile(settings), "not a JSON object");
    EXPECT_EQ(snapshot(outputs().path()).size(), 2U); // the file and the directory itself
}

TEST_F(Analyze, SettingsUnderTheNameOfAFileOfTheAnalysisAreRefused) {
    const std::string read1 = writePair("P_S1_L001");
    const std::string catalogue = support::readFile(cataloguePath());
    for (const std::string& path :
         {read1, inputs().file("P_S1_L001_R2_001.fastq"), inputs().file("_P_S1_L001_R1_001.fastq"),
          inputs().file("_P_S1_L001.failedToBeAssignedReads"), cataloguePath()}) {
        const Finished finished =
            runUntouched({"analyze", "--working-copies", "--settings", path, read1});
        EXPECT_EQ(finished.status, 2) << path;
        EXPECT_THAT(finished.err, HasSubstr("the settings file " + path)) << path;
    }
    EXPECT_EQ(support::readFile(cataloguePath()), catalogue);
    EXPECT_FALSE(fs::exists(cataloguePath() + ".damaged"));
}

TEST_F(Analyze, ACatalogueUnderTheNameOfAWorkingCopyIsRefused) {
    const std::string read1 = writePair("P_S1_L001");
    const std::string catalogue = inputs().write("_P_S1_L001_R1_001.fastq", "*A SomaticDNA\n");
    home().write("catalogue.txt", "");
    fs::remove(cataloguePath());
    fs::create_symlink(catalogue, cataloguePath());
    const Finished finished = runUntouched({"analyze", "--working-copies", read1});
    EXPECT_EQ(finished.status, 2);
    EXPECT_THAT(finished.err, HasSubstr("the catalogue " + cataloguePath()));
}

TEST_F(Analyze, AMissingMateIsUnusableAndTheNamesLookedForAreGiven) {
    const std::string read1 = writePair("P_S1_L001");
    fs::remove(inputs().file("P_S1_L001_R2_001.fastq"));
    const Finished finished = runUntouched({"analyze", read1});
    EXPECT_EQ(finished.status, 2);
    EXPECT_EQ(finished.out, "");
    EXPECT_THAT(finished.err, HasSubstr("Files are not paired or incompatible."));
    EXPECT_THAT(finished.err, HasSubstr("P_S1_L001_R2_001.fastq.gz in " + inputs().path()));
}

TEST_F(Analyze, AMissingFileADirectoryAndAFifoAreUnusable) {
    ASSERT_EQ(mkfifo(inputs().file("F_S1_L001_R1_001.fastq").c_str(), 0600), 0);
    ASSERT_EQ(mkfifo(inputs().file("F_S1_L001_R2_001.fastq").c_str(), 0600), 0);
    fs::create_directory(inputs().file("D_S1_L001_R1_001.fastq"));
    for (const char* name : {"missing_S1_L001_R1_001.fastq", "D_S1_L001_R1_001.fastq",
                             "F_S1_L001_R1_001.fastq", "."}) {
        const Finished finished = runUntouched({"analyze", inputs().file(name)});
        EXPECT_EQ(finished.status, 2) << name;
        EXPECT_THAT(finished.err, HasSubstr("vexta: ")) << name;
        EXPECT_THAT(finished.err, HasSubstr(inputs().path())) << name;
    }
}

TEST_F(Analyze, AFifoInPlaceOfTheMateIsUnusableAndNeverAHang) {
    const std::string read1 = writePair("P_S1_L001");
    const std::string read2 = inputs().file("P_S1_L001_R2_001.fastq");
    fs::remove(read2);
    ASSERT_EQ(mkfifo(read2.c_str(), 0600), 0);
    const Finished finished = runUntouched({"analyze", read1});
    EXPECT_EQ(finished.status, 2);
    EXPECT_THAT(finished.err, HasSubstr(read2));
}

TEST_F(Analyze, ANameWithoutPatientNumberIsUnusable) {
    const Finished finished = runUntouched({"analyze", writePair("P_L001")});
    EXPECT_EQ(finished.status, 2);
    EXPECT_THAT(finished.err, HasSubstr("P_L001_R1_001.fastq"));
    EXPECT_THAT(finished.err, HasSubstr("_S"));
}

TEST_F(Analyze, ACatalogueThatCannotBeOpenedIsUnusable) {
    const std::string read1 = writePair("P_S1_L001");
    fs::remove(cataloguePath());
    const Finished finished = runUntouched({"analyze", read1});
    EXPECT_EQ(finished.status, 2);
    EXPECT_THAT(finished.err, HasSubstr("--catalogue: "));
    EXPECT_THAT(finished.err, HasSubstr(cataloguePath()));
}

TEST_F(Analyze, TheCatalogueOfTheEnvironmentIsUsedAndNamed) {
    const std::string read1 = writePair("P_S1_L001");
    shipCatalogue();
    home().write("resources/ReferenceNucleotideSequence.txt", "//EntryEnds\n");
    setVariable("VEXTA_CATALOGUE", cataloguePath());
    const Finished finished = run({"analyze", "--set", "nD1Threshold=10", read1});
    EXPECT_EQ(finished.status, 0);
    EXPECT_EQ(finished.out, summaryOf("P_S1_L001_R1_001.fastq", "KRAS_G12D\t75.0%\t\t\t"));
    EXPECT_EQ(finished.err, "vexta: VEXTA_CATALOGUE names the catalogue " + cataloguePath() + "\n");
    const Finished listed = run({"catalogue", "list"});
    EXPECT_THAT(listed.out, HasSubstr("KRAS_G12D"));
}

TEST_F(Analyze, TheCatalogueOfTheEnvironmentMustOpenAndTheVariableIsBlamed) {
    const std::string read1 = writePair("P_S1_L001");
    shipCatalogue();
    setVariable("VEXTA_CATALOGUE", home().file("missing.txt"));
    for (const auto& arguments :
         {std::vector<std::string>{"analyze", read1}, {"catalogue", "check"}}) {
        const Finished finished = run(arguments);
        EXPECT_EQ(finished.status, 2);
        EXPECT_EQ(finished.out, "");
        EXPECT_THAT(finished.err, HasSubstr("VEXTA_CATALOGUE: "));
        EXPECT_THAT(finished.err, HasSubstr(home().file("missing.txt")));
    }
}

TEST_F(Analyze, TheOptionWinsOverTheCatalogueOfTheEnvironment) {
    setVariable("VEXTA_CATALOGUE", home().file("missing.txt"));
    const Finished finished = run({"analyze", writePair("P_S1_L001")});
    EXPECT_EQ(finished.status, 0) << finished.err;
    EXPECT_EQ(finished.err, tooFewReadsOf("P_S1_L001_R1_001.fastq"));
}

TEST_F(Analyze, AShippedCatalogueThatIsMissingIsTheEmptyOneWithAWarning) {
    const std::string read1 = writePair("P_S1_L001");
    fs::remove(shipCatalogue());
    const Finished finished = run({"analyze", "--quiet", read1});
    EXPECT_EQ(finished.status, 0);
    EXPECT_EQ(finished.err, "vexta: warning: The catalogue could not be read: no target was "
                            "searched, every result is empty. The definition file that ships is "
                            "missing.\n"
                            "vexta: warning: P_S1_L001_R1_001.fastq: none of 200 read pairs is "
                            "mapped: nothing is assessable.\n");
    EXPECT_THAT(finished.out, HasSubstr("P_S1_L001_R1_001.fastq\t"));
}

TEST_F(Analyze, AShippedCatalogueThatIsMissingIsNotMentionedWhereNothingRuns) {
    fs::remove(shipCatalogue());
    const Finished finished = run({"analyze", inputs().write("P_S1_L001_R1_001.fastq", "")});
    EXPECT_EQ(finished.status, 2);
    EXPECT_THAT(finished.err, testing::Not(HasSubstr("catalogue")));
}

TEST_F(Analyze, AFaultyCatalogueIsUnusableAndEachFaultIsSaidOnce) {
    const std::string read1 = writePair("P_S1_L001");
    home().write("catalogue.txt", "*KRAS SomaticDNA\n>KRAS_wt GGGG CCCC R1 0 0 0 1\nACGTACGT\n");
    const Finished finished = runUntouched({"analyze", "--json", outputs().file("j"), read1});
    EXPECT_EQ(finished.status, 2);
    EXPECT_THAT(finished.err, HasSubstr(cataloguePath()));
    EXPECT_THAT(finished.err, HasSubstr("KRAS_wt"));
    EXPECT_EQ(finished.err.find("KRAS_wt"), finished.err.rfind("KRAS_wt"));
    EXPECT_FALSE(fs::exists(outputs().file("j")));
}

TEST_F(Analyze, DamagedGzipFailsTheRunAndWritesNothing) {
    writePair("P_S1_L001");
    fs::remove(inputs().file("P_S1_L001_R1_001.fastq"));
    const std::string whole = gzipped(ordinaryRead1());
    std::string damaged = whole;
    damaged[damaged.size() - 6] = static_cast<char>(damaged[damaged.size() - 6] ^ 1); // its CRC
    for (const std::string& bytes : {whole.substr(0, whole.size() / 2), damaged}) {
        const std::string read1 = inputs().write("P_S1_L001_R1_001.fastq.gz", bytes);
        const std::string older = outputs().write("j", "older result");
        const Finished finished = runUntouched({"analyze", "--summary", "-", "--report", older,
                                                "--unassigned", outputs().file("u"), read1});
        EXPECT_EQ(finished.status, 1);
        EXPECT_EQ(finished.out, "");
        EXPECT_THAT(finished.err, HasSubstr(read1));
        EXPECT_THAT(finished.err, HasSubstr("Error occurred for files " + read1 + " and "));
        EXPECT_EQ(support::readFile(older), "older result");
        EXPECT_EQ(snapshot(outputs().path()).size(), 2U);
    }
}

TEST_F(Analyze, ZeroPaddingIsAWarningThatQuietKeepsInBothModes) {
    writePair("P_S1_L001");
    fs::remove(inputs().file("P_S1_L001_R1_001.fastq"));
    const std::string read1 = inputs().write("P_S1_L001_R1_001.fastq.gz",
                                             gzipped(ordinaryRead1()) + std::string(4, '\0'));
    const std::string saying = "4 zero bytes between or after gzip members are ignored.\n";
    const Finished direct = runUntouched({"analyze", read1});
    EXPECT_EQ(direct.status, 0);
    EXPECT_THAT(direct.err, HasSubstr("vexta: warning: "));
    const Finished quiet = runUntouched({"analyze", "--quiet", read1});
    EXPECT_EQ(quiet.status, 0);
    const std::string both =
        "vexta: warning: " + read1 + ": " + saying + tooFewReadsOf("P_S1_L001_R1_001.fastq.gz");
    EXPECT_EQ(quiet.err, both);
    EXPECT_EQ(quiet.out, direct.out);
    const Finished copied = run({"analyze", "--quiet", "--working-copies", read1});
    EXPECT_EQ(copied.status, 0);
    EXPECT_EQ(copied.err, both);
    EXPECT_EQ(copied.out, direct.out);
}

TEST_F(Analyze, OtherBytesAfterTheLastMemberFailTheRunInBothModes) {
    writePair("P_S1_L001");
    fs::remove(inputs().file("P_S1_L001_R1_001.fastq"));
    const std::string member = gzipped(ordinaryRead1());
    const std::string read1 = inputs().write("P_S1_L001_R1_001.fastq.gz", member + "tail");
    for (const char* mode : {"--direct", "--working-copies"}) {
        const Finished finished = run({"analyze", mode, read1});
        EXPECT_EQ(finished.status, 1) << mode;
        EXPECT_EQ(finished.out, "") << mode;
        EXPECT_THAT(finished.err,
                    HasSubstr(read1 + ": gzip data are damaged after the member ending at byte " +
                              std::to_string(member.size())))
            << mode;
    }
    EXPECT_FALSE(fs::exists(inputs().file("_P_S1_L001_R1_001.fastq")));
}

/// The members hold as many records each, so that a text that ends with one of them is whole
/// records.
TEST_F(Analyze, ABitFlippedInALaterMembersBeginningIsNeverCountedShortWithSuccess) {
    writePair("P_S1_L001");
    fs::remove(inputs().file("P_S1_L001_R1_001.fastq"));
    const std::string text = ordinaryRead1();
    std::size_t half = 0;
    for (std::size_t lines = 0; lines < 4 * 10; ++lines) {
        half = text.find('\n', half) + 1;
    }
    ASSERT_LT(half, text.size());
    const std::string first = gzipped(text.substr(0, half));
    const std::string whole = first + gzipped(text.substr(half));
    for (const char* mode : {"--direct", "--working-copies"}) {
        for (std::size_t bit = 0; bit < 24; ++bit) {
            std::string damaged = whole;
            char& byte = damaged[first.size() + bit / 8];
            byte = static_cast<char>(byte ^ (1 << bit % 8));
            const std::string read1 = inputs().write("P_S1_L001_R1_001.fastq.gz", damaged);
            const Finished finished = run({"analyze", mode, read1});
            EXPECT_EQ(finished.status, 1) << mode << " bit " << bit;
            EXPECT_EQ(finished.out, "") << mode << " bit " << bit;
            EXPECT_FALSE(fs::exists(inputs().file("_P_S1_L001_R1_001.fastq"))) << mode << bit;
        }
    }
}

TEST_F(Analyze, WorkingCopiesAreRefusedWhereCleanUpWouldRemoveFilesOfSomebodyElse) {
    fs::create_directory(inputs().file("run_R1_new"));
    writePair("P_S1_L001");
    const std::string directory = inputs().file("run_R1_new");
    for (const char* name : {"/P_S1_L001_R1_001.fastq", "/P_S1_L001_R2_001.fastq"}) {
        fs::rename(inputs().path() + name, directory + name);
    }
    const std::string read1 = directory + "/P_S1_L001_R1_001.fastq";
    const std::string reads = inputs().write("run_R2_001.fastq", "somebody's");
    const std::string unassigned = inputs().write("run.failedToBeAssignedReads", "somebody's");
    for (const auto& [command, path] :
         {std::pair("analyze", read1), std::pair("analyze-all", directory)}) {
        const Finished finished = runUntouched({command, "--working-copies", path});
        EXPECT_EQ(finished.status, 2) << command;
        EXPECT_THAT(finished.err, HasSubstr("vexta: --working-copies: ")) << command;
        EXPECT_THAT(finished.err, HasSubstr("\n  " + reads + "\n  " + unassigned + "\n"));
        EXPECT_EQ(finished.out, "") << command;
        EXPECT_EQ(runUntouched({command, path}).status, 0) << command; // directly, nothing is lost
    }
    fs::remove(reads);
    fs::remove(unassigned);
    EXPECT_EQ(run({"analyze", "--working-copies", read1}).status, 0);
}

TEST_F(Analyze, AnOutputThatNamesAnInputIsRefused) {
    const std::string read1 = writePair("P_S1_L001");
    const std::string read2 = inputs().file("P_S1_L001_R2_001.fastq");
    for (const std::string& input : {read1, read2, cataloguePath()}) {
        const Finished finished = runUntouched({"analyze", "--report", input, read1});
        EXPECT_EQ(finished.status, 2);
        EXPECT_THAT(finished.err, HasSubstr("--report " + input + ": this is the input"));
    }
}

TEST_F(Analyze, AFileThatMayGrowNoMoreIsAFailureAndNotASilentEnd) {
    const std::string read1 = writePair("P_S1_L001");
    rlimit before{};
    ASSERT_EQ(getrlimit(RLIMIT_FSIZE, &before), 0);
    rlimit small = before;
    small.rlim_cur = 1024; // more than settings and messages take
    ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &small), 0);
    const pid_t process = start({"analyze", "--json", outputs().file("j"), read1});
    ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &before), 0);
    const Finished finished = wait(process);
    EXPECT_EQ(finished.status, 1);
    EXPECT_THAT(finished.err, HasSubstr("File too large"));
    EXPECT_EQ(snapshot(outputs().path()).size(), 1U);
}

TEST_F(Analyze, AStandardOutputThatIsClosedFullOrGoneIsAFailure) {
    const std::string read1 = writePair("P_S1_L001");
    for (const char* out : {"/dev/full", ""}) {
        const Finished finished = runInto(out, {"analyze", read1});
        EXPECT_EQ(finished.status, 1) << out;
        EXPECT_THAT(finished.err, HasSubstr("cannot write to standard output")) << out;
    }
}

TEST_F(Analyze, AReaderThatWentAwayIsAFailureAndNotASilentEnd) {
    const std::string read1 = writePair("P_S1_L001");
    const std::string pipe = outputs().file("pipe");
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    // The reader takes the first byte and leaves; the report is larger than what a pipe holds.
    std::string entries = support::readFile(cataloguePath());
    entries.resize(entries.find("//"));
    for (int i = 0; i < 20000; ++i) {
        entries += ">entry_of_the_long_report AAAAAAAA TTTTTTTT R2 0.1 0.1 0.1 30\n"
                   "AAAAAAAAGCTTTTTTTT\n";
    }
    home().write("catalogue.txt", entries);
    const std::string reader = "head -c 1 '" + pipe + "' > /dev/null &";
    ASSERT_EQ(std::system(reader.c_str()), 0);
    const Finished finished = runInto(pipe, {"analyze", "--report", "-", read1});
    EXPECT_EQ(finished.status, 1);
    EXPECT_THAT(finished.err, HasSubstr("cannot write to standard output: Broken pipe"));
}

TEST_F(Analyze, ThreadCountChangesNoByte) {
    const std::string read1 = writePair("P_S1_L001");
    const auto results = [&](const char* threads) {
        const Finished finished = run({"analyze", "--threads", threads, "--json", "-", read1});
        EXPECT_EQ(finished.status, 0);
        // Behind them stands the record, which tells of the threads.
        return finished.out.substr(0, finished.out.find("\"run\":"));
    };
    EXPECT_EQ(results("1"), results("7"));
}

TEST_F(Analyze, AHostileFileNameRunsNothing) {
    const std::string prefix = "$(touch owned)`touch owned`\";touch owned;_S1_L001";
    const Finished direct = runUntouched({"analyze", writePair(prefix)});
    EXPECT_EQ(direct.status, 0) << direct.err;
    const Finished copied =
        run({"analyze", "--working-copies", inputs().file(prefix + "_R1_001.fastq")});
    EXPECT_EQ(copied.status, 0) << copied.err;
    EXPECT_FALSE(fs::exists("owned"));
    EXPECT_FALSE(fs::exists(inputs().file("owned")));
}

TEST_F(Analyze, NamesThatTheCleanUpWouldRemoveSurviveDirectReading) {
    const std::string read1 = writePair("_x_S1");
    const Finished finished = runUntouched({"analyze", read1});
    EXPECT_EQ(finished.status, 0) << finished.err;
}

TEST_F(Analyze, HelpAndVersionGoToStandardOutputAndSlipsToStandardError) {
    const Finished help = run({"--help"});
    EXPECT_EQ(help.status, 0);
    EXPECT_THAT(help.out, HasSubstr("Exit status:"));
    EXPECT_EQ(help.err, "");
    EXPECT_THAT(run({"--version"}).out, testing::StartsWith("vexta 0.1.0"));
    const Finished slip = run({"analyse"});
    EXPECT_EQ(slip.status, 2);
    EXPECT_EQ(slip.out, "");
    EXPECT_THAT(slip.err, HasSubstr("analyse"));
    EXPECT_EQ(runInto("/dev/full", {"--help"}).status, 1);
}

} // namespace
