// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include "cli/progress_line.h"

#include <sstream>

#include <gmock/gmock.h>

namespace {

using cli::ProgressState;
using cli::progressText;

ProgressState thirdOfTwelve() {
    ProgressState state;
    state.position = 3;
    state.patientCount = 12;
    state.bytesTaken = 500;
    state.bytesTotal = 1000;
    state.pairs = 1234567;
    state.patientSeconds = 2.0;
    state.runSeconds = 10.0;
    return state;
}

TEST(ProgressText, SaysWhichPatientHowFarHowFastAndHowLong) {
    // 2.5 patients took 10 seconds, so the 9.5 that are left take 38.
    EXPECT_EQ(progressText(thirdOfTwelve()),
              "patient 3 of 12  50%  1,234,567 pairs  617,283 pairs/s  0:38 left");
}

TEST(ProgressText, ASinglePatientIsNotNumbered) {
    ProgressState state = thirdOfTwelve();
    state.position = 1;
    state.patientCount = 1;
    EXPECT_EQ(progressText(state), "50%  1,234,567 pairs  617,283 pairs/s  0:10 left");
}

TEST(ProgressText, HasNoRateAndNoRemainingTimeAtTheStart) {
    ProgressState state = thirdOfTwelve();
    state.position = 1;
    state.bytesTaken = 0;
    state.bytesTotal = 0;
    state.pairs = 12;
    state.patientSeconds = 0.5;
    EXPECT_EQ(progressText(state), "patient 1 of 12  0%  12 pairs");
}

TEST(ProgressText, ShowsHoursAndNeverMoreThanAllBytes) {
    ProgressState state = thirdOfTwelve();
    state.position = 1;
    state.patientCount = 3;
    state.bytesTaken = 2000; // a file that grew
    state.runSeconds = 1900.0;
    EXPECT_THAT(progressText(state), testing::HasSubstr("patient 1 of 3  100%"));
    EXPECT_THAT(progressText(state), testing::EndsWith("1:03:20 left"));
}

TEST(ProgressLine, LeavesNothingBehindWhenNoPatientStarted) {
    std::ostringstream err;
    cli::Console console(err, false);
    const matching::ReadingProgress reading;
    const cli::PatientPosition patient;
    { const cli::ProgressLine line(console, reading, patient); }
    EXPECT_EQ(err.str(), "");
}

} // namespace
