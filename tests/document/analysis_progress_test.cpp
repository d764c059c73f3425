// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include "document/analysis_progress.h"

#include <cmath>
#include <limits>

#include <gtest/gtest.h>

namespace document {
namespace {

using std::chrono::seconds;

constexpr double kAtOnce = 0.0;

AnalysisProgress singlePatient(std::uint64_t taken, std::uint64_t total, double afterSeconds) {
    AnalysisProgress progress;
    progress.position = 1;
    progress.patientCount = 1;
    progress.bytesTaken = taken;
    progress.bytesTotal = total;
    progress.readingSeconds = progress.patientSeconds = progress.runSeconds = afterSeconds;
    return progress;
}

// --- How much

TEST(FractionOfPatient, IsUnknownWithoutATotalAndNeverMoreThanOne) {
    EXPECT_EQ(fractionOfPatient(singlePatient(0, 0, 1)), std::nullopt);
    EXPECT_EQ(fractionOfPatient(singlePatient(17, 0, 1)), std::nullopt);
    EXPECT_EQ(fractionOfPatient(singlePatient(1, 4, 1)), 0.25);
    EXPECT_EQ(fractionOfPatient(singlePatient(9, 4, 1)), 1.0);
}

TEST(FractionOfRun, CountsEachPatientAlikeAndStandsWhileTheNextOneIsPrepared) {
    AnalysisProgress progress = singlePatient(1, 2, 1);
    progress.patientCount = 4;
    EXPECT_EQ(fractionOfRun(progress), 0.125);
    progress.position = 3;
    EXPECT_EQ(fractionOfRun(progress), 0.625);
    progress.bytesTotal = 0;
    EXPECT_EQ(fractionOfRun(progress), 0.5);
    progress.position = 1;
    EXPECT_EQ(fractionOfRun(progress), std::nullopt);
}

TEST(FractionOfRun, IsUnknownWhereNoPatientRuns) {
    EXPECT_EQ(fractionOfRun(AnalysisProgress()), std::nullopt);
    AnalysisProgress beyond = singlePatient(1, 2, 1);
    beyond.position = 2;
    EXPECT_EQ(fractionOfRun(beyond), std::nullopt);
    EXPECT_EQ(secondsLeft(beyond, kAtOnce), std::nullopt);
}

// --- How fast

TEST(PairsPerSecond, IsUnknownInTheFirstSecondOfReading) {
    AnalysisProgress progress = singlePatient(1, 2, 0.9);
    progress.pairs = 1000;
    EXPECT_EQ(pairsPerSecond(progress), std::nullopt);
    progress.readingSeconds = 2.0;
    EXPECT_EQ(pairsPerSecond(progress), 500.0);
}

TEST(PairsPerSecond, DoesNotCountThePreparation) {
    AnalysisProgress progress = singlePatient(1, 2, 2.0);
    progress.patientSeconds = progress.runSeconds = 100.0;
    progress.pairs = 1000;
    EXPECT_EQ(pairsPerSecond(progress), 500.0);
}

// --- How long

TEST(SecondsLeft, IsNotToldBeforeTheLeastTime) {
    EXPECT_EQ(secondsLeft(singlePatient(1, 4, 4.9), 5.0), std::nullopt);
    EXPECT_EQ(secondsLeft(singlePatient(1, 4, 5.0), 5.0), 15.0);
}

TEST(SecondsLeft, IsNotToldWhileTheTotalIsUnknown) {
    EXPECT_EQ(secondsLeft(singlePatient(0, 0, 60.0), 5.0), std::nullopt);
    EXPECT_EQ(secondsLeft(singlePatient(1000, 0, 60.0), 5.0), std::nullopt);
    EXPECT_EQ(secondsLeft(singlePatient(0, 1000, 60.0), 5.0), std::nullopt);
}

TEST(SecondsLeft, TakesTheFirstPatientForTheOthers) {
    AnalysisProgress progress = singlePatient(1, 4, 10.0);
    progress.patientCount = 3;
    progress.patientSeconds = progress.runSeconds = 30.0; // 20 of them preparing
    EXPECT_EQ(secondsLeft(progress, 5.0), 30.0 + 2 * 60.0);
}

TEST(SecondsLeft, CountsDownWhileALaterPatientIsPrepared) {
    AnalysisProgress progress;
    progress.position = 3;
    progress.patientCount = 4;
    progress.runSeconds = 20.0;
    EXPECT_EQ(secondsLeft(progress, 5.0), 20.0);
    progress.patientSeconds = 4.0;
    progress.runSeconds = 24.0;
    EXPECT_EQ(secondsLeft(progress, 5.0), 16.0);
}

TEST(SecondsLeft, IsNeverNegative) {
    AnalysisProgress slow;
    slow.position = 2;
    slow.patientCount = 2;
    slow.patientSeconds = 500.0; // far more than the patient before
    slow.runSeconds = 501.0;
    EXPECT_EQ(secondsLeft(slow, 5.0), 0.0);
    EXPECT_EQ(secondsLeft(singlePatient(9, 4, 10.0), 5.0), 0.0);
}

TEST(SecondsLeft, StaysFiniteForHugeNumbers) {
    constexpr auto kHuge = std::numeric_limits<std::uint64_t>::max();
    const auto left = secondsLeft(singlePatient(1, kHuge, 1e9), 5.0);
    ASSERT_TRUE(left);
    EXPECT_TRUE(std::isfinite(*left));
    EXPECT_EQ(fractionOfPatient(singlePatient(kHuge, kHuge, 1.0)), 1.0);
}

// --- Looking

class ProgressMeterTest : public testing::Test {
protected:
    AnalysisProgress look(std::size_t position, int second) {
        return meter.look(position, 2, start + seconds(second));
    }
    void count(std::uint64_t total, std::uint64_t taken, std::int64_t pairs) {
        reading.bytesTotal = total;
        reading.bytesTaken = taken;
        reading.pairs = pairs;
    }
    run::ReadingProgress reading;
    ProgressMeter meter{reading};
    ProgressMeter::Clock::time_point start = ProgressMeter::Clock::now();
};

TEST_F(ProgressMeterTest, TellsNothingBeforeTheFirstPatient) {
    count(10, 5, 1);
    const AnalysisProgress progress = look(0, 100);
    EXPECT_EQ(progress.runSeconds, 0.0);
    EXPECT_EQ(progress.pairs, 0);
}

TEST_F(ProgressMeterTest, CountsReadingFromTheMomentThatTheFilesAreOpened) {
    EXPECT_EQ(look(1, 10).bytesTotal, 0U);
    EXPECT_EQ(look(1, 15).readingSeconds, 0.0);
    count(100, 0, 0);
    look(1, 20);
    count(100, 50, 7);
    const AnalysisProgress progress = look(1, 22);
    EXPECT_EQ(progress.readingSeconds, 2.0);
    EXPECT_EQ(progress.patientSeconds, 12.0);
    EXPECT_EQ(progress.bytesTotal, 100U);
    EXPECT_EQ(progress.bytesTaken, 50U);
    EXPECT_EQ(progress.pairs, 7);
}

TEST_F(ProgressMeterTest, DoesNotTakeThePatientBeforeForTheNextOne) {
    look(1, 0);
    count(100, 100, 7);
    look(1, 10);
    const AnalysisProgress starting = look(2, 12);
    EXPECT_EQ(starting.bytesTotal, 0U);
    EXPECT_EQ(starting.pairs, 0);
    EXPECT_EQ(starting.patientSeconds, 0.0);
    EXPECT_EQ(starting.runSeconds, 12.0);
    count(100, 30, 2);
    EXPECT_EQ(look(2, 14).bytesTaken, 30U);
}

} // namespace
} // namespace document
