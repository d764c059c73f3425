// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include "cli/session.h"

#include "cli/json_export.h"
#include "cli/terminal_text.h"
#include "document/text_exports.h"

namespace cli {

Session::Session(const Arguments& arguments, const std::string& definitionFilePath,
                 settings::SettingsStore& settings, Console& console)
    : m_workers(arguments.threads.value_or(platform::WorkerPool::defaultThreadCount())),
      m_window(console, [this] { m_mainQueue.stop(); }),
      m_document({{settings, m_workers, definitionFilePath,
                   arguments.cataloguePath ? run::DefinitionOrigin::named
                                           : run::DefinitionOrigin::shipped},
                  m_mainQueue,
                  m_clipboard,
                  m_window,
                  m_callerHold}) {
    m_window.setPatients(m_document.mainRoutine().summaryForEachPatientMutAr);
    m_document.windowController = &m_window;
    m_document.runObserver = &m_window;
    m_document.inputMode =
        arguments.workingCopies ? document::InputMode::workingCopies : document::InputMode::direct;
}

document::AnalysisOutcome Session::waitForEnd() {
    m_mainQueue.run();
    return m_window.outcome().value();
}

run::PatientList Session::showablePatients() const {
    return withShowableTexts(m_document.mainRoutine().summaryForEachPatientMutAr);
}

std::vector<Output> Session::outputs(const OutputPaths& paths, const Streams& streams) {
    const auto isShown = [&streams](const std::string& path) {
        return path == kStandardOutput ? streams.outIsTerminal : isTerminal(path);
    };
    std::vector<Output> outputs;
    if (paths.save) {
        outputs.push_back(
            {"--save", *paths.save, [this](const TextSink& sink) {
                 m_document.saveVEXtAFile();
                 const auto bytes = m_window.takeOffered();
                 return bytes ? sink(*bytes)
                              : platform::Status(platform::Error{
                                    "--save: the result holds a number that is not finite"});
             }});
    }
    if (paths.report) {
        outputs.push_back({"--report", *paths.report,
                           [this, shown = isShown(*paths.report)](const TextSink& sink) {
                               if (shown) {
                                   return sink(document::fullReport(
                                       showablePatients(), m_window.selectedPatientRows()));
                               }
                               m_document.copy();
                               return sink(m_clipboard.take());
                           }});
    }
    if (paths.summary) {
        outputs.push_back({"--summary", *paths.summary,
                           [this, shown = isShown(*paths.summary)](const TextSink& sink) {
                               if (shown) {
                                   return sink(document::summaryTable(showablePatients()));
                               }
                               m_document.makeSummaryTable();
                               return sink(m_clipboard.take());
                           }});
    }
    if (paths.json) {
        outputs.push_back({"--json", *paths.json, [this](const TextSink& sink) {
                               const auto& routine = m_document.mainRoutine();
                               return writeJson(routine.summaryForEachPatientMutAr,
                                                routine.selectedPatientRowNo, sink);
                           }});
    }
    return outputs;
}

} // namespace cli
