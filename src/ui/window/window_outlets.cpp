// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
//
// Which controls a document window must have. A description that lacks one ends the program when
// its window is made. The progress of a run is no part of a description, since it needs the run
// whose counters it shows; a description only leaves room for it. Tested by
// window_description_test.cpp.
#include "ui/window/window_outlets.h"

#include <QAbstractButton>
#include <QLabel>
#include <QLayout>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QProgressBar>

#include "ui/tables/record_table_view.h"
#include "ui/window/error_log_window.h"
#include "ui/window/notices.h"
#include "ui/window/popover.h"
#include "ui/window/run_controls.h"
#include "ui/window/window_description.h"

namespace ui {

WindowOutlets::WindowOutlets(const QString& windowDescription, const run::MainRoutine& routine)
    : m_window(loadWindowDescription(windowDescription)) {
    mainWindow = m_window.get();
    takeControls();
    auto* progressRoom = outlet<QWidget>(*mainWindow, "runProgressContainer");
    runProgressView = new RunProgressView(routine, progressRoom);
    progressRoom->layout()->addWidget(runProgressView);
}

void WindowOutlets::takeControls() {
    const auto find = [this]<class Control>(Control*& control, const char* name) {
        control = outlet<Control>(*mainWindow, name);
    };
    find(file1TextField, "file1TextField");
    find(file2TextField, "file2TextField");
    find(totalNumberOfReadsTextField, "totalNumberOfReadsTextField");
    find(readsMappedTextField, "readsMappedTextField");
    find(readsFailedToBeMappedTextField, "readsFailedToBeMappedTextField");
    find(totalNumberOfIntormativeReadsTextField, "totalNumberOfIntormativeReadsTextField");
    find(patientsNoTableView, "patientsNoTableView");
    find(germlineDNAResultTableView, "germlineDNAResultTableView");
    find(somaticDNAResultTableView, "somaticDNAResultTableView");
    find(germlineRNAResultTableView, "germlineRNAResultTableView");
    find(somaticRNAResultTableView, "somaticRNAResultTableView");
    find(germlineDNAResultTextField, "germlineDNAResultTextField");
    find(somaticDNAResultTextField, "somaticDNAResultTextField");
    find(germlineRNAResultTextField, "germlineRNAResultTextField");
    find(somaticRNAResultTextField, "somaticRNAResultTextField");
    find(germlineDNANotAssessableTextField, "germlineDNANotAssessableTextField");
    find(somaticDNANotAssessableTextField, "somaticDNANotAssessableTextField");
    find(analyzeButton, "analyzeButton");
    find(analyzeAllButton, "analyzeAllButton");
    find(stopButton, "stopButton");
    find(errorLogTextView, "errorLogTextView");
    find(errorLogWindow, "errorLogWindow");
    find(popoverViewControllerHUD, "popoverViewControllerHUD");
    find(popoverTableView, "popoverTableView");
    find(popoverCommentTextField, "popoverCommentTextField");
    find(noticeLine, "noticeLine");
    find(warningLine, "warningLine");
    find(ribbon, "ribbon");
    find(unsavedTextField, "unsavedTextField");
    find(mappedShareLabel, "mappedShareLabel");
    find(patientsTitleLabel, "patientsTitleLabel");
    find(busyIndicator, "busyIndicator");
}

std::array<RecordTableView*, 4> WindowOutlets::resultTableViews() const {
    return {germlineDNAResultTableView, somaticDNAResultTableView, germlineRNAResultTableView,
            somaticRNAResultTableView};
}

std::array<QLabel*, 4> WindowOutlets::resultNotices() const {
    return {germlineDNAResultTextField, somaticDNAResultTextField, germlineRNAResultTextField,
            somaticRNAResultTextField};
}

} // namespace ui
