// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include "run/pair_matching.h"

#include <algorithm>
#include <fstream>

#include <gmock/gmock.h>

#include "run/match_read_pairs.h"
#include "support/gzip.h"

namespace run {
namespace {

using support::gzipMember;
using testing::ElementsAre;

TEST_F(MatchReadPairs, CountsThreeBatchesOf2500Pairs) {
    for (const std::size_t threads : {1u, 2u, 8u}) {
        ASSERT_TRUE(runTexts(records(2500, "TACGT"), records(2500, "AAA"), threads));
        EXPECT_EQ(counters.totalNumberOfReads, 2500);
        EXPECT_EQ(counters.readsMapped, 2500);
        EXPECT_EQ(matchOf(0, 0), 2500);
        EXPECT_EQ(progress.pairs, 2500);
        EXPECT_EQ(progress.bytesTaken, progress.bytesTotal);
    }
}

TEST_F(MatchReadPairs, ReusesItsSlotsOverManyBatches) {
    ASSERT_TRUE(runTexts(records(20500, "TTTT"), records(20500, "AAA"), 8));
    EXPECT_EQ(counters.readsFailedToBeMapped, 20500);
    EXPECT_EQ(support::readFile(*failedReads).size(), 20500u * 9u);
}

TEST_F(MatchReadPairs, GivesZerosForAnEmptyFile) {
    ASSERT_TRUE(runTexts("", records(3, "A")));
    EXPECT_EQ(display.shown,
              (Texts{"failed 0", "mapped 0", "total 0", "total 0", "failed 0", "mapped 0"}));
    EXPECT_EQ(support::readFile(*failedReads), "");
}

TEST_F(MatchReadPairs, GivesZerosForAnEmptyFirstLine) {
    ASSERT_TRUE(runTexts("\n" + records(3, "TACGT"), records(3, "A")));
    EXPECT_EQ(display.shown,
              (Texts{"failed 0", "mapped 0", "total 0", "total 0", "failed 0", "mapped 0"}));
    EXPECT_EQ(matchOf(0, 0), 0);
    EXPECT_EQ(progress.pairs, 0);
}

TEST_F(MatchReadPairs, CountsPairsWithAnEmptySequenceAsProgressOnly) {
    ASSERT_TRUE(runTexts(records(2, "") + "@x\nA\n+\nI\n", records(2, "A") + "@x\nA\n+\nI\n"));
    EXPECT_EQ(counters.totalNumberOfReads, 1);
    EXPECT_EQ(progress.pairs, 3);
}

TEST_F(MatchReadPairs, IgnoresSurplusRecordsOfEitherFile) {
    ASSERT_TRUE(runTexts(records(30, "TACGT"), records(3, "A")));
    EXPECT_EQ(counters.totalNumberOfReads, 3);
    ASSERT_TRUE(runTexts(records(3, "TACGT"), records(30, "A")));
    EXPECT_EQ(counters.totalNumberOfReads, 3);
}

TEST_F(MatchReadPairs, SumsTheDomainAroundItsFirstMutation) {
    const std::string one = "@a\nTACGT\n+\nIIIII\n@b\nTGGCC\n+\nIIIII\n@c\nTGGTT\n+\nIIIII\n";
    // The second run starts from zero.
    for (int i = 0; i < 2; ++i) {
        ASSERT_TRUE(runTexts(one, one));
        EXPECT_EQ(domains.value()[0]->totalNumberOfNormalReads, 1);
        EXPECT_EQ(domains.value()[0]->totalNumberOfMutantReads, 2);
    }
}

TEST_F(MatchReadPairs, LeavesTheNormalReadsOfADomainWithoutMutations) {
    domains = support::catalogueOf({support::domainOf({})});
    domains.value()[0]->totalNumberOfNormalReads = 7;
    domains.value()[0]->totalNumberOfMutantReads = 7;
    ASSERT_TRUE(runTexts(records(1, "A"), records(1, "A")));
    EXPECT_EQ(domains.value()[0]->totalNumberOfNormalReads, 7);
    EXPECT_EQ(domains.value()[0]->totalNumberOfMutantReads, 0);
}

TEST_F(MatchReadPairs, WritesUnassignedPairsWithRead2Turned) {
    ASSERT_TRUE(runTexts(records(1, "ttAA"), records(1, "aacg")));
    EXPECT_EQ(support::readFile(*failedReads), "ttAA\nCGTT\n");
    EXPECT_EQ(counters.readsFailedToBeMapped, 1);
    EXPECT_EQ(counters.readsMapped, 0);
}

TEST_F(MatchReadPairs, WritesUnassignedPairsInTheOrderOfTheFilesForAnyNumberOfWorkers) {
    std::string text;
    std::string expected;
    for (unsigned i = 0; i < 20500; ++i) {
        std::string bases = "T";
        for (unsigned rest = i; rest > 0; rest /= 2) {
            bases += "AT"[rest % 2];
        }
        text += "@" + std::to_string(i) + "\n" + bases + "\n+\n\n";
        std::string turned = bases;
        std::reverse(turned.begin(), turned.end());
        for (char& base : turned) {
            base = base == 'A' ? 'T' : 'A';
        }
        expected += bases + "\n" + turned + "\n";
    }
    for (const std::size_t threads : {1u, 2u, 8u}) {
        ASSERT_TRUE(runTexts(text, text, threads));
        EXPECT_TRUE(support::readFile(*failedReads) == expected);
    }
}

Texts lastOf(const Texts& texts, std::size_t count) {
    return {texts.end() - static_cast<std::ptrdiff_t>(std::min(count, texts.size())), texts.end()};
}

TEST_F(MatchReadPairs, OpensAllThreeFilesAndTellsTheReasonsUnderTheLine) {
    const std::string missing1 = "error   Cannot open /nowhere/r1: No such file or directory.\n";
    const std::string missing2 = "error   Cannot open /nowhere/r2: No such file or directory.\n";
    EXPECT_FALSE(run("/nowhere/r1", "/nowhere/r2"));
    EXPECT_THAT(lastOf(display.shown, 3),
                ElementsAre("error Cannot open3 /nowhere/r1.\n", missing1, missing2));
    EXPECT_EQ(support::readFile(*failedReads), "");
    EXPECT_FALSE(run(directory.write("r1", ""), "/nowhere/r2"));
    EXPECT_THAT(lastOf(display.shown, 2),
                ElementsAre("error Cannot open4 /nowhere/r2.\n", missing2));
    failedReads = "/nowhere/failed";
    EXPECT_FALSE(run("/nowhere/r1", "/nowhere/r2"));
    EXPECT_THAT(lastOf(display.shown, 4),
                ElementsAre("error Cannot open1 /nowhere/failed.\n",
                            "error   Cannot create /nowhere/failed: No such file or directory.\n",
                            missing1, missing2));
}

TEST_F(MatchReadPairs, NeverReplacesAnInputByTheFailedReads) {
    failedReads = directory.file("r2");
    EXPECT_FALSE(runTexts(records(1, "A"), records(1, "C")));
    EXPECT_THAT(lastOf(display.shown, 2),
                ElementsAre("error Cannot open1 " + *failedReads + ".\n",
                            "error   It would replace the input " + *failedReads + ".\n"));
    EXPECT_EQ(support::readFile(*failedReads), records(1, "C"));
}

TEST_F(MatchReadPairs, KeepsTheCountersOfMergedBatchesAfterAnError) {
    EXPECT_FALSE(runTexts(records(2000, "TACGT") + "@x\nA\n", records(2000, "A") + "@x\nA\n"));
    EXPECT_EQ(counters.totalNumberOfReads, 2000);
    EXPECT_EQ(counters.readsMapped, 0);
    const std::string path = directory.file("r1");
    EXPECT_EQ(display.shown.back(), "error " + path + " or " + path + " are trimcated/\n");
}

TEST_F(MatchReadPairs, FailsOnDamagedGzipEvenInBytesThatNoPairNeeds) {
    std::string bytes = gzipMember(records(3, "A")) + gzipMember(records(5, "A"));
    const std::string whole = directory.write("r1.gz", bytes);
    ASSERT_TRUE(run(whole, directory.write("r2.gz", bytes)));
    bytes[bytes.size() - 8] ^= 1;
    const std::string damaged = directory.write("r2.gz", bytes);
    EXPECT_FALSE(run(directory.write("r1", records(1, "A")), damaged));
    EXPECT_EQ(display.shown.back().rfind("error Cannot read " + damaged + ": damaged gzip", 0), 0u);
}

TEST_F(MatchReadPairs, TellsOfZeroPaddingWithoutFailing) {
    const std::string path =
        directory.write("r1.gz", gzipMember(records(1, "A")) + std::string(3, '\0'));
    ASSERT_TRUE(run(path, directory.write("r2", records(1, "A"))));
    const std::string warning =
        "warning " + path + ": 3 zero bytes between or after gzip members are ignored.\n";
    EXPECT_EQ(std::count(display.shown.begin(), display.shown.end(), warning), 1);
}

TEST_F(MatchReadPairs, FailsOnOtherBytesAfterTheLastMember) {
    const std::string member = gzipMember(records(1, "A"));
    const std::string path = directory.write("r1.gz", member + "xyz");
    EXPECT_FALSE(run(path, directory.write("r2", records(1, "A"))));
    EXPECT_EQ(display.shown.back(), "error Cannot read " + path +
                                        ": gzip data are damaged after the member ending at byte " +
                                        std::to_string(member.size()) + ".\n");
}

TEST_F(MatchReadPairs, MakesNoFailedReadsFileWithoutAPath) {
    failedReads = std::nullopt;
    ASSERT_TRUE(runTexts(records(1, "A"), records(1, "A")));
    EXPECT_FALSE(std::ifstream(directory.file("failed")).is_open());
}

TEST(FailedReadsPath, IsThePartBeforeTheFirstR1) {
    EXPECT_EQ(failedReadsPathFor("/d/_P1_S1_L001_R1_001.fastq"),
              "/d/_P1_S1_L001.failedToBeAssignedReads");
    EXPECT_EQ(failedReadsPathFor("/d/a_R1_b_R1_c"), "/d/a.failedToBeAssignedReads");
    EXPECT_EQ(failedReadsPathFor("x"), "x.failedToBeAssignedReads");
}

/// Several lanes of one patient.
class LanesOfAPatient : public MatchReadPairs {
protected:
    bool runLanes(const std::vector<LaneFiles>& lanes, std::size_t threads = 2) {
        PairedReads reads = {lanes.at(0).read1Path, lanes.at(0).read2Path,
                             reads::ReadsEncoding::byFileName, failedReads};
        reads.furtherLanes = {lanes.begin() + 1, lanes.end()};
        platform::WorkerPool workers(threads);
        return shownOutcome(matchReadPairs(reads, domains, counters, display, progress, workers),
                            display);
    }
    /// Writes text[begin, end) of each read as a lane, compressed if so named.
    LaneFiles lane(const std::string& name, const std::string& text1, const std::string& text2) {
        const auto written = [&](const std::string& read, const std::string& text) {
            const bool packed = name.find(".gz") != std::string::npos;
            return directory.write(read + name, packed ? gzipMember(text) : text);
        };
        return {written("r1_", text1), written("r2_", text2)};
    }
    std::vector<std::int64_t> counts() const {
        return {counters.totalNumberOfReads, counters.readsMapped, matchOf(0, 0), matchOf(0, 1),
                matchOf(0, 2)};
    }
};

TEST_F(LanesOfAPatient, CountAsTheirFilesPutTogether) {
    const std::string text1 = records(1500, "TACGT") + records(1700, "TGGCC") + records(800, "TT");
    const std::string text2 = records(1500, "AAA") + records(1700, "AAA") + records(800, "AAA");
    ASSERT_TRUE(runTexts(text1, text2));
    const auto whole = counts();
    const std::string unclaimed = support::readFile(*failedReads);
    // Within a record and at its end; not at the same pair in both files.
    const std::size_t end1 = text1.find("@400\n");
    const std::vector<std::pair<std::size_t, std::size_t>> cuts = {
        {end1, text2.find("@400\n")}, {end1 + 6, text2.find("@403\n") + 3}, {0, 0}, {1, 0}};
    for (const std::size_t threads : {1U, 8U}) {
        for (const auto& [cut1, cut2] : cuts) {
            for (const char* ending : {"", ".gz"}) {
                const std::string suffix = std::string(".fastq") + ending;
                ASSERT_TRUE(runLanes({lane("1.fastq", text1.substr(0, cut1), text2.substr(0, cut2)),
                                      lane("2" + suffix, text1.substr(cut1), text2.substr(cut2))},
                                     threads));
                EXPECT_EQ(counts(), whole);
                EXPECT_EQ(support::readFile(*failedReads), unclaimed);
                EXPECT_EQ(counters.inputs.read1.records, 4000);
                EXPECT_EQ(progress.bytesTaken, progress.bytesTotal);
            }
        }
    }
}

TEST_F(LanesOfAPatient, AddUpInTheAccount) {
    const LaneFiles first = lane("1.fastq.gz", records(3, "TACGT"), records(3, "A"));
    const LaneFiles second = lane("2.fastq.gz", records(4, "TACGT"), records(4, "A"));
    ASSERT_TRUE(runLanes({first, second}));
    EXPECT_EQ(counters.inputs.read1.gzipMembers, 2U);
    EXPECT_EQ(counters.inputs.read1.fileBytes, support::readFile(first.read1Path).size() +
                                                   support::readFile(second.read1Path).size());
    EXPECT_EQ(counters.inputs.read1.path, first.read1Path);
    EXPECT_TRUE(counters.inputs.allWasRead());
}

TEST_F(LanesOfAPatient, FailByTheNameOfTheDamagedFile) {
    const LaneFiles first = lane("1.fastq.gz", records(3, "TACGT"), records(3, "A"));
    const LaneFiles second = lane("2.fastq.gz", records(3, "TACGT"), records(3, "A"));
    const std::string packed = support::readFile(second.read2Path);
    directory.write("r2_2.fastq.gz", packed.substr(0, packed.size() - 4));
    EXPECT_FALSE(runLanes({first, second}));
    ASSERT_FALSE(display.shown.empty());
    EXPECT_THAT(display.shown.back(),
                testing::StartsWith("error Cannot read " + second.read2Path + ": "));
}

TEST_F(LanesOfAPatient, FailWithoutOneOfTheirFiles) {
    const LaneFiles first = lane("1.fastq", records(3, "TACGT"), records(3, "A"));
    const std::string missing = directory.file("r2_2.fastq");
    EXPECT_FALSE(runLanes({first, {first.read1Path, missing}}));
    ASSERT_GE(display.shown.size(), 2U);
    EXPECT_EQ(display.shown[display.shown.size() - 2],
              "error Cannot open4 " + first.read2Path + ".\n");
    EXPECT_THAT(display.shown.back(), testing::HasSubstr(missing));
}

TEST_F(LanesOfAPatient, AreNotReplacedByTheUnclaimedPairs) {
    const LaneFiles first = lane("1.fastq", records(3, "TACGT"), records(3, "A"));
    const LaneFiles second = lane("2.fastq", records(3, "TACGT"), records(3, "A"));
    failedReads = second.read2Path;
    EXPECT_FALSE(runLanes({first, second}));
    EXPECT_EQ(support::readFile(second.read2Path), records(3, "A"));
}

} // namespace
} // namespace run
