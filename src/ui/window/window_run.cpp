// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
//
// What a window adds to a run. The document runs; here it is decided whether it may: one run at a
// time in a window, and one at a time in a folder where working copies are made. The notice line
// has room for one message. What a run may cost comes before everything else that is said during
// it, so a warning joins that text and does not replace it. Tested by window_controller_test.cpp
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
    m_document.inputMode =
        readsInputsInPlace() ? document::InputMode::direct : document::InputMode::workingCopies;
    if (!takeDirectory()) {
        return false;
    }
    m_running = true;
    m_request = {batch, 0, textOf(m_document.fastqFileDir)};
    m_outlets.noticeLine->clear();
    warnOfBystanders();
    m_outlets.runProgressView->begin();
    return true;
}

bool WindowRun::takeDirectory() {
    if (m_document.inputMode == document::InputMode::direct) {
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
    m_danger.clear();
    if (files.empty()) {
        return;
    }
    m_danger = QString::fromStdString(document::bystandersWarning(files));
    m_outlets.noticeLine->say(NoticeLine::Kind::danger, m_danger);
    if (m_running) {
        m_outlets.errorLogWindow->append(m_danger + QLatin1Char('\n'));
    }
}

void WindowRun::patientStarts(std::size_t position, std::size_t count) {
    m_request.planned = count;
    m_outlets.runProgressView->patientStarts(position, count);
}

void WindowRun::showWarning(const std::string& text) {
    const QString warning = QString::fromStdString(text);
    m_outlets.errorLogWindow->append(warning);
    const QString line = warning.trimmed();
    if (m_danger.isEmpty()) {
        m_outlets.noticeLine->say(NoticeLine::Kind::problem, line);
    } else {
        m_outlets.noticeLine->say(NoticeLine::Kind::danger, m_danger + QLatin1Char('\n') + line);
    }
}

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
    m_danger.clear();
    m_directoryInUse.reset();
    m_outlets.runProgressView->end();
    const OutcomeLine line = outcomeLine(outcome, m_request);
    if (!line.text.isEmpty()) {
        m_outlets.noticeLine->say(
            line.problem ? NoticeLine::Kind::problem : NoticeLine::Kind::information, line.text);
    }
}

} // namespace ui
