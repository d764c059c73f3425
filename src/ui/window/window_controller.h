// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <array>
#include <memory>
#include <optional>

#include <QMainWindow>
#include <QObject>
#include <QPointer>
#include <QString>
#include <QStringList>

#include "document/vexta_document.h"
#include "settings/settings_store.h"
#include "ui/tables/result_rows.h"
#include "ui/window/document_files.h"
#include "ui/window/run_controls.h"
#include "ui/window/window_menus.h"
#include "ui/window/window_texts.h"

class QAbstractButton;
class QLabel;
class QLineEdit;
class QMessageBox;
class QPlainTextEdit;
class QProgressBar;
class QTableView;

namespace ui {

class ErrorLogWindow;
class MutationsTableModel;
class NoticeLine;
class PatientsTableModel;
class Popover;
class PopoverContents;
class RecordTableView;
class ResultTableModel;
class RunProgressView;

/// The window of one document: shows its patients and the selected one's results, passes its
/// commands on, and is told by the document what a run does. Made with its document, which must
/// outlive it; sets itself as the document's windowController and runObserver, and takes itself
/// back at its end. Main thread only.
class WindowController : public QObject,
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

    // --- Outlets, named as in the window descriptions

    document::VextaDocument* vextaDocument;
    run::MainRoutine* mainRoutine;
    QMainWindow* mainWindow = nullptr;
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
    QAbstractButton* analyzeButton = nullptr;
    QAbstractButton* analyzeAllButton = nullptr;
    ButtonForwardingCancelOperationToDelegate* stopButton = nullptr;
    QPlainTextEdit* errorLogTextView = nullptr;
    ErrorLogWindow* errorLogWindow = nullptr;
    PopoverContents* popoverViewControllerHUD = nullptr;
    RecordTableView* popoverTableView = nullptr;
    QLabel* popoverCommentTextField = nullptr;
    NoticeLine* noticeLine = nullptr;
    NoticeLine* ribbon = nullptr;
    QLabel* unsavedTextField = nullptr;
    QLabel* mappedShareLabel = nullptr;
    QLabel* patientsTitleLabel = nullptr;
    /// Along the bottom of the window, while a run goes on.
    RunProgressView* runProgressView = nullptr;

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
    bool analysisIsRunning() const { return m_running; }

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
    void showWarning(const std::string& text) override;
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
    void takeOutlets();
    void makeModels();
    void connectTables();
    void connectCommands();
    void showKindOfDocument();
    /// Names the files that a run would remove although they are none of its own: while there is
    /// time to read directly instead, and when a run begins, in the error log then as well.
    void warnOfBystanders();
    /// The windows that go with the document's.
    void closeCompanions();
    /// Notes a run that begins; false where one goes on here or in the way.
    bool beginAnalysis(bool batch);
    /// Takes the directory for the working copies of a run; false, after a notice, where another
    /// document's run has it.
    bool takeDirectory();
    void showPatient(const run::SummaryForEachPatient& patient);
    void showNotices();
    void showEmptyTexts();
    QString reasonWithoutPatient() const;
    void updateActions();
    bool baseValidates(const QString& title) const;
    void writeResult(const QString& path, const std::string& bytes);
    QString suggestedResultName() const;
    void showUnsaved();

    /// The patient at the driver's selected row; null where there is none at that row, which may
    /// lie beyond the list.
    std::shared_ptr<run::SummaryForEachPatient> selectedPatient() const;
    /// The result table behind a view; nullopt for any other view.
    std::optional<ResultTable> resultTableOf(const QTableView* view) const;

    settings::SettingsStore& m_settings;
    QString m_description;
    std::unique_ptr<QMainWindow> m_window;
    std::unique_ptr<WindowMenus> m_menus;
    QProgressBar* m_busyIndicator = nullptr;
    /// In the order of kResultTables.
    std::array<RecordTableView*, 4> m_resultViews{};
    std::array<QLabel*, 4> m_notices{};
    std::array<ResultTableModel*, 4> m_resultModels{};
    PatientsTableModel* m_patientsModel = nullptr;
    MutationsTableModel* m_mutationsModel = nullptr;
    QPointer<QMessageBox> m_thresholdsBox;
    bool m_running = false;
    /// What the run may cost, which no other notice of that run takes the place of. Empty: nothing.
    QString m_danger;
    DirectoriesInUse m_directoriesInUse;
    /// Null while no run makes working copies.
    std::unique_ptr<DirectoriesInUse::Use> m_directoryInUse;
    /// Whether the patients on show came from a run and were not written since.
    bool m_unsaved = false;
    RunRequest m_request;
};

} // namespace ui
