// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include "report/canonical_json.h"

#include <bit>
#include <cstdint>
#include <limits>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

namespace {

using Json = nlohmann::ordered_json;
using report::canonicalJson;
using report::canonicalNumber;

// RFC 8785, appendix B.
TEST(CanonicalJson, WritesNumbersAsTheRfcDoes) {
    const std::vector<std::pair<std::uint64_t, std::string>> samples = {
        {0x0000000000000000, "0"},
        {0x8000000000000000, "0"},
        {0x0000000000000001, "5e-324"},
        {0x8000000000000001, "-5e-324"},
        {0x7fefffffffffffff, "1.7976931348623157e+308"},
        {0x4340000000000000, "9007199254740992"},
        {0xc340000000000000, "-9007199254740992"},
        {0x4430000000000000, "295147905179352830000"},
        {0x44b52d02c7e14af5, "9.999999999999997e+22"},
        {0x44b52d02c7e14af6, "1e+23"},
        {0x44b52d02c7e14af7, "1.0000000000000001e+23"},
        {0x444b1ae4d6e2ef4e, "999999999999999700000"},
        {0x444b1ae4d6e2ef4f, "999999999999999900000"},
        {0x444b1ae4d6e2ef50, "1e+21"},
        {0x3eb0c6f7a0b5ed8c, "9.999999999999997e-7"},
        {0x3eb0c6f7a0b5ed8d, "0.000001"},
        {0x41b3de4355555553, "333333333.3333332"},
        {0x41b3de4355555557, "333333333.33333343"},
        {0xbecbf647612f3696, "-0.0000033333333333333333"},
        {0x43143ff3c1cb0959, "1424953923781206.2"},
    };
    for (const auto& [bits, text] : samples) {
        EXPECT_EQ(canonicalNumber(std::bit_cast<double>(bits)), text);
    }
}

// RFC 8785, section 3.2.2, but for the numbers, which are above.
TEST(CanonicalJson, SortsKeysAndWritesTextsAsTheRfcDoes) {
    const Json value = Json::parse(R"({
        "string": "\u20ac$\u000F\u000aA'\u0042\u0022\u005c\\\"\/",
        "literals": [null, true, false]
    })");
    EXPECT_EQ(canonicalJson(value), "{\"literals\":[null,true,false],"
                                    "\"string\":\"\xE2\x82\xAC$\\u000f\\nA'B\\\"\\\\\\\\\\\"/\"}");
}

TEST(CanonicalJson, WritesIntegersOfAnySizeInFull) {
    EXPECT_EQ(canonicalJson(Json(std::numeric_limits<std::int64_t>::max())), "9223372036854775807");
    EXPECT_EQ(canonicalJson(Json(std::numeric_limits<std::int64_t>::min())),
              "-9223372036854775808");
}

TEST(CanonicalJson, WritesANumberThatIsNotFiniteAsNull) {
    EXPECT_EQ(canonicalJson(Json(std::numeric_limits<double>::infinity())), "null");
}

TEST(CanonicalJson, WritesNothingBetweenValues) {
    EXPECT_EQ(canonicalJson(Json::parse("{ \"b\" : [ ] , \"a\" : { } }")), R"({"a":{},"b":[]})");
}

} // namespace
