// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include "document/sample_sheet.h"

#include <filesystem>
#include <string>
#include <vector>

#include <gmock/gmock.h>

#include "support/temp_dir.h"

namespace {

using document::parseSampleSheet;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::StartsWith;
using Lines = std::vector<std::string>;

const std::string kHead = "sample\tnumber\tr1\tr2\n";

/// "line: sample|number|r1|r2" of each row.
Lines rowsOf(const std::string& text) {
    Lines lines;
    for (const auto& row : parseSampleSheet(text).rows) {
        lines.push_back(std::to_string(row.line) + ": " + row.sample + "|" + row.number + "|" +
                        row.read1 + "|" + row.read2);
    }
    return lines;
}

/// "line: text" of each fault.
Lines faultsOf(const std::string& text) {
    Lines lines;
    for (const auto& fault : parseSampleSheet(text).faults) {
        lines.push_back(std::to_string(fault.line) + ": " + fault.text);
    }
    return lines;
}

TEST(SampleSheet, HasItsColumnsInAnyOrderAmongOthers) {
    EXPECT_EQ(rowsOf("r2\tplate\tnumber\tsample\tr1\nb\tX\t7\tAnna\ta\n"), Lines{"2: Anna|7|a|b"});
}

TEST(SampleSheet, MayComeFromASpreadsheet) {
    EXPECT_EQ(rowsOf("\xef\xbb\xbf# of Monday\r\n\r\nsample\tnumber\tr1\tr2\r\n"
                     "Anna \t7\ta b.fq\tb.fq\r\n\t\t\t\r\n#Bert\t8\tx\ty\r\nC\t9\tc\td"),
              (Lines{"4: Anna|7|a b.fq|b.fq", "7: C|9|c|d"}));
}

TEST(SampleSheet, TellsEveryLineThatItCannotRead) {
    EXPECT_EQ(
        faultsOf(kHead + "\t1\ta\tb\nA\t0\ta\tb\nB\tx7\t\tb\nC\t3\ta\nD\t4\ta\tb\nE\t-1\ta\tb\n"),
        (Lines{"2: sample is empty", "3: number \"0\": expected a whole number from 1",
               "4: r1 is empty", "4: number \"x7\": expected a whole number from 1",
               "5: r2 is empty", "7: number \"-1\": expected a whole number from 1"}));
    EXPECT_EQ(faultsOf(kHead + std::string("A\t1\ta\0b\tc\n", 10)),
              Lines{"2: the line holds a zero byte"});
}

TEST(SampleSheet, TellsOfAHeadThatItCannotUse) {
    EXPECT_EQ(faultsOf("sample\tr1\tnumber\nA\ta\t1\n"),
              Lines{"1: the head line names no column \"r2\""});
    EXPECT_EQ(faultsOf("sample\tnumber\tr1\tr2\tr1\n"),
              Lines{"1: the head line names the column \"r1\" twice"});
    EXPECT_THAT(faultsOf("sample,number,r1,r2\n").front(), HasSubstr("separated by tabs"));
    EXPECT_THAT(faultsOf("# nothing\n"), ElementsAre(StartsWith("0: no head line")));
    EXPECT_THAT(faultsOf(kHead), ElementsAre(StartsWith("0: no sample stands")));
    EXPECT_THAT(faultsOf(std::string("\xff\xfes\0a\0", 6)), ElementsAre(HasSubstr("UTF-16")));
}

/// Sheets beside files.
class SampleSheetPlan : public testing::Test {
protected:
    SampleSheetPlan() {
        for (const char* name : {"a1.fq", "a2.fq", "b1.fq", "b2.fq", "c1.fq", "c2.fq"}) {
            dir.write(name, "");
        }
    }
    document::Planned planOf(const std::string& rows) {
        return document::planOfSampleSheet(dir.write("s.tsv", kHead + rows), std::nullopt);
    }
    /// Without the path of the sheet.
    Lines faultsOfPlan(const std::string& rows) {
        Lines lines;
        for (const std::string& fault : planOf(rows).faults) {
            EXPECT_THAT(fault, StartsWith(dir.file("s.tsv") + ":"));
            lines.push_back(fault.substr(dir.file("s.tsv").size() + 1));
        }
        return lines;
    }

    support::TempDir dir;
};

TEST_F(SampleSheetPlan, TakesSeveralLinesOfASampleAsItsLanes) {
    const auto planned = planOf("B\t9\tb1.fq\tb2.fq\nA\t3\ta1.fq\ta2.fq\nB\t9\tc1.fq\tc2.fq\n");
    ASSERT_TRUE(planned.faults.empty()) << planned.faults.front();
    const auto& patients = planned.plan.patients;
    ASSERT_EQ(patients.size(), 2U);
    EXPECT_EQ(patients[0].sample, "B");
    EXPECT_EQ(patients[0].number, "9");
    EXPECT_FALSE(patients[0].numberIsFromName);
    EXPECT_EQ(patients[0].directory, dir.path());
    EXPECT_EQ(patients[0].lanes,
              (std::vector<run::LaneFiles>{{dir.file("b1.fq"), dir.file("b2.fq")},
                                           {dir.file("c1.fq"), dir.file("c2.fq")}}));
    EXPECT_EQ(patients[1].sample, "A");
    EXPECT_TRUE(planned.plan.unusedReads.empty());
}

TEST_F(SampleSheetPlan, TellsOfReadsThatItDoesNotName) {
    const auto planned = planOf("A\t3\ta1.fq\ta2.fq\nB\t4\tb1.fq\t" + dir.file("b2.fq") + "\n");
    Lines unused;
    for (const auto& file : planned.plan.unusedReads) {
        unused.push_back(file.name + ": " + file.reason);
    }
    EXPECT_EQ(unused, (Lines{"c1.fq: the sample sheet does not name it",
                             "c2.fq: the sample sheet does not name it"}));
}

TEST_F(SampleSheetPlan, StartsRelativePathsFromTheDirectoryThatIsGiven) {
    support::TempDir elsewhere;
    const std::string sheet = elsewhere.write("s.tsv", kHead + "A\t3\ta1.fq\ta2.fq\n");
    EXPECT_FALSE(document::planOfSampleSheet(sheet, std::nullopt).faults.empty());
    const auto planned = document::planOfSampleSheet(sheet, dir.path());
    ASSERT_TRUE(planned.faults.empty());
    EXPECT_EQ(planned.plan.patients[0].lanes[0].read1Path, dir.file("a1.fq"));
    EXPECT_EQ(planned.plan.directory, dir.path());
}

TEST_F(SampleSheetPlan, TellsOfNumbersThatAreNotOneSamples) {
    EXPECT_EQ(faultsOfPlan("A\t3\ta1.fq\ta2.fq\nB\t3\tb1.fq\tb2.fq\nA\t4\tc1.fq\tc2.fq\n"),
              (Lines{"3: number 3 is that of sample \"A\" in line 2",
                     "4: sample \"A\" has the number 4 here and 3 in line 2"}));
}

TEST_F(SampleSheetPlan, TellsOfFilesThatStandTwiceUnderWhateverName) {
    std::filesystem::create_symlink(dir.file("a1.fq"), dir.file("link.fq"));
    EXPECT_EQ(faultsOfPlan("A\t3\ta1.fq\ta1.fq\nB\t4\tb1.fq\tb2.fq\nC\t5\t./b2.fq\tlink.fq\n"),
              (Lines{"2: r1 and r2 are one file, a1.fq", "4: r1: ./b2.fq is r2 of line 3, too",
                     "4: r2: link.fq is r1 of line 2, too"}));
}

TEST_F(SampleSheetPlan, TellsOfEveryFileThatCannotBeRead) {
    std::filesystem::create_directory(dir.file("d.fq"));
    const Lines faults =
        faultsOfPlan("A\t3\tno1.fq\tno2.fq\nB\t4\td.fq\tb2.fq\nC\t0\tc1.fq\tc2.fq\n");
    EXPECT_THAT(faults, ElementsAre(HasSubstr("no1.fq"), HasSubstr("no2.fq"), HasSubstr("d.fq"),
                                    StartsWith("4: number \"0\"")));
}

TEST_F(SampleSheetPlan, RefusesMoreLanesThanCanBeOpen) {
    std::string rows;
    for (std::size_t lane = 0; lane <= document::kMostLanes; ++lane) {
        const std::string name = "l" + std::to_string(lane);
        dir.write(name + "a", "");
        dir.write(name + "b", "");
        rows += "A\t1\t" + name + "a\t" + name + "b\n";
    }
    EXPECT_THAT(faultsOfPlan(rows), ElementsAre(HasSubstr("more than 200 lanes")));
}

TEST_F(SampleSheetPlan, MayHoldTenThousandLines) {
    std::string rows;
    for (int i = 1; i <= 10000; ++i) {
        rows += "P" + std::to_string(i) + "\t" + std::to_string(i) + "\tno.fq\tno.fq\n";
    }
    EXPECT_EQ(planOf(rows).faults.size(), 20000U);
}

TEST_F(SampleSheetPlan, NamesASheetThatIsNotThere) {
    const auto planned = document::planOfSampleSheet(dir.file("no.tsv"), std::nullopt);
    EXPECT_THAT(planned.faults, ElementsAre(HasSubstr(dir.file("no.tsv"))));
}

} // namespace
