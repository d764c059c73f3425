// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include "cli/progress_line.h"

#include <sstream>

#include <gmock/gmock.h>

namespace {

using cli::preparationText;
using cli::progressText;
using document::AnalysisProgress;

AnalysisProgress thirdOfTwelve() {
    AnalysisProgress progress;
    progress.position = 3;
    progress.patientCount = 12;
    progress.bytesTaken = 500;
    progress.bytesTotal = 1000;
    progress.pairs = 1234567;
    progress.readingSeconds = 2.0;
    progress.patientSeconds = 2.0;
    progress.runSeconds = 10.0;
    return progress;
}

TEST(ProgressText, SaysWhichPatientHowFarHowFastAndHowLong) {
    // Two patients took 8 seconds and half of the third 2, so what is left takes 2 and 9 times 4.
    EXPECT_EQ(progressText(thirdOfTwelve()),
              "patient 3 of 12  50%  1,234,567 pairs  617,283 pairs/s  0:38 left");
}

TEST(ProgressText, ASinglePatientIsNotNumbered) {
    AnalysisProgress progress = thirdOfTwelve();
    progress.position = 1;
    progress.patientCount = 1;
    progress.runSeconds = 2.0;
    EXPECT_EQ(progressText(progress), "50%  1,234,567 pairs  617,283 pairs/s  0:02 left");
}

TEST(ProgressText, HasNoRateAndNoRemainingTimeAtTheStart) {
    AnalysisProgress progress;
    progress.position = 1;
    progress.patientCount = 12;
    progress.pairs = 12;
    progress.readingSeconds = 0.5;
    progress.patientSeconds = 0.5;
    progress.runSeconds = 0.5;
    EXPECT_EQ(progressText(progress), "patient 1 of 12  0%  12 pairs");
}

TEST(ProgressText, ShowsHoursAndNeverMoreThanAllBytes) {
    AnalysisProgress progress = thirdOfTwelve();
    progress.position = 1;
    progress.patientCount = 3;
    progress.bytesTaken = 2000; // a file that grew
    progress.readingSeconds = progress.patientSeconds = progress.runSeconds = 1900.0;
    EXPECT_THAT(progressText(progress), testing::HasSubstr("patient 1 of 3  100%"));
    EXPECT_THAT(progressText(progress), testing::EndsWith("1:03:20 left"));
}

TEST(ProgressText, StopsAtAThousandHours) {
    AnalysisProgress progress = thirdOfTwelve();
    progress.runSeconds = 1e30;
    EXPECT_THAT(progressText(progress), testing::EndsWith("999:59:59 left"));
}

TEST(PreparationText, NamesTheFileAndTheSizeOfItsCopyWhereItIsKnown) {
    const document::Preparation preparation = {"x_R1_001.fastq.gz", "/data/_x_R1_001.fastq"};
    EXPECT_EQ(preparationText(thirdOfTwelve(), preparation, 1'234'999'999),
              "patient 3 of 12  preparing x_R1_001.fastq.gz  1,234 MB");
    EXPECT_EQ(preparationText(thirdOfTwelve(), preparation, std::nullopt),
              "patient 3 of 12  preparing x_R1_001.fastq.gz");
}

TEST(ProgressLine, LeavesNothingBehindWhenNoPatientStarted) {
    std::ostringstream err;
    cli::Console console(err, false);
    const run::ReadingProgress reading;
    const cli::RunningPatient patient;
    { const cli::ProgressLine line(console, reading, patient); }
    EXPECT_EQ(err.str(), "");
}

} // namespace
