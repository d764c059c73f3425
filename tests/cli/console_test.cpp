// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include "cli/console.h"

#include <sstream>

#include <gtest/gtest.h>

namespace {

TEST(Console, SaysErrorsAndWarningsWithTheProgramsName) {
    std::ostringstream err;
    cli::Console console(err, false);
    console.error("e");
    console.warning("w");
    console.note("n");
    console.log("as it stands\n");
    console.log("without line end");
    EXPECT_EQ(err.str(), "vexta: e\nvexta: warning: w\nvexta: n\n"
                         "as it stands\nwithout line end\n");
}

TEST(Console, WhenQuietSaysOnlyWhatMayChangeTheMeaningOfResults) {
    std::ostringstream err;
    cli::Console console(err, true);
    console.error("e");
    console.warning("w");
    console.note("n");
    console.log("l");
    EXPECT_EQ(err.str(), "vexta: e\nvexta: warning: w\nl\n");
}

TEST(Console, ShowsHostileBytesHarmlessly) {
    std::ostringstream err;
    cli::Console console(err, false);
    console.error("a\x1b[31m\xff\x7f\tb");
    EXPECT_EQ(err.str(), "vexta: a\\u001b[31m\\xff\\u007f\tb\n");
}

TEST(Console, ShowsNoControlCharacterBeyondAscii) {
    std::ostringstream err;
    cli::Console console(err, false);
    console.error("a\xC2\x9B[31m\xC2\x80\xC2\xA0\xC3\xA9");
    EXPECT_EQ(err.str(), "vexta: a\\u009b[31m\\u0080\xC2\xA0\xC3\xA9\n");
}

TEST(Console, ALineEndInANameForgesNoLine) {
    std::ostringstream err;
    cli::Console console(err, false);
    console.log("Error occurred for files a\nvexta: b and c\n");
    console.error("a\nb");
    EXPECT_EQ(err.str(), "Error occurred for files a\\u000avexta: b and c\nvexta: a\\u000ab\n");
}

TEST(Console, ErasesTheProgressLineBeforeAMessageAndAtTheEndOnce) {
    std::ostringstream err;
    cli::Console console(err, false);
    console.showProgress("50%");
    console.error("e");
    console.showProgress("60%");
    console.eraseProgress();
    console.eraseProgress();
    EXPECT_EQ(err.str(), "\r\x1b[K50%\r\x1b[Kvexta: e\n\r\x1b[K60%\r\x1b[K");
}

} // namespace
