// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <array>
#include <memory>

#include <QMainWindow>
#include <QString>

#include "run/main_routine.h"

class QAbstractButton;
class QLabel;
class QLineEdit;
class QPlainTextEdit;
class QProgressBar;

namespace ui {

class ButtonForwardingCancelOperationToDelegate;
class ErrorLogWindow;
class NoticeLine;
class PopoverContents;
class RecordTableView;
class RunProgressView;

/// A document window and its controls, by the names that its descriptions give them. Owns the
/// window; no control is null.
class WindowOutlets {
public:
    /// Loads the description of that name; see loadWindowDescription(). `routine` must outlive the
    /// window.
    WindowOutlets(const QString& windowDescription, const run::MainRoutine& routine);

    QMainWindow* mainWindow;
    QLineEdit* file1TextField = nullptr;
    QLineEdit* file2TextField = nullptr;
    QLineEdit* totalNumberOfReadsTextField = nullptr;
    QLineEdit* readsMappedTextField = nullptr;
    QLineEdit* readsFailedToBeMappedTextField = nullptr;
    /// Deliberate: spelled so, as window descriptions spell it, and never written.
    QLineEdit* totalNumberOfIntormativeReadsTextField = nullptr;
    RecordTableView* patientsNoTableView = nullptr;
    RecordTableView* germlineDNAResultTableView = nullptr;
    RecordTableView* somaticDNAResultTableView = nullptr;
    RecordTableView* germlineRNAResultTableView = nullptr;
    RecordTableView* somaticRNAResultTableView = nullptr;
    /// Notices beside the result tables, shown only while their table holds a finding.
    QLabel* germlineDNAResultTextField = nullptr;
    QLabel* somaticDNAResultTextField = nullptr;
    QLabel* germlineRNAResultTextField = nullptr;
    QLabel* somaticRNAResultTextField = nullptr;
    /// Say where none of a table's targets had reads enough; the RNA tables always tell themselves.
    QLabel* germlineDNANotAssessableTextField = nullptr;
    QLabel* somaticDNANotAssessableTextField = nullptr;
    QAbstractButton* analyzeButton = nullptr;
    QAbstractButton* analyzeAllButton = nullptr;
    ButtonForwardingCancelOperationToDelegate* stopButton = nullptr;
    QPlainTextEdit* errorLogTextView = nullptr;
    ErrorLogWindow* errorLogWindow = nullptr;
    PopoverContents* popoverViewControllerHUD = nullptr;
    RecordTableView* popoverTableView = nullptr;
    QLabel* popoverCommentTextField = nullptr;
    /// About the run.
    NoticeLine* noticeLine = nullptr;
    /// What the run warns of: nothing else may take its place.
    NoticeLine* warningLine = nullptr;
    /// About the results.
    NoticeLine* ribbon = nullptr;
    QLabel* unsavedTextField = nullptr;
    QLabel* mappedShareLabel = nullptr;
    QLabel* patientsTitleLabel = nullptr;
    QProgressBar* busyIndicator = nullptr;
    /// Along the bottom of the window, while a run goes on.
    RunProgressView* runProgressView = nullptr;

    /// In the order of kResultTables, as the next.
    std::array<RecordTableView*, 4> resultTableViews() const;
    std::array<QLabel*, 4> resultNotices() const;

private:
    void takeControls();

    std::unique_ptr<QMainWindow> m_window;
};

} // namespace ui
