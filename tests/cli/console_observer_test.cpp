// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include "cli/console_observer.h"

#include <sstream>

#include <gtest/gtest.h>

#include "run/run_account.h"

namespace {

TEST(ConsoleObserver, ShowsAlertsAndTheErrorLogOnStandardError) {
    std::ostringstream err;
    cli::Console console(err, true);
    cli::ConsoleObserver observer(console, [] {});
    observer.showAlert("Files are not paired or incompatible.", "");
    observer.appendToErrorLog("Error occurred for files a and b\n");
    observer.showWarning({run::Warning::Kind::padding, "said even when quiet"}, nullptr);
    EXPECT_EQ(err.str(), "vexta: Files are not paired or incompatible.\n"
                         "Error occurred for files a and b\n"
                         "vexta: warning: said even when quiet.\n");
}

TEST(ConsoleObserver, TellsTheEndOnceItKnowsTheOutcome) {
    std::ostringstream err;
    cli::Console console(err, true);
    std::size_t failed = 0;
    cli::ConsoleObserver* itself = nullptr;
    cli::ConsoleObserver observer(console, [&] { failed = itself->outcome()->patientsFailed; });
    itself = &observer;
    EXPECT_FALSE(observer.outcome());
    observer.analysisEnded({document::AnalysisOutcome::End::finished, 3, 2});
    EXPECT_EQ(failed, 2U);
}

TEST(ConsoleObserver, KeepsWhichCopyIsMadeUntilAllAre) {
    std::ostringstream err;
    cli::Console console(err, false);
    cli::ConsoleObserver observer(console, [] {});
    observer.patientStarts(2, 5);
    observer.preparing({"a.fastq", "/d/_a.fastq"});
    ASSERT_TRUE(observer.runningPatient().state().preparation);
    EXPECT_EQ(observer.runningPatient().state().preparation->name, "a.fastq");
    EXPECT_EQ(observer.runningPatient().state().position, 2U);
    observer.prepared();
    EXPECT_FALSE(observer.runningPatient().state().preparation);
}

} // namespace
