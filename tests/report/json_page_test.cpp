// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
//
// docs/formats/json.md lists words on which scripts rely. tests/cli/check_run_records.py looks at
// its keys.
#include <string>

#include <gmock/gmock.h>

#include "run/run_account.h"
#include "settings/settings_table.h"
#include "support/temp_dir.h"

namespace report {
namespace {

using Kind = run::Warning::Kind;

std::string page() {
    return support::readFile(VEXTA_SOURCE_DIR "/docs/formats/json.md");
}

std::string schema() {
    return support::readFile(VEXTA_SOURCE_DIR "/docs/formats/run-record.schema.json");
}

TEST(JsonPage, ListsEachKindOfWarningAndWhetherItIsSevere) {
    std::size_t at = page().find("### Warnings");
    for (int kind = 0; kind <= static_cast<int>(Kind::changedSettings); ++kind) {
        const auto each = static_cast<Kind>(kind);
        const std::string row = "\n| `" + std::string(run::nameOf(each)) + "` | " +
                                (run::isSevere(each) ? "yes" : "no") + " |";
        const std::size_t found = page().find(row, at);
        ASSERT_NE(found, std::string::npos) << row << " is missing or in another order";
        at = found;
    }
}

TEST(JsonPage, HasASchemaThatNamesEachSetting) {
    for (const settings::Setting& setting : settings::kSettings) {
        const char* kind =
            setting.type == settings::Setting::Type::integer ? "integerSetting" : "booleanSetting";
        EXPECT_THAT(schema(), testing::HasSubstr("\"" + std::string(setting.key) +
                                                 "\": { \"$ref\": \"#/$defs/" + kind + "\" }"));
    }
}

} // namespace
} // namespace report
