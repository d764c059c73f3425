// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <future>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include <QObject>
#include <QPointer>
#include <QString>
#include <QStringList>

#include "document/vexta_document.h"
#include "report/run_record.h"
#include "settings/settings_store.h"
#include "ui/window/document_files.h"
#include "ui/window/result_files.h"
#include "ui/window/run_controls.h"
#include "ui/window/window_menus.h"
#include "ui/window/window_outlets.h"
#include "ui/window/window_run.h"

class QMessageBox;
class QTableView;

namespace ui {

class Popover;
class ResultsView;

/// The window of one document: shows its patients and the selected one's results, passes its
/// commands on, and is told by the document what a run does. Made with its document, which must
/// outlive it; sets itself as the document's windowController and runObserver, and takes itself
/// back at its end. Main thread only.
class WindowController : public QObject,
                         public WindowOutlets,
                         public document::DocumentWindow,
                         public document::RunObserver,
                         public CancelOperationReceiver {
    Q_OBJECT

public:
    /// Loads the description of that name ("VextaDocument" or "VextaDocumentMidi") and shows the
    /// document in it; the window itself is left to the caller to show. Windows that are given
    /// copies of one `directoriesInUse` make no working copies in the same directory at a time.
    WindowController(document::VextaDocument& document, const QString& windowDescription,
                     settings::SettingsStore& settings, const ApplicationActions& actions,
                     DirectoriesInUse directoriesInUse = {});
    ~WindowController() override;

    // The controls are those of WindowOutlets.

    document::VextaDocument* vextaDocument;
    run::MainRoutine* mainRoutine;

    // --- State

    /// Made once, when the window loads.
    Popover* popover = nullptr;
    /// The busy state, which drives the busy indicator.
    bool indicator = false;
    QString totalNumberOfReads;
    QString totalNumberOfOverlappedReads;
    QString readsMapped;
    QString readsFailedToBeMapped;
    std::shared_ptr<const run::SummaryForEachPatient> summaryForEachPatientUsedForPopover;
    std::shared_ptr<const catalogue::MutDomain> mutDomainUsedForPopover;

    /// Names the file of a saved result, which the document itself does not keep.
    void showResultPath(const QString& path);
    /// Looks for the record of the saved result under `path`, on another thread. One that fits is
    /// kept, and written again where the result is saved; else a notice says that it is missing,
    /// unreadable or that of other results.
    void takeRecordBeside(const std::string& path);

    // --- Commands of the window

    /// Called once by the constructor; a second call makes nothing anew.
    void windowDidLoad();
    void analyze();
    void analyzeAll();
    void copy();
    void makeSummaryTable();
    void saveVEXtAFile();
    /// Asks to stop: also while nothing runs. The next batch clears it.
    void cancelOperation(QObject* sender) override;
    void showErrorLogWindow();
    /// Shows both values and what they mean, in a box that holds nothing up.
    void showND1AndND2Threshold();
    /// Opens the popover for the selected row of a result table. Another sender gives no domain.
    void doubleClickAction(QTableView* sender);
    /// Whether the menu item of that title is enabled.
    bool validateMenuItem(const QString& title) const;

    // --- The tables' data

    int numberOfRowsInTableView(const QTableView* table) const;
    QString objectValueForTableColumn(const QTableView* table, const QString& identifier,
                                      int row) const;
    /// Shows the patient of the selected row; does nothing for another table than the patients'
    /// or an empty selection: the last patient stays on show.
    void tableViewSelectionDidChange(const QTableView* table);

    /// From a command that starts an analysis to analysisOver().
    bool analysisIsRunning() const { return m_run.isRunning(); }

    // --- The window of the document

    void reloadPatientsTable() override;
    void reloadResultTables() override;
    void selectPatientRow(std::int64_t row) override;
    std::vector<std::int64_t> selectedPatientRows() const override;
    void setAnalyzeButtonEnabled(bool enabled) override;
    bool analyzeButtonEnabled() const override;
    void setAnalyzeAllButtonEnabled(bool enabled) override;
    void setIndicator(bool busy) override;
    void updateWindowFromSummaryForEachPatient(const run::SummaryForEachPatient& summary) override;
    void bringErrorLogForward() override;
    void offerToSave(const std::string& bytes, std::string_view extension) override;

    // --- The observer of its runs

    void patientStarts(std::size_t position, std::size_t count) override;
    void preparing(const document::Preparation& preparation) override;
    void prepared() override;
    void setText(run::RunField field, const std::string& text) override;
    void appendToErrorLog(const std::string& text) override;
    void showWarning(const run::Warning& warning, const document::PatientAccount* patient) override;
    /// On the ribbon, which nobody can put away: it is about the results on show.
    void showCatalogueNotice(const std::string& text) override;
    void analysisEnded(const document::AnalysisOutcome& outcome) override;

Q_SIGNALS:
    /// Files were dropped on the window.
    void openRequested(const QStringList& paths);
    /// The user closed the window. Receivers must not delete the controller at once.
    void windowClosed();
    void analysisOver();

private:
    void connectTables();
    void connectCommands();
    void showKindOfDocument();
    /// The windows that go with the document's.
    void closeCompanions();
    bool beginAnalysis(bool batch);
    QString reasonWithoutPatient() const;
    void updateActions();
    bool baseValidates(const QString& title) const;
    void tellOfRecord(report::RecordBeside::State state, const QString& message);
    /// The file of the record of the results as they are now, which are saved as `bytes`; empty
    /// where there is none or none is wanted.
    std::string recordToWrite(const std::string& bytes) const;
    void writeResult(const QString& path, const ResultFiles& files);
    QString suggestedResultName() const;
    void showUnsaved();

    settings::SettingsStore& m_settings;
    QString m_description;
    /// Owned as a child of this object.
    ResultsView* m_results;
    WindowMenus m_menus;
    WindowRun m_run;
    QPointer<QMessageBox> m_thresholdsBox;
    /// Of a saved result, once takeRecordBeside() was called. Its end waits for the thread, which
    /// uses this object.
    std::shared_future<report::RecordBeside> m_recordBeside;
    /// Whether the patients on show came from a run and were not written since.
    bool m_unsaved = false;
};

} // namespace ui
