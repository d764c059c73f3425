// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <vector>

#include "cli/arguments.h"
#include "cli/console.h"
#include "cli/console_window.h"
#include "cli/outputs.h"
#include "document/vexta_document.h"
#include "platform/clipboard.h"
#include "platform/work_queues.h"
#include "settings/settings_store.h"

namespace cli {

/// A clipboard that keeps the text, for whoever writes it to an output.
class KeptText : public platform::Clipboard {
public:
    void setPlainText(const std::string& text) override { m_text = text; }
    std::string take() { return std::move(m_text); }

private:
    std::string m_text;
};

/// A document with its window, on a terminal. Lives on one thread, which is the document's main
/// thread.
class Session {
public:
    /// `console` and `settings` outlive the session. `definitionFilePath` is empty when no
    /// catalogue is named and the one that ships was not found.
    Session(const Arguments& arguments, const std::string& definitionFilePath,
            settings::SettingsStore& settings, Console& console);

    document::VextaDocument& document() { return m_document; }
    const ConsoleWindow& window() const { return m_window; }

    /// Runs the main queue until the analysis that was started is over.
    document::AnalysisOutcome waitForEnd();

    /// The outputs of the document's patients. They refer to the session.
    std::vector<Output> outputs(const OutputPaths& paths, const Streams& streams);

private:
    /// The patients for a table, with texts that a terminal only shows.
    run::PatientList showablePatients() const;

    platform::RunLoop m_mainQueue;
    platform::WorkerPool m_workers;
    KeptText m_clipboard;
    platform::DirectHold m_callerHold;
    ConsoleWindow m_window;
    document::VextaDocument m_document;
};

} // namespace cli
