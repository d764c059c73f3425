// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
//
// Inputs whose names are not those of one sequencer's first lane.
#include <filesystem>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

#include "program.h"

namespace {

namespace fs = std::filesystem;
using nlohmann::json;
using program::Finished;
using program::gzipped;
using program::snapshot;
using testing::AllOf;
using testing::HasSubstr;
using testing::Not;

class NamedInputs : public program::ProgramTest {
protected:
    /// Writes both reads, "?" standing for the number of the read, compressed where so named; the
    /// bytes from `begin` to `end` of each thousand. Returns the path of read 1.
    std::string write(const std::string& pattern, double begin = 0, double end = 1) const {
        const auto writeRead = [&](char read, const std::string& whole) {
            std::string name = pattern;
            name[name.find('?')] = read;
            const auto place = [&](double share) {
                return static_cast<std::size_t>(static_cast<double>(whole.size()) * share);
            };
            const std::string text = whole.substr(place(begin), place(end) - place(begin));
            const bool packed = name.size() > 3 && name.substr(name.size() - 3) == ".gz";
            return inputs().write(name, packed ? gzipped(text) : text);
        };
        writeRead('2', ordinaryRead2());
        return writeRead('1', ordinaryRead1());
    }
    /// Runs with a result document and JSON; `record` then holds the "run" of the JSON, `patients`
    /// the records. Inputs stay as they are.
    Finished analyze(std::vector<std::string> arguments) {
        arguments.insert(arguments.begin() + 1,
                         {"--json", outputs().file("j"), "--save", outputs().file("d.vexta")});
        for (const char* name : {"j", "d.vexta", "d.vexta.record.json"}) {
            fs::remove(outputs().file(name));
        }
        const auto before = snapshot(inputs().path());
        Finished finished = run(arguments);
        EXPECT_EQ(snapshot(inputs().path()), before);
        record = {};
        patients = {};
        if (fs::exists(outputs().file("j"))) {
            const json written = json::parse(support::readFile(outputs().file("j")));
            record = written.at("run");
            patients = written.at("summaryForEachPatientMutAr");
        }
        return finished;
    }
    /// Of the last result document, as "vexta digest" prints it.
    std::string digest() const {
        const Finished finished = run({"digest", outputs().file("d.vexta")});
        EXPECT_EQ(finished.status, 0) << finished.err;
        return finished.out;
    }
    std::vector<std::string> numbers() const {
        std::vector<std::string> all;
        for (const json& patient : patients) {
            all.push_back(patient.at("patientNo"));
        }
        return all;
    }
    /// The fingerprint of the ordinary pair in one file, as patient 1.
    std::string digestOfWhole() {
        const std::string whole = write("whole_S1_L001_R?_001.fastq");
        EXPECT_EQ(analyze({"analyze", whole}).status, 0);
        fs::remove(whole);
        fs::remove(inputs().file("whole_S1_L001_R2_001.fastq"));
        return digest();
    }
    void expectRefused(const std::vector<std::string>& arguments,
                       const testing::Matcher<std::string>& message) {
        const Finished finished = analyze(arguments);
        EXPECT_EQ(finished.status, 2);
        EXPECT_EQ(finished.out, "");
        EXPECT_THAT(finished.err, message);
        EXPECT_FALSE(fs::exists(outputs().file("j")));
    }

    json record;
    json patients;
};

// --- Two files by any names

TEST_F(NamedInputs, TwoFilesOfAnyNamesAreAPatient) {
    const std::string expected = digestOfWhole();
    const std::string read1 = write("Anna?.fq.gz");
    const Finished finished =
        analyze({"analyze", "--r1", read1, "--r2", inputs().file("Anna2.fq.gz"), "--sample",
                 "Anna B", "--number", "1"});
    EXPECT_EQ(finished.status, 0) << finished.err;
    EXPECT_EQ(finished.err, "vexta: warning: Anna1.fq.gz: somatic DNA: not assessable (1 of 1 "
                            "targets ND *1).\n");
    EXPECT_EQ(digest(), expected);
    EXPECT_EQ(record["patients"][0]["sample"], "Anna B");
    EXPECT_EQ(record["patients"][0]["patient"], "1");
    EXPECT_EQ(patients[0]["file1"], "Anna1.fq.gz");
    EXPECT_EQ(patients[0]["file2"], "Anna2.fq.gz");
    EXPECT_EQ(patients[0]["fastqFileDir"], inputs().path());
}

TEST_F(NamedInputs, TwoFilesMayLieInTwoDirectoriesAndTellTheirOwnNumber) {
    const std::string read1 = write("P_S7_R?.fastq");
    const std::string read2 = outputs().write("other name", ordinaryRead2());
    ASSERT_EQ(analyze({"analyze", "--r1", read1, "--r2", read2}).status, 0);
    EXPECT_EQ(numbers(), std::vector<std::string>{"7"});
    EXPECT_EQ(record["patients"][0]["sample"], "P");
    EXPECT_EQ(patients[0]["file2"], "other name");
}

TEST_F(NamedInputs, TwoFilesWithoutNumberAskForIt) {
    for (const char* name : {"Anna_R?.fq", "Anna_Smith_R?.fq"}) {
        const std::string read1 = write(name);
        std::string read2 = read1;
        read2[read2.rfind('1')] = '2';
        expectRefused({"analyze", "--r1", read1, "--r2", read2}, HasSubstr("--number N"));
    }
}

TEST_F(NamedInputs, TwoFilesThatCannotBeReadAreNamed) {
    const std::string read1 = write("P_S7_R?.fastq");
    const std::string missing = inputs().file("missing");
    expectRefused({"analyze", "--r1", missing, "--r2", inputs().path()},
                  AllOf(HasSubstr("--r1: "), HasSubstr(missing), HasSubstr("--r2: ")));
    fs::create_symlink(read1, inputs().file("link"));
    expectRefused({"analyze", "--r1", read1, "--r2", inputs().file("link")},
                  HasSubstr("are one file, " + read1));
    expectRefused(
        {"analyze", "--r1", read1, "--r2", inputs().file("P_S7_R2.fastq"), "--summary", read1},
        HasSubstr("this is the input"));
}

// --- Lanes

TEST_F(NamedInputs, LanesAreTheSameAsTheirConcatenation) {
    const std::string expected = digestOfWhole();
    // The cut falls into records, at other places in the two reads.
    for (const char* ending : {"", ".gz"}) {
        const std::string end = std::string("_R?_001.fastq") + ending;
        write("P_S1_L010" + end, 0.71, 1);
        write("P_S1_L001" + end, 0, 0.333);
        write("P_S1_L002" + end, 0.333, 0.71);
        const Finished single =
            analyze({"analyze", "--lanes", "all",
                     inputs().file("P_S1_L002_R2_001.fastq" + std::string(ending))});
        EXPECT_EQ(single.status, 0) << single.err;
        EXPECT_THAT(single.err, Not(HasSubstr("not used")));
        EXPECT_EQ(digest(), expected);
        EXPECT_EQ(patients[0]["file1"], "P_S1_L001_R1_001.fastq" + std::string(ending));
        const Finished batch =
            analyze({"analyze-all", "--strict", "--lanes", "all", inputs().path()});
        EXPECT_EQ(batch.status, 0) << batch.err;
        EXPECT_EQ(digest(), expected);
        EXPECT_EQ(record["patients"][0]["furtherFiles"][1]["file2"],
                  "P_S1_L010_R2_001.fastq" + std::string(ending));
        EXPECT_EQ(record["patients"][0]["inputs"]["read1"]["records"], 200);
        EXPECT_EQ(record["patients"][0]["inputs"]["read1"]["gzipMembers"], *ending == 0 ? 0 : 3);
        EXPECT_EQ(record["unusedReads"], json::array());
        for (const auto& entry : fs::directory_iterator(inputs().path())) {
            fs::remove(entry);
        }
    }
}

TEST_F(NamedInputs, LanesGiveTheirUnassignedPairsToo) {
    write("P_S1_L001_R?_001.fastq");
    write("P_S1_L002_R?_001.fastq");
    const Finished finished =
        analyze({"analyze", "--lanes", "all", "--unassigned", outputs().file("u"),
                 inputs().file("P_S1_L001_R1_001.fastq")});
    EXPECT_EQ(finished.status, 0) << finished.err;
    const std::string pairs = support::readFile(outputs().file("u"));
    EXPECT_EQ(std::count(pairs.begin(), pairs.end(), '\n'), 2 * 2 * 40);
}

TEST_F(NamedInputs, ALaneWithoutItsMateIsRefusedWithBothNames) {
    write("P_S1_L001_R?_001.fastq");
    write("P_S1_L002_R?_001.fastq");
    fs::remove(inputs().file("P_S1_L002_R2_001.fastq"));
    const auto bothNames =
        AllOf(HasSubstr("P_S1_L002_R1_001.fastq"), HasSubstr("P_S1_L002_R2_001.fastq"));
    expectRefused({"analyze", "--lanes", "all", inputs().file("P_S1_L001_R1_001.fastq")},
                  bothNames);
    expectRefused({"analyze", "--lanes", "all", inputs().file("P_S1_L002_R1_001.fastq")},
                  bothNames);
    expectRefused({"analyze-all", "--lanes", "all", inputs().path()}, bothNames);
    expectRefused({"analyze-all", "--lanes", "all", "--skip-unpaired", inputs().path()}, bothNames);
}

TEST_F(NamedInputs, ADamagedLaneFailsByItsName) {
    write("P_S1_L001_R?_001.fastq.gz");
    write("P_S1_L002_R?_001.fastq.gz");
    const std::string packed = gzipped(ordinaryRead2());
    const std::string damaged =
        inputs().write("P_S1_L002_R2_001.fastq.gz", packed.substr(0, packed.size() - 9));
    const Finished finished = analyze({"analyze-all", "--lanes", "all", inputs().path()});
    EXPECT_EQ(finished.status, 1);
    EXPECT_THAT(finished.err, AllOf(HasSubstr("Cannot read " + damaged + ": "),
                                    HasSubstr("Error occurred for files " +
                                              inputs().file("P_S1_L001_R1_001.fastq.gz"))));
}

TEST_F(NamedInputs, AFileThatStandsForTwoLanesIsRefused) {
    write("P_S1_L001_R?_001.fastq");
    for (const char* read : {"R1", "R2"}) {
        fs::create_symlink(inputs().file("P_S1_L001_" + std::string(read) + "_001.fastq"),
                           inputs().file("P_S1_L002_" + std::string(read) + "_001.fastq"));
    }
    const auto message = HasSubstr(inputs().file("P_S1_L002_R1_001.fastq") + " are one file");
    expectRefused({"analyze-all", "--lanes", "all", inputs().path()}, message);
    expectRefused({"analyze", "--lanes", "all", inputs().file("P_S1_L001_R1_001.fastq")}, message);
}

TEST_F(NamedInputs, AnyLaneMayNotBeAnOutput) {
    write("P_S1_L001_R?_001.fastq");
    write("P_S1_L002_R?_001.fastq");
    expectRefused({"analyze-all", "--lanes", "all", "--summary",
                   inputs().file("P_S1_L002_R2_001.fastq"), inputs().path()},
                  HasSubstr("this is the input"));
}

// --- Any name

TEST_F(NamedInputs, NamesOfEveryFormAreTakenWhenAskedFor) {
    const std::string expected = digestOfWhole();
    for (const char* name : {"P_S1_R?_001.fastq.gz", "P_S1_L001_R?_002.fastq",
                             "P_S1_L001_R?_001.fq.gz", "P_R?.fq", "P_?.fastq.gz"}) {
        write(name);
        const Finished finished = analyze({"analyze-all", "--any-name", inputs().path()});
        EXPECT_EQ(finished.status, 0) << name << finished.err;
        EXPECT_EQ(digest(), expected) << name;
        EXPECT_EQ(record["patients"][0]["sample"], "P");
        for (const auto& entry : fs::directory_iterator(inputs().path())) {
            fs::remove(entry);
        }
    }
}

TEST_F(NamedInputs, SamplesWithoutNumberGetTheirPlaceAndThatIsSaidOnce) {
    write("P_S1500_L001_R?_001.fastq");
    write("Zoe_R?.fq.gz");
    write("Anna_R?.fq.gz");
    const Finished finished = analyze({"analyze-all", "--quiet", "--any-name", inputs().path()});
    EXPECT_EQ(finished.status, 0);
    EXPECT_EQ(numbers(), (std::vector<std::string>{"1500", "2", "3"}));
    EXPECT_THAT(finished.err, HasSubstr("Anna is 2, Zoe is 3"));
    EXPECT_EQ(finished.err.find("without a number"), finished.err.rfind("without a number"));
}

TEST_F(NamedInputs, NamesThatFitNothingAreToldAsBefore) {
    write("Q_S1_L002_R?_001.fastq");
    inputs().write("reads.fastq", "");
    const Finished finished = analyze({"analyze-all", "--any-name", inputs().path()});
    EXPECT_EQ(finished.status, 2);
    EXPECT_THAT(finished.err,
                AllOf(HasSubstr("Q_S1_L002_R1_001.fastq: these reads are not used: lane L002"),
                      HasSubstr("reads.fastq: these reads are not used: the name is none of"),
                      HasSubstr("no read pair in " + inputs().path())));
}

// --- Unpaired files

TEST_F(NamedInputs, AnUnpairedFileIsNamedBelowTheLineOfItsPatient) {
    write("a_S1_L001_R?_001.fastq");
    inputs().write("b_S2_L001_R2_001.fastq.gz", gzipped(ordinaryRead2()));
    expectRefused({"analyze-all", inputs().path()},
                  testing::Eq("vexta: Patient 2 has unpaired fastq file.\n"
                              "vexta: b_S2_L001_R2_001.fastq.gz: found neither "
                              "b_S2_L001_R1_001.fastq nor b_S2_L001_R1_001.fastq.gz\n"));
}

TEST_F(NamedInputs, AnUnpairedFileIsPassedOverWhenAskedForAndNotSilently) {
    write("a_S1_L001_R?_001.fastq");
    inputs().write("b_S2_L001_R2_001.fastq", ordinaryRead2());
    for (const std::vector<std::string>& options :
         std::vector<std::vector<std::string>>{{}, {"--any-name"}, {"--lanes", "all"}}) {
        std::vector<std::string> arguments = {"analyze-all", "--skip-unpaired", "--status",
                                              outputs().file("s"), inputs().path()};
        arguments.insert(arguments.begin() + 1, options.begin(), options.end());
        const Finished finished = analyze(arguments);
        EXPECT_EQ(finished.status, 0) << finished.err;
        EXPECT_EQ(numbers(), std::vector<std::string>{"1"});
        EXPECT_THAT(
            finished.err,
            AllOf(HasSubstr("Patient 2 has unpaired fastq file.\n"),
                  HasSubstr("b_S2_L001_R2_001.fastq: found neither b_S2_L001_R1_001.fastq")));
        EXPECT_EQ(record["unusedReads"][0]["name"], "b_S2_L001_R2_001.fastq");
        EXPECT_EQ(record["patients"][1]["outcome"], "skipped");
        EXPECT_THAT(support::readFile(outputs().file("s")),
                    HasSubstr("b\t2\tb_S2_L001_R2_001.fastq\tskipped\tPatient 2 has unpaired"));
        arguments.insert(arguments.begin() + 1, "--strict");
        EXPECT_EQ(analyze(arguments).status, 1);
    }
}

TEST_F(NamedInputs, WorkingCopiesGoOnWithoutAnUnpairedFile) {
    write("a_S1_L001_R?_001.fastq.gz");
    inputs().write("b_S2_L001_R2_001.fastq", ordinaryRead2());
    const Finished finished =
        run({"analyze-all", "--working-copies", "--skip-unpaired", inputs().path()});
    EXPECT_EQ(finished.status, 0) << finished.err;
    EXPECT_THAT(finished.out, HasSubstr("a_S1_L001_R1_001.fastq.gz\t"));
    EXPECT_FALSE(fs::exists(inputs().file("_a_S1_L001_R1_001.fastq")));
}

// --- Sample sheets

TEST_F(NamedInputs, ASampleSheetNamesSamplesAndTheirLanes) {
    const std::string expected = digestOfWhole();
    write("one?", 0, 0.4);
    write("two?.gz", 0.4, 1);
    const std::string sheet =
        inputs().write("s.tsv", "\xef\xbb\xbf# made by hand\r\nr1\tr2\tsample\tplate\tnumber\r\n"
                                "one1\tone2\tAnna\tX\t1\r\n\r\ntwo1.gz\t" +
                                    inputs().file("two2.gz") + "\tAnna\tX\t1\r\n");
    for (const std::vector<std::string>& arguments : std::vector<std::vector<std::string>>{
             {"analyze-all", "--sample-sheet", sheet},
             {"analyze-all", "--sample-sheet", sheet, inputs().path()}}) {
        const Finished finished = analyze(arguments);
        EXPECT_EQ(finished.status, 0) << finished.err;
        EXPECT_EQ(digest(), expected);
        EXPECT_EQ(record["patients"][0]["sample"], "Anna");
        EXPECT_EQ(patients[0]["file1"], "one1");
    }
}

TEST_F(NamedInputs, ASampleSheetRunsInItsOrderAndTellsOfOtherReads) {
    for (const char* name : {"a?.fastq", "b?.fastq", "c?.fastq"}) {
        write(name);
    }
    const std::string sheet = inputs().write("s.tsv", "sample\tnumber\tr1\tr2\n"
                                                      "B\t9\tb1.fastq\tb2.fastq\n"
                                                      "A\t3\ta1.fastq\ta2.fastq\n");
    const Finished finished = analyze({"analyze-all", "--sample-sheet", sheet});
    EXPECT_EQ(finished.status, 0);
    EXPECT_EQ(numbers(), (std::vector<std::string>{"9", "3"}));
    EXPECT_THAT(finished.err, HasSubstr("c1.fastq: these reads are not used: the sample sheet does "
                                        "not name it"));
}

TEST_F(NamedInputs, ASampleSheetIsNoOutput) {
    write("a?.fastq");
    const std::string sheet =
        inputs().write("s.tsv", "sample\tnumber\tr1\tr2\nA\t3\ta1.fastq\ta2.fastq\n");
    expectRefused({"analyze-all", "--status", sheet, "--sample-sheet", sheet},
                  HasSubstr("--status " + sheet + ": this is the input"));
}

TEST_F(NamedInputs, EveryBadLineOfASampleSheetIsToldAndNothingRuns) {
    write("a?.fastq");
    const std::string sheet = inputs().write("s.tsv", "sample\tnumber\tr1\tr2\n"
                                                      "A\t3\ta1.fastq\ta2.fastq\n"
                                                      "B\t3\tno1\tno2\n"
                                                      "C\t0\tx\ty\n"
                                                      "D\t4\ta1.fastq\t\n");
    expectRefused({"analyze-all", "--sample-sheet", sheet},
                  AllOf(HasSubstr(sheet + ":3: number 3 is that of sample \"A\" in line 2\n"),
                        HasSubstr(sheet + ":3: r1: "), HasSubstr(sheet + ":3: r2: "),
                        HasSubstr(sheet + ":4: number \"0\""), HasSubstr(sheet + ":5: r2 is empty"),
                        Not(HasSubstr(sheet + ":2:"))));
    expectRefused({"analyze-all", "--sample-sheet", inputs().file("no.tsv")}, HasSubstr("no.tsv"));
    expectRefused({"analyze-all", "--sample-sheet", sheet, inputs().file("no")}, HasSubstr("/no"));
}

} // namespace
