// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
//
// What a user would take for a healthy patient and must not: each case gives defined counts and an
// exit status of 0, so the program has to say what is wrong with it.
#include <filesystem>
#include <set>

#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

#include "program.h"

namespace {

namespace fs = std::filesystem;
using nlohmann::json;
using program::fastq;
using program::Finished;
using program::gzipped;
using testing::AllOf;
using testing::HasSubstr;
using testing::Not;

/// Records whose names are those of a sequencer: read `mate` of lane `lane`.
std::string sequenced(const std::string& sequence, std::size_t count, int mate, int lane = 1) {
    std::string text;
    for (std::size_t i = 0; i < count; ++i) {
        text += "@M1:7:FLOWCELL:" + std::to_string(lane) + ":1101:" + std::to_string(i) + ":1 " +
                std::to_string(mate) + ":N:0:ACGT\n" + sequence + "\n+\n" +
                std::string(sequence.size(), 'I') + "\n";
    }
    return text;
}

std::string reverseComplement(const std::string& sequence) {
    std::string turned;
    for (auto base = sequence.rbegin(); base != sequence.rend(); ++base) {
        turned += *base == 'A' ? 'T' : *base == 'T' ? 'A' : *base == 'C' ? 'G' : 'C';
    }
    return turned;
}

class Account : public program::ProgramTest {
protected:
    std::string write(const std::string& prefix, const std::string& read1,
                      const std::string& read2) const {
        inputs().write(prefix + "_R2_001.fastq", read2);
        return inputs().write(prefix + "_R1_001.fastq", read1);
    }
    /// Analyses the directory; `record` then holds the "run" of its JSON.
    Finished analyzeAll(std::vector<std::string> options = {}) {
        options.insert(options.begin(), {"analyze-all", "--json", outputs().file("j")});
        options.push_back(inputs().path());
        Finished finished = run(options);
        if (fs::exists(outputs().file("j"))) {
            record = json::parse(support::readFile(outputs().file("j"))).at("run");
        }
        return finished;
    }
    std::string warningKinds(std::size_t patient = 0) const {
        std::string kinds;
        for (const json& warning : record.at("patients").at(patient).at("warnings")) {
            kinds += warning.at("kind").get<std::string>() + " ";
        }
        return kinds;
    }

    json record;
};

TEST_F(Account, LanesBesideTheFirstAreNamed) {
    writePair("P_S1_L001");
    writePair("P_S1_L002");
    writePair("P_S1_L003");
    const Finished finished = analyzeAll();
    EXPECT_EQ(finished.status, 0);
    for (const char* name : {"P_S1_L002_R1_001.fastq", "P_S1_L003_R2_001.fastq"}) {
        EXPECT_THAT(finished.err, HasSubstr(name));
    }
    EXPECT_THAT(finished.err, HasSubstr("only lane L001 is read"));
    EXPECT_EQ(record["unusedReads"].size(), 4u);
    EXPECT_EQ(analyzeAll({"--strict"}).status, 1);
}

TEST_F(Account, ASingleRunNamesTheOtherLanesOfItsSample) {
    const std::string path = writePair("P_S1_L001");
    writePair("P_S1_L002");
    writePair("Q_S2_L001");
    const Finished finished = run({"analyze", path});
    EXPECT_EQ(finished.status, 0);
    EXPECT_THAT(finished.err, AllOf(HasSubstr("P_S1_L002_R1_001.fastq"), Not(HasSubstr("Q_S2"))));
}

TEST_F(Account, NamesThatNoBatchReadsAreNamedWithTheirReasons) {
    writePair("P_S1_L001");
    inputs().write("Q_S1500_L001_R1_001.fastq", "");
    inputs().write("R_S3_L001_R1_001.fq.gz", "");
    inputs().write("T_S4_R1_001.fastq", "");
    const Finished finished = analyzeAll();
    EXPECT_EQ(finished.status, 0);
    EXPECT_THAT(finished.err,
                AllOf(HasSubstr("Q_S1500_L001_R1_001.fastq: these reads are not used: sample "
                                "number 1500"),
                      HasSubstr("R_S3_L001_R1_001.fq.gz"), HasSubstr("T_S4_R1_001.fastq")));
}

TEST_F(Account, IndexReadsAndSampleZeroAreUsual) {
    writePair("P_S1_L001");
    inputs().write("P_S1_L001_I1_001.fastq", fastq("ACGT", 3));
    inputs().write("Undetermined_S0_L001_R1_001.fastq", fastq("ACGT", 3));
    const Finished finished = analyzeAll({"--strict"});
    EXPECT_EQ(finished.status, 0) << finished.err;
    EXPECT_THAT(finished.err, HasSubstr("2 files of index reads or of sample 0 are not used"));
}

TEST_F(Account, ARead2ThatWasCutShortIsTold) {
    write("P_S1_L001", ordinaryRead1(), fastq(kNothing, 60));
    const Finished finished = analyzeAll();
    EXPECT_EQ(finished.status, 0);
    EXPECT_THAT(finished.err, HasSubstr("P_S1_L001_R1_001.fastq: 140 records have none of "
                                        "P_S1_L001_R2_001.fastq beside"));
    EXPECT_EQ(record["patients"][0]["inputs"]["read1"]["surplusRecords"], 140);
    EXPECT_EQ(record["patients"][0]["inputs"]["allWasRead"], false);
    EXPECT_EQ(analyzeAll({"--strict"}).status, 1);
}

TEST_F(Account, ARead1ThatWasCutShortIsTold) {
    write("P_S1_L001", fastq(kNormal, 60), ordinaryRead2());
    EXPECT_THAT(analyzeAll().err, HasSubstr("P_S1_L001_R2_001.fastq: 140 records have none of "
                                            "P_S1_L001_R1_001.fastq beside"));
}

TEST_F(Account, ATornCopyIsToldWithTheRecordAndTheBytesNotRead) {
    std::string read1 = sequenced("GG" + kNormal, 1000, 1);
    const std::size_t hole = read1.find("@M1:7:FLOWCELL:1:1101:258:");
    ASSERT_NE(hole, std::string::npos);
    read1.replace(hole, 4096, std::string(4096, '\0'));
    write("P_S1_L001", read1, sequenced(kNothing, 1000, 2));
    const Finished finished = analyzeAll();
    EXPECT_EQ(finished.status, 0) << finished.err;
    EXPECT_THAT(finished.err,
                AllOf(HasSubstr("P_S1_L001_R1_001.fastq: reading ended before record 259, at a "
                                "zero byte"),
                      HasSubstr("holds 4096 zero bytes")));
    const json& account = record["patients"][0]["inputs"]["read1"];
    EXPECT_EQ(account["records"], 258);
    EXPECT_GT(account["bytesNotRead"], 1000);
    EXPECT_EQ(analyzeAll({"--strict"}).status, 1);
}

TEST_F(Account, AnEmptyLineThatEndsReadingIsTold) {
    const std::string begin = fastq(kNormal, 1000);
    write("P_S1_L001", begin + "\n" + fastq(kNormal, 500), fastq(kNothing, 1500));
    const Finished finished = analyzeAll();
    EXPECT_EQ(finished.status, 0);
    EXPECT_THAT(finished.err, HasSubstr("reading ended before record 1001, at an empty line"));
}

TEST_F(Account, AnEmptyControlIsNotNegativeWithoutAWord) {
    write("NTC_S1_L001", "", "");
    const Finished finished = analyzeAll({"--status", outputs().file("s")});
    EXPECT_EQ(finished.status, 0);
    EXPECT_THAT(finished.err,
                AllOf(HasSubstr("NTC_S1_L001_R1_001.fastq: holds no reads"),
                      HasSubstr("NTC_S1_L001_R2_001.fastq: holds no reads"),
                      HasSubstr("nothing is assessable"), HasSubstr("not assessable (1 of 1")));
    EXPECT_THAT(support::readFile(outputs().file("s")), HasSubstr("nothing is assessable"));
    EXPECT_EQ(analyzeAll({"--strict"}).status, 1);
}

TEST_F(Account, ExchangedFilesAreTold) {
    write("P_S1_L001", sequenced(kNothing, 2000, 2), sequenced("GG" + kNormal, 2000, 1));
    const Finished finished = analyzeAll();
    EXPECT_EQ(finished.status, 0);
    EXPECT_THAT(finished.err, AllOf(HasSubstr("the files seem to be exchanged"),
                                    HasSubstr("none of 2000 read pairs is mapped")));
    EXPECT_THAT(warningKinds(), HasSubstr("headers-of-other-read"));
    EXPECT_EQ(analyzeAll({"--strict"}).status, 1);
}

TEST_F(Account, ALibraryOfTheOtherStrandIsToldWithItsPairs) {
    std::string read1 = sequenced(kNothing, 2050, 1);
    const std::string turned = reverseComplement(kMutant);
    for (std::size_t at = 0, pair = 0; pair < 50; ++pair) {
        at = read1.find(kNothing, at);
        read1.replace(at, turned.size(), turned);
    }
    write("P_S1_L001", read1, sequenced(kNothing, 2050, 2));
    const Finished finished = analyzeAll();
    EXPECT_EQ(finished.status, 0);
    EXPECT_THAT(finished.err, AllOf(HasSubstr("50 pairs hold "), HasSubstr("on the other strand")));
    EXPECT_THAT(warningKinds(), HasSubstr("core-elsewhere"));
}

TEST_F(Account, TwoSamplesWithOneNumberAreRefused) {
    writePair("Anna_S1_L001");
    writePair("Bert_S1_L001");
    const Finished finished = analyzeAll();
    EXPECT_EQ(finished.status, 2);
    EXPECT_THAT(finished.err, AllOf(HasSubstr("Anna_S1_L001_R1_001.fastq"),
                                    HasSubstr("Bert_S1_L001_R1_001.fastq")));
    EXPECT_FALSE(fs::exists(outputs().file("j")));
    const Finished allowed = analyzeAll({"--allow-shared-numbers"});
    EXPECT_EQ(allowed.status, 0);
    EXPECT_THAT(allowed.err, HasSubstr("may be mixed up"));
}

TEST_F(Account, APairOfTwoSamplesIsRefused) {
    inputs().write("Anna_S1_L001_R1_001.fastq", ordinaryRead1());
    inputs().write("Bert_S1_L001_R2_001.fastq", ordinaryRead2());
    const Finished finished = analyzeAll();
    EXPECT_EQ(finished.status, 2);
    EXPECT_THAT(finished.err,
                AllOf(HasSubstr("Anna_S1_L001_R1_001.fastq"),
                      HasSubstr("Bert_S1_L001_R2_001.fastq"), HasSubstr("differ in more")));
}

TEST_F(Account, AFileAndItsCompressedTwinAreOneSample) {
    writePair("P_S1_L001");
    inputs().write("P_S1_L001_R1_001.fastq.gz", gzipped(ordinaryRead1()));
    const Finished finished = analyzeAll();
    EXPECT_EQ(finished.status, 0);
    EXPECT_THAT(finished.err, HasSubstr("another file of this sample is read"));
}

TEST_F(Account, ASecondMarkOfTheNumberInANameIsTold) {
    writePair("pat_Suzuki_S12_L001");
    const Finished finished = analyzeAll();
    EXPECT_EQ(finished.status, 0);
    EXPECT_THAT(finished.err, HasSubstr("\"_S\" stands in the name more than once"));
    EXPECT_EQ(record["patients"][0]["sample"], "pat_Suzuki");
}

TEST_F(Account, SettingsOfAHomeStandInTheRecord) {
    writePair("P_S1_L001");
    fs::create_directories(fs::path(settingsPath()).parent_path());
    home().write("config/vexta/settings.json", R"({"nD1Threshold": "90000"})");
    analyzeAll({"--set", "copyNumberOfInternalControl=7"});
    const json& settings = record["settings"];
    EXPECT_EQ(settings["nD1Threshold"]["value"], 90000);
    EXPECT_EQ(settings["nD1Threshold"]["from"], "settings file");
    EXPECT_EQ(settings["copyNumberOfInternalControl"]["value"], 7);
    EXPECT_EQ(settings["copyNumberOfInternalControl"]["from"], "--set");
    EXPECT_EQ(settings["calculateFalsePositiveRate"]["from"], "first-run value");
}

TEST_F(Account, AFailedPatientStandsInRecordAndStatus) {
    writePair("a_S1_L001");
    inputs().write("b_S2_L001_R1_001.fastq.gz", "no gzip data");
    inputs().write("b_S2_L001_R2_001.fastq", ordinaryRead2());
    const Finished finished = analyzeAll({"--status", outputs().file("s")});
    EXPECT_EQ(finished.status, 1);
    EXPECT_EQ(record["patients"][1]["outcome"], "failed");
    EXPECT_THAT(record["patients"][1]["lines"].dump(), HasSubstr("not gzip data"));
    const std::string status = support::readFile(outputs().file("s"));
    EXPECT_THAT(status, AllOf(HasSubstr("a\t1\ta_S1_L001_R1_001.fastq; a_S1_L001_R2_001.fastq\t"
                                        "analysed\t\t200\t160\t"),
                              HasSubstr("b\t2\t"), HasSubstr("\tfailed\tCannot read ")));
}

TEST_F(Account, AFailedSingleRunWritesWhatTellsOfItAndNothingElse) {
    const std::string path = inputs().write("b_S2_L001_R1_001.fastq.gz", "no gzip data");
    inputs().write("b_S2_L001_R2_001.fastq", ordinaryRead2());
    const Finished finished =
        run({"analyze", "--json", outputs().file("j"), "--status", outputs().file("s"), "--save",
             outputs().file("d.vexta"), "--report", outputs().file("r"), path});
    EXPECT_EQ(finished.status, 1);
    const json written = json::parse(support::readFile(outputs().file("j")));
    EXPECT_EQ(written["summaryForEachPatientMutAr"].size(), 0u);
    EXPECT_EQ(written["run"]["patients"][0]["outcome"], "failed");
    EXPECT_THAT(support::readFile(outputs().file("s")), HasSubstr("failed"));
    EXPECT_FALSE(fs::exists(outputs().file("d.vexta")));
    EXPECT_FALSE(fs::exists(outputs().file("d.vexta.record.json")));
    EXPECT_FALSE(fs::exists(outputs().file("r")));
}

TEST_F(Account, TargetsWithoutReadsAreNotSilentlyNegative) {
    writePair("P_S1_L001");
    const Finished finished = analyzeAll();
    EXPECT_EQ(finished.status, 0);
    EXPECT_THAT(finished.err, HasSubstr("somatic DNA: not assessable (1 of 1 targets ND *1)"));
    EXPECT_EQ(record["patients"][0]["notAssessableTargets"], 1);
}

TEST_F(Account, MarkedNamesFailWithAReason) {
    const auto marked = [](const char* mark) {
        return std::string("@r") + mark + "\n" + kNormal + "\n+\n" +
               std::string(kNormal.size(), 'I') + "\n";
    };
    write("P_S1_L001", marked("/1"), marked("/2"));
    const Finished finished = analyzeAll();
    EXPECT_EQ(finished.status, 1);
    EXPECT_THAT(finished.err, AllOf(HasSubstr("Two fastq files do not match at @r/1.\n"),
                                    HasSubstr("names end in /1 and /2"), Not(HasSubstr(".."))));
}

TEST_F(Account, ABatchEndsWhereItsCatalogueChanges) {
    writePair("a_S1_L001");
    inputs().write("b_S2_L001_R1_001.fastq.gz", gzipped(ordinaryRead1()));
    inputs().write("b_S2_L001_R2_001.fastq", ordinaryRead2());
    writePair("c_S3_L001");
    // Somebody edits the file while the second patient is prepared.
    const std::string gunzip =
        home().write("bin/gunzip", "#!/bin/sh\necho '# edited' >> " + cataloguePath() +
                                       "\nexec /bin/gunzip \"$@\"\n");
    fs::permissions(gunzip, fs::perms::owner_all);
    const Finished finished = analyzeAll({"--working-copies", "--status", outputs().file("s")});
    EXPECT_EQ(finished.status, 1);
    EXPECT_THAT(finished.err,
                AllOf(HasSubstr(cataloguePath() + " has changed since the batch began"),
                      HasSubstr("The batch ends here")));
    std::vector<std::string> outcomes;
    for (const json& patient : record["patients"]) {
        outcomes.push_back(patient["outcome"]);
    }
    EXPECT_EQ(outcomes, (std::vector<std::string>{"analysed", "analysed", "skipped"}));
    EXPECT_EQ(record["catalogue"]["changedDuringRun"], true);
    EXPECT_THAT(support::readFile(outputs().file("s")), HasSubstr("\tskipped\t"));
}

TEST_F(Account, FilesCutWithinTheirLastLineAreTold) {
    const auto cut = [](std::string text) { return text.substr(0, text.size() - 20); };
    write("P_S1_L001", cut(ordinaryRead1()), cut(ordinaryRead2()));
    const Finished finished = analyzeAll({"--strict"});
    EXPECT_EQ(finished.status, 1);
    EXPECT_THAT(finished.err, HasSubstr("P_S1_L001_R1_001.fastq: the last record's quality is "
                                        "shorter than its sequence"));
}

TEST_F(Account, HeadersThatAreTooLongAreToldAsSuch) {
    const auto longNamed = [](const std::string& sequence) {
        std::string text;
        for (int i = 0; i < 20; ++i) {
            text += "@" + std::string(600, 'n') + "\n" + sequence + "\n+\n" +
                    std::string(sequence.size(), 'I') + "\n";
        }
        return text;
    };
    write("P_S1_L001", longNamed(kNormal), longNamed(kNothing));
    EXPECT_THAT(analyzeAll().err, AllOf(HasSubstr("longer than "), Not(HasSubstr("have none of"))));
}

TEST_F(Account, WhatCannotBeSeenBehindTheReadsIsNoRecord) {
    for (const char* end : {" ", "\x1a", "\n", "\r\n", "\t\n"}) {
        write("P_S1_L001", ordinaryRead1() + end, ordinaryRead2());
        analyzeAll();
        EXPECT_EQ(warningKinds(), "not-assessable ") << "'" << end << "'";
    }
}

TEST_F(Account, OneFileAsBothReadsIsTold) {
    write("P_S1_L001", ordinaryRead1(), ordinaryRead1());
    EXPECT_THAT(analyzeAll().err, HasSubstr("they seem to be one file"));
}

TEST_F(Account, OneSampleUnderTwoNumbersIsTold) {
    write("P_S1_L001", sequenced(kNormal, 5, 1), sequenced(kNothing, 5, 2));
    write("Q_S2_L001", sequenced(kNormal, 5, 1), sequenced(kNothing, 5, 2));
    EXPECT_THAT(analyzeAll().err, HasSubstr("Q_S2_L001_R1_001.fastq and P_S1_L001_R1_001.fastq "
                                            "begin with the same read"));
}

TEST_F(Account, AShareOfMappedPairsThatIsNearlyNothingIsTold) {
    write("P_S1_L001", sequenced(kNothing, 5000, 1) + sequenced("GG" + kNormal, 2, 1),
          sequenced(kNothing, 5000, 2) + sequenced(kNothing, 2, 2));
    EXPECT_THAT(analyzeAll().err, HasSubstr("only 2 of 5002 read pairs are mapped"));
}

TEST_F(Account, ChecksumsBesideReadsAreNobodysReads) {
    writePair("P_S1_L001");
    inputs().write("P_S1_L001_R1_001.fastq.md5", "d41d8cd98f00b204e9800998ecf8427e");
    const Finished finished = analyzeAll();
    // The folder's order decides which of the two is taken; taken, it is named and nothing runs.
    EXPECT_THAT(finished.err,
                testing::AnyOf(HasSubstr("ends as no file of reads does"), Not(HasSubstr(".md5"))));
    EXPECT_THAT(finished.status, testing::AnyOf(0, 2));
    EXPECT_THAT(finished.err, Not(HasSubstr("two people")));
}

TEST_F(Account, AnEmptyLineAmongTheReadsFailsWithAReason) {
    write("P_S1_L001", fastq(kNormal, 3) + "\n" + fastq(kNormal, 3), fastq(kNothing, 6));
    const Finished finished = analyzeAll();
    EXPECT_EQ(finished.status, 1);
    EXPECT_THAT(finished.err, HasSubstr("A line without text stands where a read name is due"));
}

TEST_F(Account, SettingsThatChangeWhileAPatientRunsAreTold) {
    inputs().write("b_S2_L001_R1_001.fastq.gz", gzipped(ordinaryRead1()));
    inputs().write("b_S2_L001_R2_001.fastq", ordinaryRead2());
    fs::create_directories(fs::path(settingsPath()).parent_path());
    home().write("config/vexta/settings.json", R"({"nD1Threshold": "7"})");
    const std::string gunzip =
        home().write("bin/gunzip", "#!/bin/sh\necho '{\"nD1Threshold\": \"90000\"}' > " +
                                       settingsPath() + "\nexec /bin/gunzip \"$@\"\n");
    fs::permissions(gunzip, fs::perms::owner_all);
    const Finished finished = analyzeAll({"--working-copies"});
    EXPECT_THAT(finished.err, HasSubstr("called with other settings than those of the beginning: "
                                        "nD1Threshold is 90000 and was 7"));
    EXPECT_EQ(record["settingsChangedDuringRun"], true);
    EXPECT_EQ(record["patients"][0]["settings"]["nD1Threshold"]["value"], 90000);
}

TEST_F(Account, LanesOfTheReadNamesAreKept) {
    write("P_S1_L001", sequenced(kNormal, 3, 1, 2) + sequenced(kNormal, 2, 1, 4),
          sequenced(kNothing, 3, 2, 2) + sequenced(kNothing, 2, 2, 4));
    analyzeAll();
    EXPECT_EQ(record["patients"][0]["inputs"]["lanes"],
              json::parse(R"([{"flowCell":"FLOWCELL","lane":"2"},
                              {"flowCell":"FLOWCELL","lane":"4"}])"));
}

TEST_F(Account, TheRecordLiesBesideTheDocumentAndIsReadAgain) {
    writePair("P_S1_L001");
    const std::string document = outputs().file("d.vexta");
    ASSERT_EQ(analyzeAll({"--save", document}).status, 0);
    const json beside = json::parse(support::readFile(document + ".record.json"));
    EXPECT_EQ(beside["run"], record);
    EXPECT_EQ(beside["documentSha256"].get<std::string>().size(), 64u);
    const Finished shown = run({"show", "--json", "-", document});
    EXPECT_EQ(shown.err, "");
    EXPECT_EQ(json::parse(shown.out)["run"], record);
    EXPECT_EQ(run({"digest", document}).out,
              record["resultDigest"].get<std::string>() + "  " + document + "\n");
}

TEST_F(Account, ARecordThatDoesNotFitIsToldAndLeftOut) {
    writePair("P_S1_L001");
    const std::string document = outputs().file("d.vexta");
    ASSERT_EQ(analyzeAll({"--save", document}).status, 0);
    std::string text = support::readFile(document + ".record.json");
    text.replace(text.find("\"threads\""), 9, "\"treads\"");
    for (const auto& [content, message] :
         {std::pair(text, "was edited"), std::pair(std::string("{}"), "is no record"),
          std::pair(std::string("x"), "is no record"),
          std::pair(std::string(R"({"run":{}})"), "is that of another document")}) {
        outputs().write("d.vexta.record.json", content);
        const Finished shown = run({"show", "--json", "-", document});
        EXPECT_EQ(shown.status, 0);
        EXPECT_THAT(shown.err, HasSubstr(message)) << content;
        EXPECT_FALSE(json::parse(shown.out).contains("run"));
    }
    fs::remove(document + ".record.json");
    EXPECT_THAT(run({"show", document}).err, HasSubstr("No record lies beside"));
}

TEST_F(Account, NoRecordIsWrittenWhereNoneIsWanted) {
    writePair("P_S1_L001");
    const std::string document = outputs().file("d.vexta");
    ASSERT_EQ(analyzeAll({"--save", document, "--no-record"}).status, 0);
    EXPECT_TRUE(fs::exists(document));
    EXPECT_FALSE(fs::exists(document + ".record.json"));
}

TEST_F(Account, ThePlaceOfTheRecordIsLookedAtBeforeTheRun) {
    writePair("P_S1_L001");
    fs::create_directory(outputs().file("d.vexta.record.json"));
    const Finished finished = analyzeAll({"--save", outputs().file("d.vexta")});
    EXPECT_EQ(finished.status, 2);
    EXPECT_THAT(finished.err, HasSubstr("d.vexta.record.json"));
}

TEST_F(Account, TheFingerprintIsTheSameForThreadsAndCompression) {
    const std::string plain = writePair("P_S1_L001");
    const std::string packed =
        outputs().write("P_S1_L001_R1_001.fastq.gz", gzipped(ordinaryRead1()));
    outputs().write("P_S1_L001_R2_001.fastq.gz", gzipped(ordinaryRead2()));
    std::set<std::string> digests;
    for (const std::vector<std::string>& options : std::vector<std::vector<std::string>>{
             {"--threads", "1", plain}, {"--threads", "3", plain}, {packed}}) {
        std::vector<std::string> arguments = {"analyze", "--save", outputs().file("d.vexta")};
        arguments.insert(arguments.end(), options.begin(), options.end());
        ASSERT_EQ(run(arguments).status, 0);
        digests.insert(run({"digest", outputs().file("d.vexta")}).out);
    }
    EXPECT_EQ(digests.size(), 1u);
}

TEST_F(Account, ADigestOfWhatIsNoDocumentIsRefused) {
    const Finished finished = run({"digest", inputs().write("x.vexta", "no document")});
    EXPECT_EQ(finished.status, 2);
    EXPECT_THAT(finished.err, HasSubstr("x.vexta"));
    EXPECT_EQ(finished.out, "");
}

TEST_F(Account, TheVersionTellsTheCatalogue) {
    shipCatalogue();
    EXPECT_THAT(run({"--version"}).out, HasSubstr("sha256 "));
}

} // namespace
