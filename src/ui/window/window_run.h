// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <memory>

#include <QCoreApplication>
#include <QPointer>
#include <QString>

#include "document/vexta_document.h"
#include "ui/window/document_files.h"
#include "ui/window/warnings.h"
#include "ui/window/window_outlets.h"
#include "ui/window/window_texts.h"

namespace ui {

/// The run of a document as its window sees it: whether one may begin, what it may cost, and what
/// the notice line says of it. Main thread only.
class WindowRun {
    Q_DECLARE_TR_FUNCTIONS(ui::WindowRun)

public:
    /// `document` and `outlets` must outlive the object.
    WindowRun(document::VextaDocument& document, const WindowOutlets& outlets,
              DirectoriesInUse directoriesInUse);

    /// From begin() to end().
    bool isRunning() const { return m_running; }

    /// Notes a run that begins; false where one goes on here or, after a notice, in the way.
    bool begin(bool batch);
    void patientStarts(std::size_t position, std::size_t count);
    /// Keeps it, in the error log as well, and sees to it that the line of warnings tells of it.
    void showWarning(const run::Warning& warning, const document::PatientAccount* patient);
    /// Opens the window that lists all warnings of the run, or brings it up to date.
    void listWarnings();
    void closeWarnings();
    /// Says what becomes of the run after a Stop.
    void sayStopping();
    /// Takes the progress away and says how it ended.
    void end(const document::AnalysisOutcome& outcome);

    /// Names the files that a run would remove although they are none of its own: while there is
    /// time to read directly instead, and when a run begins, in the error log then as well.
    void warnOfBystanders();

private:
    /// Takes the directory for the working copies of a run; false, after a notice, where another
    /// document's run has it.
    bool takeDirectory(document::InputMode mode);
    void forgetWarnings();

    document::VextaDocument& m_document;
    const WindowOutlets& m_outlets;
    DirectoriesInUse m_directoriesInUse;
    bool m_running = false;
    RunRequest m_request;
    RunWarnings m_warnings;
    QPointer<WarningsWindow> m_warningsWindow;
    /// Null while no run makes working copies.
    std::unique_ptr<DirectoriesInUse::Use> m_directoryInUse;
};

} // namespace ui
