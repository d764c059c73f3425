// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
//
// What a window adds to a run. The document runs; here it is decided whether it may: one run at a
// time in a window, and one at a time in a folder where working copies are made. The notice line
// has room for one message, and the next one takes its place. So warnings have a line of their own,
// which stays until the next run. Tested by window_controller_test.cpp, window_warnings_test.cpp
// and, for two runs in one folder, app_delegate_test.cpp.
#include "ui/window/window_run.h"

#include <utility>
#include <vector>

#include "document/working_copies.h"
#include "ui/tables/result_rows.h"
#include "ui/window/desktop_preferences.h"
#include "ui/window/error_log_window.h"
#include "ui/window/notices.h"
#include "ui/window/run_controls.h"

namespace ui {

WindowRun::WindowRun(document::VextaDocument& document, const WindowOutlets& outlets,
                     DirectoriesInUse directoriesInUse)
    : m_document(document), m_outlets(outlets), m_directoriesInUse(std::move(directoriesInUse)) {}

bool WindowRun::begin(bool batch) {
    if (m_running) {
        return false;
    }
    const document::InputMode mode =
        readsInputsInPlace() ? document::InputMode::direct : document::InputMode::workingCopies;
    if (!takeDirectory(mode)) {
        return false;
    }
    m_document.inputMode = mode;
    m_running = true;
    m_request = {batch, 0, textOf(m_document.fastqFileDir)};
    m_outlets.noticeLine->clear();
    forgetWarnings();
    warnOfBystanders();
    m_outlets.runProgressView->begin();
    return true;
}

bool WindowRun::takeDirectory(document::InputMode mode) {
    if (mode == document::InputMode::direct) {
        return true;
    }
    m_directoryInUse = m_directoriesInUse.use(archive::stringOrEmpty(m_document.fastqFileDir));
    if (!m_directoryInUse) {
        m_outlets.noticeLine->say(
            NoticeLine::Kind::problem,
            tr("Not started: another analysis is working in this folder, and the "
               "working copies of the two would mix. Wait until it is done."));
    }
    return m_directoryInUse != nullptr;
}

void WindowRun::warnOfBystanders() {
    const std::vector<std::string> files =
        readsInputsInPlace() ? std::vector<std::string>() : m_document.bystanders();
    if (files.empty()) {
        return;
    }
    const QString danger = QString::fromStdString(document::bystandersWarning(files));
    m_outlets.noticeLine->say(NoticeLine::Kind::danger, danger);
    if (m_running) {
        m_outlets.errorLogWindow->append(danger + QLatin1Char('\n'));
    }
}

void WindowRun::patientStarts(std::size_t position, std::size_t count) {
    m_request.planned = count;
    m_outlets.runProgressView->patientStarts(position, count);
}

// --- Warnings

void WindowRun::showWarning(const run::Warning& warning, const document::PatientAccount* patient) {
    // The log tells of failures, and of what decoding a file met. The rest has a place of its own.
    if (warning.kind == run::Warning::Kind::padding) {
        m_outlets.errorLogWindow->append(QString::fromStdString(run::logLine(warning)));
    }
    m_warnings.add(warning, patient);
    NoticeLine& line = *m_outlets.warningLine;
    // Also where the user put the line away: this one was not in it.
    if (line.isHidden() || line.text() != m_warnings.line()) {
        line.say(noticeKindOf(m_warnings.gravest().kind), m_warnings.line());
    }
    line.offerDetails(m_warnings.more(), tr("%1 Show all warnings").arg(m_warnings.more()));
}

void WindowRun::listWarnings() {
    if (!m_warningsWindow) {
        m_warningsWindow = new WarningsWindow(m_outlets.mainWindow);
    }
    m_warningsWindow->tell(m_warnings.details());
}

void WindowRun::closeWarnings() {
    if (m_warningsWindow) {
        m_warningsWindow->close();
    }
}

void WindowRun::forgetWarnings() {
    m_warnings = {};
    m_outlets.warningLine->clear();
    closeWarnings();
}

// --- The end

void WindowRun::sayStopping() {
    if (!m_running) {
        return;
    }
    // Deliberate: a patient that runs is never interrupted, and a single run does not look at the
    // flag at all.
    m_outlets.noticeLine->say(
        NoticeLine::Kind::information,
        m_request.batch ? tr("Stopping: the patient that runs now will finish, the others are "
                             "skipped.")
                        : tr("A single patient's run cannot be stopped: it will finish."));
}

void WindowRun::end(const document::AnalysisOutcome& outcome) {
    m_running = false;
    m_directoryInUse.reset();
    m_outlets.runProgressView->end();
    const OutcomeLine line = outcomeLine(outcome, m_request);
    if (!line.text.isEmpty()) {
        m_outlets.noticeLine->say(
            line.problem ? NoticeLine::Kind::problem : NoticeLine::Kind::information, line.text);
    }
}

} // namespace ui
