// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include "cli/findings_text.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

namespace {

using catalogue::Finding;
using catalogue::Rule;
using Json = nlohmann::ordered_json;

const std::vector<Finding> kFindings{
    {Finding::Severity::warning, 0, "the file has no end", Rule::endMarkerMissing},
    {Finding::Severity::error, 7, "mutation G12D: bad", Rule::strandWordUnknown}};

TEST(FindingsText, HasALineForEachFindingAndOneThatCountsThem) {
    EXPECT_EQ(cli::findingsAsText("panel.txt", kFindings, false),
              "panel.txt: warning: the file has no end\n"
              "panel.txt:7: error: mutation G12D: bad\n"
              "panel.txt: 1 error, 1 warning\n");
    EXPECT_EQ(cli::findingsAsText("panel.txt", {}, false), "panel.txt: 0 errors, 0 warnings\n");
}

TEST(FindingsText, ExplainsBelowEachFinding) {
    const std::string text = cli::findingsAsText("panel.txt", kFindings, true);
    EXPECT_THAT(text, testing::HasSubstr(
                          "panel.txt:7: error: mutation G12D: bad\n"
                          "    what happens: No pair ever counts for the entry: it is always "
                          "negative.\n"
                          "    what to do: Write R1, R2 or R1R2, in upper case.\n"
                          "panel.txt: 1 error, 1 warning\n"));
}

TEST(FindingsText, IsAnArrayOfObjectsWithFixedKeysInJson) {
    const Json array = Json::parse(cli::findingsAsJson("panel.txt", kFindings));
    ASSERT_EQ(array.size(), 2U);
    std::vector<std::string> keys;
    for (const auto& [key, value] : array[1].items()) {
        keys.push_back(key);
    }
    EXPECT_THAT(keys, testing::ElementsAre("rule", "severity", "file", "line", "message",
                                           "explanation", "advice"));
    EXPECT_EQ(array[1]["rule"], "strand-word-unknown");
    EXPECT_EQ(array[1]["severity"], "error");
    EXPECT_EQ(array[1]["file"], "panel.txt");
    EXPECT_EQ(array[1]["line"], 7);
    EXPECT_EQ(array[1]["message"], "mutation G12D: bad");
    EXPECT_EQ(array[1]["advice"], "Write R1, R2 or R1R2, in upper case.");
    EXPECT_EQ(array[0]["severity"], "warning");
    EXPECT_TRUE(array[0]["line"].is_null()) << "a finding about the whole file has no line";
}

TEST(FindingsText, IsAnEmptyArrayInJsonWithoutFindings) {
    EXPECT_EQ(cli::findingsAsJson("panel.txt", {}), "[]\n");
}

TEST(FindingsText, IsValidJsonWhateverBytesANameHolds) {
    const std::string text = cli::findingsAsJson(
        "p\xFF.txt", {{Finding::Severity::error, 1, "mutation \xFE\"\x1B: bad", Rule::coreEmpty}});
    EXPECT_TRUE(Json::accept(text)) << text;
}

} // namespace
