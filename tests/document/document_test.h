// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <algorithm>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "document/recording_window.h"
#include "document/vexta_document.h"
#include "platform/files.h"
#include "support/small_run.h"
#include "support/temp_dir.h"

namespace document {

using Lines = std::vector<std::string>;

/// Settings that call back whenever a rule reads one: on the run's thread, while a patient runs.
class WatchedSettings : public settings::MemorySettingsStore {
public:
    std::optional<settings::SettingValue> value(std::string_view key) const override {
        if (onRead) {
            onRead();
        }
        return settings::MemorySettingsStore::value(key);
    }
    platform::Status readable() const override { return whetherReadable; }

    std::function<void()> onRead;
    platform::Status whetherReadable;
};

/// A hold that calls back right before and right after its work.
class WatchedHold : public platform::CallerHold {
public:
    void hold(const platform::Task& work) override {
        if (before) {
            before();
        }
        work();
        if (after) {
            after();
        }
    }
    std::function<void()> before;
    std::function<void()> after;
};

class VextaDocumentTest : public testing::Test {
protected:
    void SetUp() override { makeDocument(); }

    /// What a run says of a patient with a few reads.
    static std::string tooFewReadsOf(const std::string& name) {
        return name + ": somatic DNA: not assessable (1 of 1 targets ND *1).\n";
    }

    void makeDocument(run::DefinitionOrigin origin = run::DefinitionOrigin::shipped) {
        const run::RunServices forRuns{settings, workers, own.file("catalogue.txt"), origin};
        document = std::make_unique<VextaDocument>(
            DocumentServices{forRuns, loop, &clipboard, alerts, callerHold});
        watch(window);
        document->fastqFileDir = dir.path();
    }

    void watch(RecordingWindow& shown) const {
        document->windowController = &shown;
        document->runObserver = &shown;
    }

    /// A pair of that sample in the directory; `pairs2` reads in its second file.
    std::string writePair(int sample, int pairs1 = 3, int pairs2 = 3) const {
        const std::string start = "p_S" + std::to_string(sample) + "_L001_R";
        dir.write(start + "2_001.fastq", support::reads(pairs2));
        return dir.write(start + "1_001.fastq", support::reads(pairs1));
    }

    AnalysisOutcome analyzeAll() {
        document->analyzeAll();
        loop.run();
        return window.outcomes.back();
    }
    AnalysisOutcome analyze(const std::string& path) {
        EXPECT_TRUE(document->readFromURL(path, "fastq"));
        document->analyze();
        loop.run();
        return window.outcomes.back();
    }
    run::MainRoutine& driver() const { return document->mainRoutine(); }

    std::vector<std::string> patientNumbers() const {
        std::vector<std::string> numbers;
        for (const auto& patient :
             archive::orEmpty(document->mainRoutine().summaryForEachPatientMutAr)) {
            numbers.push_back(archive::stringOrEmpty(patient->patientNo));
        }
        return numbers;
    }
    std::vector<std::string> namesInDir() const {
        std::vector<std::string> names = platform::namesInDirectory(dir.path()).value();
        std::sort(names.begin(), names.end());
        return names;
    }

    support::TempDir dir; ///< the inputs
    support::TempDir own; ///< the catalogue
    std::string definition = own.write("catalogue.txt", support::kSmallCatalogue);
    WatchedSettings settings;
    platform::WorkerPool workers{2};
    platform::RunLoop loop;
    RecordingClipboard clipboard;
    RecordingAlerts alerts;
    WatchedHold callerHold;
    RecordingWindow window{loop};
    std::unique_ptr<VextaDocument> document;
};

} // namespace document
