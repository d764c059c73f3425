// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "document/document_window.h"
#include "document/input_discovery.h"
#include "platform/clipboard.h"
#include "platform/text.h"
#include "platform/work_queues.h"
#include "run/main_routine.h"

namespace document {

/// What the machine and the application lend to every document. All outlive it.
struct DocumentServices {
    run::RunServices run;
    platform::MainQueue& mainQueue;
    platform::Clipboard& clipboard;
    Alerts& alerts;
};

/// How a patient's files are brought to the run.
enum class InputMode {
    workingCopies, ///< plain-text copies beside the inputs, removed after the run
    direct,        ///< the inputs themselves, plain or .gz; nothing is written beside them
};

/// One open analysis: a pair of FASTQ files, or the directory that holds them, and its results.
///
/// Lives on the main thread: every member but the RunDisplay ones is called there. Runs go on in
/// the document's two serial queues and come back through the main queue; the destructor waits for
/// a running patient, after which tasks still in the main queue do nothing.
class VextaDocument : private run::RunDisplay {
public:
    explicit VextaDocument(const DocumentServices& services);
    ~VextaDocument() override;
    VextaDocument(const VextaDocument&) = delete;
    VextaDocument& operator=(const VextaDocument&) = delete;

    /// Opens a FASTQ file and finds its mate; shows an alert and returns false when there is none.
    bool readFromURL(const std::string& path, std::string_view typeName);

    /// Runs the opened pair; returns at once.
    void analyze();
    /// Runs every pair in the document's directory, one after the other; returns at once.
    void analyzeAll();

    /// Puts the full report of the selected patients on the clipboard.
    void copy();
    /// Puts the summary table of every patient on the clipboard.
    void makeSummaryTable();

    void disableControles();
    void enableControles();
    /// Appends the text to the error log and brings it forward. From any thread.
    void displayError(const std::string& line) override;

    /// The window; null before one was made. Not owned.
    DocumentWindow* windowController = nullptr;
    run::MainRoutine& mainRoutine() { return *m_mainRoutine; }
    const run::MainRoutine& mainRoutine() const { return *m_mainRoutine; }

    /// Set to stop a batch before its next patient. From any thread.
    void setCancelOperationFlag(bool cancel) noexcept;
    bool cancelOperationFlag() const noexcept;

    bool canMakeSummaryTable() const noexcept { return m_canMakeSummaryTable; }
    void setCanMakeSummaryTable(bool can) noexcept { m_canMakeSummaryTable = can; }

    platform::Text file1;
    platform::Text file2;
    platform::Text fastqFileDir;

    /// How runs started from now on get their files.
    InputMode inputMode = InputMode::workingCopies;
    /// With direct input, where analyze() writes pairs that nothing claimed; nullopt: nowhere.
    std::optional<std::string> unassignedPath;

private:
    // (bodies and private members: whoever implements this class)
    std::unique_ptr<run::MainRoutine> m_mainRoutine;
    bool m_canMakeSummaryTable = false;
};

} // namespace document
