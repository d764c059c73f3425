// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include <filesystem>

#include <gmock/gmock.h>
#include <nlohmann/json.hpp>
#include <sys/stat.h>

#include "program.h"

namespace {

namespace fs = std::filesystem;
using nlohmann::json;
using program::Finished;
using program::gzipped;
using program::snapshot;
using testing::HasSubstr;

class AnalyzeAll : public program::ProgramTest {
protected:
    Finished runUntouched(const std::vector<std::string>& arguments) const {
        const auto before = snapshot(inputs().path());
        const Finished finished = run(arguments);
        EXPECT_EQ(snapshot(inputs().path()), before) << finished.err;
        return finished;
    }
    static std::vector<std::string> patientNumbers(const std::string& jsonText) {
        std::vector<std::string> numbers;
        const json document = json::parse(jsonText);
        for (const json& patient : document["summaryForEachPatientMutAr"]) {
            numbers.push_back(patient["patientNo"]);
        }
        return numbers;
    }
};

TEST_F(AnalyzeAll, RunsEveryPairInRisingSampleNumber) {
    writePair("b_S10_L001");
    writePair("a_S9_L001");
    inputs().write("c_S2_L001_R1_001.fastq.gz", gzipped(ordinaryRead1()));
    inputs().write("c_S2_L001_R2_001.fastq.gz", gzipped(ordinaryRead2()));
    writePair("other_S4_L002");
    inputs().write("SampleSheet.csv", "");
    const Finished finished = runUntouched({"analyze-all", "--json", "-", inputs().path() + "/"});
    EXPECT_EQ(finished.status, 0) << finished.err;
    EXPECT_THAT(finished.err, HasSubstr("other_S4_L002_R1_001.fastq: these reads are not used"));
    EXPECT_EQ(patientNumbers(finished.out), (std::vector<std::string>{"2", "9", "10"}));
    EXPECT_EQ(json::parse(finished.out)["summaryForEachPatientMutAr"][0]["fastqFileDir"],
              inputs().path());
}

TEST_F(AnalyzeAll, AFailedPatientDoesNotHideTheOthers) {
    writePair("a_S1_L001");
    const std::string damaged = gzipped(ordinaryRead1());
    inputs().write("b_S2_L001_R1_001.fastq.gz", damaged.substr(0, damaged.size() - 9));
    inputs().write("b_S2_L001_R2_001.fastq", ordinaryRead2());
    writePair("c_S3_L001");
    const Finished finished =
        runUntouched({"analyze-all", "--json", outputs().file("j"), inputs().path()});
    EXPECT_EQ(finished.status, 1);
    EXPECT_THAT(finished.err, HasSubstr("b_S2_L001_R1_001.fastq.gz"));
    EXPECT_EQ(patientNumbers(support::readFile(outputs().file("j"))),
              (std::vector<std::string>{"1", "3"}));
}

TEST_F(AnalyzeAll, WhenEveryPatientFailsOnlyWhatTellsOfItIsWritten) {
    inputs().write("b_S2_L001_R1_001.fastq.gz", "no gzip data");
    inputs().write("b_S2_L001_R2_001.fastq", ordinaryRead2());
    const Finished finished = runUntouched({"analyze-all", "--json", outputs().file("j"),
                                            "--summary", outputs().file("s"), inputs().path()});
    EXPECT_EQ(finished.status, 1);
    EXPECT_THAT(finished.err, HasSubstr("no output is written but what tells of it"));
    EXPECT_FALSE(fs::exists(outputs().file("s")));
    EXPECT_EQ(json::parse(support::readFile(outputs().file("j")))["run"]["patients"][0]["outcome"],
              "failed");
}

TEST_F(AnalyzeAll, AFifoNamedLikeReadsFailsItsPatientAndNeverHangs) {
    writePair("a_S1_L001");
    ASSERT_EQ(mkfifo(inputs().file("b_S2_L001_R1_001.fastq").c_str(), 0600), 0);
    ASSERT_EQ(mkfifo(inputs().file("b_S2_L001_R2_001.fastq").c_str(), 0600), 0);
    const Finished finished = runUntouched({"analyze-all", "--json", "-", inputs().path()});
    EXPECT_EQ(finished.status, 1);
    EXPECT_THAT(finished.err, HasSubstr("b_S2_L001_R1_001.fastq"));
    EXPECT_EQ(patientNumbers(finished.out), std::vector<std::string>{"1"});
}

TEST_F(AnalyzeAll, ASampleWithOneFileIsUnusableAndNobodyRuns) {
    writePair("a_S1_L001");
    inputs().write("b_S2_L001_R2_001.fastq", ordinaryRead2());
    const Finished finished = runUntouched({"analyze-all", inputs().path()});
    EXPECT_EQ(finished.status, 2);
    EXPECT_EQ(finished.out, "");
    EXPECT_THAT(finished.err, HasSubstr("Patient 2 has unpaired fastq file."));
}

TEST_F(AnalyzeAll, ADirectoryWithoutPairIsUnusableAndThePatternIsGiven) {
    writePair("x_S1_L002");
    const Finished finished = runUntouched({"analyze-all", inputs().path()});
    EXPECT_EQ(finished.status, 2);
    EXPECT_EQ(finished.out, "");
    EXPECT_THAT(finished.err, HasSubstr("*_S<1-1000>_L001_R1_001.fastq[.gz]"));
    EXPECT_THAT(finished.err, HasSubstr("\n  x_S1_L002_R1_001.fastq\n"));
}

TEST_F(AnalyzeAll, AMissingDirectoryOrAFileInItsPlaceIsUnusable) {
    const std::string file = inputs().write("x_S1_L001_R1_001.fastq", "");
    for (const std::string& path : {inputs().file("missing"), file}) {
        const Finished finished = runUntouched({"analyze-all", path});
        EXPECT_EQ(finished.status, 2);
        EXPECT_THAT(finished.err, HasSubstr(path));
    }
}

TEST_F(AnalyzeAll, AFaultyCatalogueIsSaidOnceForTheBatch) {
    writePair("a_S1_L001");
    writePair("b_S2_L001");
    home().write("catalogue.txt", "*KRAS SomaticDNA\n>KRAS_wt GGGG CCCC R1 0 0 0 1\nACGTACGT\n");
    const Finished finished = runUntouched({"analyze-all", inputs().path()});
    EXPECT_EQ(finished.status, 2);
    EXPECT_EQ(finished.out, "");
    EXPECT_THAT(finished.err, HasSubstr("KRAS_wt"));
    EXPECT_EQ(finished.err.find("KRAS_wt"), finished.err.rfind("KRAS_wt"));
}

TEST_F(AnalyzeAll, AnOutputThatNamesAnyInputIsRefused) {
    writePair("a_S1_L001");
    const std::string input = writePair("b_S2_L001");
    const Finished finished = runUntouched({"analyze-all", "--json", input, inputs().path()});
    EXPECT_EQ(finished.status, 2);
    EXPECT_THAT(finished.err, HasSubstr("this is the input"));
}

TEST_F(AnalyzeAll, SettingsUnderTheNameOfAnyInputAreRefused) {
    writePair("a_S1_L001");
    const std::string input = writePair("b_S2_L001");
    const Finished finished = runUntouched({"analyze-all", "--settings", input, inputs().path()});
    EXPECT_EQ(finished.status, 2);
    EXPECT_THAT(finished.err, HasSubstr("the settings file " + input));
}

TEST_F(AnalyzeAll, WorkingCopiesAreRemovedAndInputsStay) {
    writePair("a_S1_L001");
    inputs().write("c_S2_L001_R1_001.fastq.gz", gzipped(ordinaryRead1()));
    inputs().write("c_S2_L001_R2_001.fastq.gz", gzipped(ordinaryRead2()));
    const Finished direct = run({"analyze-all", inputs().path()});
    auto before = snapshot(inputs().path());
    const Finished copied = run({"analyze-all", "--working-copies", inputs().path()});
    EXPECT_EQ(copied.status, 0) << copied.err;
    EXPECT_EQ(copied.out, direct.out);
    auto after = snapshot(inputs().path());
    after.erase(".");
    before.erase(".");
    EXPECT_EQ(after, before);
}

} // namespace
