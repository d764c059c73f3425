// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
//
// The error log of a batch: what runs say, on their thread, and what completions say, on the main
// thread, stand in it in the order in which it happened, however far the one thread is ahead of the
// other.
#include <future>
#include <string>

#include <gtest/gtest.h>

#include "document_test.h"

namespace {

using document::InputMode;

/// A window whose warnings stand in the error log, among the errors.
class LogWindow : public document::RecordingWindow {
public:
    using document::RecordingWindow::RecordingWindow;
    void showWarning(const run::Warning& warning, const document::PatientAccount*) override {
        errorLog += run::logLine(warning);
    }
};

class ErrorLogOrderTest : public document::VextaDocumentTest {
protected:
    void SetUp() override {
        makeDocument();
        watch(log);
        document->inputMode = InputMode::direct;
    }

    std::string pathOf(int sample, int read) const {
        return dir.file("p_S" + std::to_string(sample) + "_L001_R" + std::to_string(read) +
                        "_001.fastq");
    }
    /// A pair whose headers differ; that of read 1 tells the sample.
    void writeFailingPair(int sample) const {
        dir.write(platform::lastPathComponent(pathOf(sample, 1)),
                  "@S" + std::to_string(sample) + "\nAC\n+\nII\n");
        dir.write(platform::lastPathComponent(pathOf(sample, 2)), "@other\nAC\n+\nII\n");
    }
    /// What is said of it: by its run, and by its completion.
    std::string linesOf(int sample) const {
        return "Two fastq files do not match at @S" + std::to_string(sample) +
               ".\nError occurred for files " + pathOf(sample, 1) + " and " + pathOf(sample, 2) +
               "\n";
    }

    LogWindow log{loop};
};

TEST_F(ErrorLogOrderTest, EachPatientsLinesStandTogetherForAnyTiming) {
    constexpr int kFailing = 300;
    std::string expected;
    for (int sample = 1; sample <= kFailing; ++sample) {
        writeFailingPair(sample);
        expected += linesOf(sample);
    }
    // It is called, so that its settings are read: every failing patient is over by then.
    writePair(kFailing + 1);
    for (int round = 0; round < 50; ++round) {
        log.errorLog.clear();
        std::promise<void> lastIsCalled;
        settings.onRead = [&lastIsCalled, told = false]() mutable {
            if (!told) {
                told = true;
                lastIsCalled.set_value();
            }
        };
        document->analyzeAll();
        if (round % 2 != 0) {
            // The main thread was busy all the while: every completion waits.
            lastIsCalled.get_future().wait();
        }
        loop.run();
        ASSERT_EQ(log.outcomes.back().patientsFailed, static_cast<std::size_t>(kFailing));
        ASSERT_EQ(log.errorLog, expected + tooFewReadsOf("p_S" + std::to_string(kFailing + 1) +
                                                         "_L001_R1_001.fastq"))
            << "round " << round;
    }
}

TEST_F(ErrorLogOrderTest, WhatTheMainThreadSaysIsInTheLogAtOnce) {
    run::RunDisplay& display = driver().mainDocument;
    display.displayError("an error\n");
    EXPECT_EQ(log.errorLog, "an error\n");
    EXPECT_EQ(log.broughtForward, 1);
    display.displayWarning({run::Warning::Kind::padding, "a warning"});
    EXPECT_EQ(log.errorLog, "an error\na warning.\n");
}

TEST_F(ErrorLogOrderTest, WhatAnotherThreadSaysWaitsForTheMainThread) {
    std::async(std::launch::async, [this] {
        driver().mainDocument.displayWarning({run::Warning::Kind::padding, "a warning"});
        driver().mainDocument.displayError("an error\n");
    }).wait();
    EXPECT_EQ(log.errorLog, "");
    loop.async([this] { loop.stop(); });
    loop.run();
    EXPECT_EQ(log.errorLog, "a warning.\nan error\n");
}

} // namespace
