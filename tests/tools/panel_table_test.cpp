// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include "simulator/panel_table.h"

#include <string>

#include <gtest/gtest.h>

namespace {

const std::string kHead = "sample\tnumber\tformat\tdomain\tmutation\tpairs\tcall\n";

platform::Result<std::vector<simulator::Sample>> parse(const std::string& lines) {
    return simulator::parsePanelTable(kHead + lines, "panel.tsv", 2000);
}

TEST(PanelTable, GroupsTheLinesOfASample) {
    const auto samples = parse("A\t1\tgz\tBIM\twt\t10\t-\n"
                               "A\t1\tgz\tBIM\t*\t0\twt/wt\n"
                               "# a comment\n"
                               "B\t12\tplain\tbackground\t-\t5\t-\n");
    ASSERT_TRUE(samples.ok()) << samples.error().message;
    ASSERT_EQ(samples.value().size(), 2U);
    const simulator::Sample& first = samples.value()[0];
    EXPECT_EQ(first.name, "A");
    EXPECT_EQ(first.number, 1U);
    EXPECT_TRUE(first.gzip);
    ASSERT_EQ(first.lines.size(), 2U);
    EXPECT_EQ(first.lines[0].pairs, 10U);
    EXPECT_EQ(first.lines[1].mutation, "*");
    EXPECT_EQ(first.lines[1].call, "wt/wt");
    EXPECT_FALSE(samples.value()[1].gzip);
}

TEST(PanelTable, TakesAPercentageOfTheDepth) {
    const auto samples = parse("A\t1\tgz\tBIM\twt\t12.5%\t-\nA\t1\tgz\tBIM\tmut\t100%\t-\n");
    ASSERT_TRUE(samples.ok()) << samples.error().message;
    EXPECT_EQ(samples.value()[0].lines[0].pairs, 250U);
    EXPECT_EQ(samples.value()[0].lines[1].pairs, 2000U);
}

TEST(PanelTable, NamesFileAndLineOfEveryFault) {
    const struct {
        std::string lines;
        std::string message;
    } faults[] = {
        {"A\t1\tgz\tBIM\twt\t10\n", "panel.tsv:2: expected 7 columns separated by tabs, found 6"},
        {"A_S1\t1\tgz\tBIM\twt\t10\t-\n",
         "panel.tsv:2: a sample's name holds letters, digits and -, not 'A_S1'"},
        {"A\t0\tgz\tBIM\twt\t10\t-\n",
         "panel.tsv:2: the sample's number is a whole number from 1, not '0'"},
        {"A\t1\tzip\tBIM\twt\t10\t-\n", "panel.tsv:2: the format is plain or gz, not 'zip'"},
        {"A\t1\tgz\tBIM\twt\t-3\t-\n",
         "panel.tsv:2: pairs is a whole number up to 1000000000 or a percentage with at most two "
         "decimals, not '-3'"},
        {"A\t1\tgz\tBIM\twt\t1.234%\t-\n",
         "panel.tsv:2: pairs is a whole number up to 1000000000 or a percentage with at most two "
         "decimals, not '1.234%'"},
        {"A\t1\tgz\tBIM\twt\t1\t-\nA\t1\tplain\tBIM\twt\t1\t-\n",
         "panel.tsv:3: sample A has two formats"},
        {"A\t1\tgz\tBIM\twt\t1\t-\nB\t1\tgz\tBIM\twt\t1\t-\n",
         "panel.tsv:3: sample number 1 was used before"},
        {"", "panel.tsv: no sample in the table"},
    };
    for (const auto& fault : faults) {
        const auto samples = parse(fault.lines);
        ASSERT_FALSE(samples.ok()) << fault.lines;
        EXPECT_EQ(samples.error().message, fault.message);
    }
}

TEST(PanelTable, WantsItsHeadLine) {
    const auto samples = simulator::parsePanelTable("A\t1\tgz\tBIM\twt\t10\t-\n", "panel.tsv", 1);
    ASSERT_FALSE(samples.ok());
    EXPECT_EQ(samples.error().message.rfind("panel.tsv:1: expected the head line", 0), 0U);
}

} // namespace
