// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
//
// The window of a document, where its sides meet: the controls (window_outlets.h), the results
// (results_view.h), the run (window_run.h) and the menus (window_menus.h). Commands go to the
// document, and what the document tells, as its window and as the observer of its runs, goes to one
// of these sides. What is decided here is what the user may press (validateMenuItem()) and whether
// the results on show are saved.
//
// A window that is closed during a run is hidden, not destroyed: what the document tells after that
// still finds its widgets.
//
// Tested by window_controller_test.cpp, window_story_test.cpp and window_lifetime_test.cpp.
#include "ui/window/window_controller.h"

#include <utility>

#include <QAbstractButton>
#include <QAction>
#include <QFileInfo>
#include <QItemSelectionModel>
#include <QLabel>
#include <QMessageBox>
#include <QProgressBar>

#include "settings/settings_table.h"
#include "ui/tables/record_table_view.h"
#include "ui/tables/table_models.h"
#include "ui/widgets/shown_texts.h"
#include "ui/window/desktop_preferences.h"
#include "ui/window/error_log_window.h"
#include "ui/window/notices.h"
#include "ui/window/popover.h"
#include "ui/window/results_view.h"
#include "ui/window/run_controls.h"
#include "ui/window/save_dialog.h"
#include "ui/window/window_frame.h"
#include "ui/window/window_texts.h"

namespace ui {
namespace {

QString shown(const std::string& text) {
    return QString::fromStdString(text);
}

} // namespace

// --- Making

WindowController::WindowController(document::VextaDocument& document,
                                   const QString& windowDescription,
                                   settings::SettingsStore& settings,
                                   const ApplicationActions& actions,
                                   DirectoriesInUse directoriesInUse)
    : WindowOutlets(windowDescription, document.mainRoutine()), vextaDocument(&document),
      mainRoutine(&document.mainRoutine()), totalNumberOfReads(QStringLiteral("")),
      readsMapped(QStringLiteral("")), readsFailedToBeMapped(QStringLiteral("")),
      m_settings(settings), m_description(windowDescription),
      m_results(new ResultsView(
          *this, *mainRoutine, [this] { return reasonWithoutPatient(); }, this)),
      m_menus(*mainWindow, actions), m_run(document, *this, std::move(directoriesInUse)) {
    connectTables();
    connectCommands();
    restoreWindow(*mainWindow, m_description);
    document.windowController = this;
    document.runObserver = this;
    reloadPatientsTable();
    windowDidLoad();
    showKindOfDocument();
    reloadResultTables();
    updateActions();
}

WindowController::~WindowController() {
    rememberWindow(*mainWindow, m_description);
    if (vextaDocument->windowController == this) {
        vextaDocument->windowController = nullptr;
        vextaDocument->runObserver = nullptr;
    }
}

void WindowController::connectTables() {
    connect(patientsNoTableView->selectionModel(), &QItemSelectionModel::selectionChanged, this,
            [this] { tableViewSelectionDidChange(patientsNoTableView); });
    for (RecordTableView* view : resultTableViews()) {
        connect(view, &RecordTableView::detailsRequested, this,
                [this, view] { doubleClickAction(view); });
    }
}

void WindowController::connectCommands() {
    connect(analyzeButton, &QAbstractButton::clicked, this, &WindowController::analyze);
    connect(analyzeAllButton, &QAbstractButton::clicked, this, &WindowController::analyzeAll);
    stopButton->delegate = this;
    connect(stopButton, &QAbstractButton::clicked, this,
            [this] { stopButton->cancelOperation(stopButton); });
    connect(warningLine, &NoticeLine::detailsRequested, this, [this] { m_run.listWarnings(); });
    // A patient that fails brings the log to the front, with the keyboard: Esc, meant for the
    // batch, comes there.
    connect(errorLogWindow, &ErrorLogWindow::escaped, this, [this] {
        if (m_run.isRunning()) {
            stopButton->cancelOperation(stopButton);
        }
    });
    const auto on = [this](QAction* action, auto command) {
        connect(action, &QAction::triggered, this, command);
    };
    on(m_menus.analyze, &WindowController::analyze);
    on(m_menus.analyzeAll, &WindowController::analyzeAll);
    on(m_menus.stop, [this] { stopButton->cancelOperation(stopButton); });
    on(m_menus.saveResult, &WindowController::saveVEXtAFile);
    on(m_menus.copy, &WindowController::copy);
    on(m_menus.makeSummaryTable, &WindowController::makeSummaryTable);
    on(m_menus.showErrorLog, &WindowController::showErrorLogWindow);
    on(m_menus.showThresholds, &WindowController::showND1AndND2Threshold);
    on(m_menus.close, [this] { mainWindow->close(); });
    on(m_menus.jumpToPatients, [this] { patientsNoTableView->jumpTo(); });
    const auto views = resultTableViews();
    for (std::size_t place = 0; place < views.size(); ++place) {
        on(m_menus.jumpToTable[place], [view = views[place]] { view->jumpTo(); });
    }
    auto* events = new WindowEvents(*mainWindow);
    connect(events, &WindowEvents::filesDropped, this, &WindowController::openRequested);
    connect(events, &WindowEvents::closed, this, [this] {
        rememberWindow(*mainWindow, m_description);
        closeCompanions();
        Q_EMIT windowClosed();
    });
}

void WindowController::closeCompanions() {
    popover->close();
    errorLogWindow->close();
    m_run.closeWarnings();
    if (m_thresholdsBox) {
        m_thresholdsBox->close();
    }
}

void WindowController::windowDidLoad() {
    patientsNoTableView->viewport()->setBackgroundRole(QPalette::Window);
    patientsNoTableView->setAlternatingRowColors(false);
    setIndicator(false);
    settings::key::writeFirstWindowValues(m_settings);
    updateWindowFromSummaryForEachPatient(*mainRoutine->summaryForEachPatient);
    if (vextaDocument->isSavedResult()) {
        setAnalyzeAllButtonEnabled(false);
        setAnalyzeButtonEnabled(false);
    }
    if (popover == nullptr) {
        popover = new Popover(popoverViewControllerHUD, mainWindow);
    }
}

void WindowController::showKindOfDocument() {
    m_unsaved = false;
    showUnsaved();
    if (vextaDocument->isSavedResult()) {
        ribbon->say(NoticeLine::Kind::information, tr("Saved result, read-only"));
    } else {
        mainWindow->setWindowTitle(
            titleOfFile(shownPath(archive::stringOrEmpty(vextaDocument->fastqFileDir) + '/' +
                                  archive::stringOrEmpty(vextaDocument->file1))));
        m_run.warnOfBystanders();
    }
}

void WindowController::showResultPath(const QString& path) {
    mainWindow->setWindowTitle(titleOfFile(path));
    ribbon->setToolTip(plainToolTip(path));
}

void WindowController::takeRecordBeside(const std::string& path) {
    // A large document is read once more for its digest, so a thread does it.
    m_recordBeside = std::async(std::launch::async, [this, path] {
                         report::RecordBeside found = report::findRecord(path);
                         QMetaObject::invokeMethod(
                             this,
                             [this, state = found.state, message = found.message] {
                                 tellOfRecord(state, shownPath(message));
                             },
                             Qt::QueuedConnection);
                         return found;
                     }).share();
}

void WindowController::tellOfRecord(report::RecordBeside::State state, const QString& message) {
    using State = report::RecordBeside::State;
    if (state != State::fits) {
        noticeLine->say(state == State::missing ? NoticeLine::Kind::information
                                                : NoticeLine::Kind::problem,
                        message + QLatin1Char('.'));
    }
}

// --- Commands

bool WindowController::beginAnalysis(bool batch) {
    if (!m_run.begin(batch)) {
        return false;
    }
    updateActions();
    return true;
}

void WindowController::analyze() {
    if (beginAnalysis(false)) {
        vextaDocument->analyze();
    }
}

void WindowController::analyzeAll() {
    if (beginAnalysis(true)) {
        vextaDocument->analyzeAll();
    }
}

void WindowController::copy() {
    vextaDocument->copy();
}

void WindowController::makeSummaryTable() {
    vextaDocument->makeSummaryTable();
}

void WindowController::saveVEXtAFile() {
    vextaDocument->saveVEXtAFile();
}

void WindowController::cancelOperation(QObject* /*sender*/) {
    vextaDocument->setCancelOperationFlag(true);
    m_run.sayStopping();
}

void WindowController::showErrorLogWindow() {
    errorLogWindow->bringForward();
}

void WindowController::showND1AndND2Threshold() {
    if (!m_thresholdsBox) {
        auto* box = new QMessageBox(QMessageBox::NoIcon, tr("ND1 and ND2 Threshold"), QString(),
                                    QMessageBox::Ok, mainWindow);
        box->setAttribute(Qt::WA_DeleteOnClose);
        box->setModal(false);
        box->setTextFormat(Qt::PlainText);
        m_thresholdsBox = box;
    }
    m_thresholdsBox->setText(thresholdsText(m_settings));
    m_thresholdsBox->show();
    m_thresholdsBox->raise();
    m_thresholdsBox->activateWindow();
}

void WindowController::doubleClickAction(QTableView* sender) {
    summaryForEachPatientUsedForPopover = m_results->selectedPatient();
    mutDomainUsedForPopover = m_results->fillPopover(*sender);
    popover->showRelativeToRect(m_results->popoverAnchor(*sender), sender->viewport());
}

// --- Menus

bool WindowController::validateMenuItem(const QString& title) const {
    if (title.contains(QLatin1String(titles::kShowErrorLog)) ||
        title.contains(QLatin1String(titles::kShowThresholds))) {
        return true;
    }
    if (title.contains(QLatin1String(titles::kCopy))) {
        return !selectedPatientRows().empty();
    }
    return baseValidates(title);
}

bool WindowController::baseValidates(const QString& title) const {
    if (title == QString::fromUtf8(titles::kSaveResult)) {
        return vextaDocument->validateUserInterfaceItem("saveVEXtAFile:");
    }
    if (title == QLatin1String(titles::kMakeSummaryTable)) {
        return vextaDocument->validateUserInterfaceItem("makeSummaryTable:");
    }
    if (title == QLatin1String(titles::kAnalyze)) {
        return analyzeButton->isEnabled() && !m_run.isRunning();
    }
    if (title == QLatin1String(titles::kAnalyzeAll)) {
        return analyzeAllButton->isEnabled() && !m_run.isRunning();
    }
    return true;
}

void WindowController::updateActions() {
    for (QAction* action : m_menus.validated()) {
        action->setEnabled(validateMenuItem(action->text()));
    }
}

// --- The tables' data

int WindowController::numberOfRowsInTableView(const QTableView* table) const {
    return table->model() == nullptr ? 0 : table->model()->rowCount();
}

QString WindowController::objectValueForTableColumn(const QTableView* table,
                                                    const QString& identifier, int row) const {
    const auto* model = qobject_cast<const RecordTableModel*>(table->model());
    return model == nullptr ? QString() : model->cellText(row, identifier);
}

void WindowController::tableViewSelectionDidChange(const QTableView* table) {
    updateActions();
    if (table == patientsNoTableView) {
        m_results->takeSelection();
    }
}

QString WindowController::reasonWithoutPatient() const {
    if (m_run.isRunning()) {
        return tr("The analysis is running.");
    }
    if (m_results->patientCount() > 0) {
        return tr("Select a patient.");
    }
    if (vextaDocument->isSavedResult()) {
        return tr("The saved result holds no patients.");
    }
    return analyzeButton->isEnabled() ? tr("Press Analyze (Ctrl+R)") : tr("No results.");
}

// --- The window of the document

void WindowController::reloadPatientsTable() {
    if (m_results->reloadPatients()) {
        m_unsaved = m_results->patientCount() > 0;
        showUnsaved();
    }
    updateActions();
}

void WindowController::reloadResultTables() {
    m_results->reloadResultTables();
}

void WindowController::selectPatientRow(std::int64_t row) {
    m_results->selectPatientRow(row);
}

std::vector<std::int64_t> WindowController::selectedPatientRows() const {
    return m_results->selectedPatientRows();
}

void WindowController::setAnalyzeButtonEnabled(bool enabled) {
    analyzeButton->setEnabled(enabled);
    m_results->showEmptyTexts();
    updateActions();
}

bool WindowController::analyzeButtonEnabled() const {
    return analyzeButton->isEnabled();
}

void WindowController::setAnalyzeAllButtonEnabled(bool enabled) {
    analyzeAllButton->setEnabled(enabled);
    updateActions();
}

void WindowController::setIndicator(bool busy) {
    indicator = busy;
    busyIndicator->setVisible(busy);
}

void WindowController::updateWindowFromSummaryForEachPatient(
    const run::SummaryForEachPatient& summary) {
    m_results->showPatient(summary);
    if (mainRoutine->selectedPatientRowNo >= 0) {
        selectPatientRow(mainRoutine->selectedPatientRowNo);
    }
}

void WindowController::bringErrorLogForward() {
    // A document that was closed while a patient runs has no more to say on the screen.
    if (mainWindow->isVisible()) {
        errorLogWindow->bringForward();
    }
}

// --- The observer of its runs

void WindowController::patientStarts(std::size_t position, std::size_t count) {
    m_run.patientStarts(position, count);
}

void WindowController::preparing(const document::Preparation& preparation) {
    runProgressView->preparing(preparation);
}

void WindowController::prepared() {
    runProgressView->prepared();
}

void WindowController::setText(run::RunField field, const std::string& text) {
    m_results->setText(field, text);
}

void WindowController::appendToErrorLog(const std::string& text) {
    errorLogWindow->append(shown(text));
}

void WindowController::showWarning(const run::Warning& warning,
                                   const document::PatientAccount* patient) {
    m_run.showWarning(warning, patient);
}

void WindowController::showCatalogueNotice(const std::string& text) {
    if (text.empty()) {
        ribbon->clear();
    } else {
        ribbon->say(NoticeLine::Kind::problem, shown(text));
    }
}

void WindowController::analysisEnded(const document::AnalysisOutcome& outcome) {
    m_run.end(outcome);
    m_results->showEmptyTexts();
    updateActions();
    Q_EMIT analysisOver();
}

// --- Saving

QString WindowController::suggestedResultName() const {
    const auto& patients = archive::orEmpty(mainRoutine->summaryForEachPatientMutAr);
    const QString directory = shownPath(archive::stringOrEmpty(vextaDocument->fastqFileDir));
    const QString read1 = shownPath(archive::stringOrEmpty(vextaDocument->file1));
    const QString name = patients.size() == 1 ? read1.section(QStringLiteral("_R1_"), 0, 0)
                                              : QFileInfo(directory).fileName();
    return directory + QLatin1Char('/') + (name.isEmpty() ? tr("result") : name);
}

void WindowController::offerToSave(const std::string& bytes, std::string_view extension) {
    const QString suffix = QString::fromUtf8(extension.data(), static_cast<int>(extension.size()));
    auto* dialog = new SaveDialog(suffix, tr("Vexta result"), mainWindow);
    dialog->setObjectName(QStringLiteral("savePanel"));
    dialog->setWindowTitle(tr("Save Result"));
    dialog->selectFile(suggestedResultName() + QLatin1Char('.') + suffix);
    // Made now, as the bytes were: both tell of the moment of the command.
    connect(dialog, &QFileDialog::fileSelected, this,
            [this, files = ResultFiles{bytes, recordToWrite(bytes)}](const QString& path) {
                writeResult(path, files);
            });
    dialog->open();
}

std::string WindowController::recordToWrite(const std::string& bytes) const {
    const document::AnalysisAccount& account = vextaDocument->analysisAccount();
    if (!writesRecords()) {
        return {};
    }
    if (vextaDocument->isSavedResult()) {
        const std::string run = m_recordBeside.valid() ? m_recordBeside.get().run : std::string();
        return run.empty() ? run : report::recordText(run, bytes);
    }
    // Without a run there is nothing to record.
    return account.patients.empty()
               ? std::string()
               : report::recordText(
                     report::runRecord(account, {mainRoutine->services().workers.threadCount(),
                                                 vextaDocument->inputMode}),
                     bytes);
}

void WindowController::writeResult(const QString& path, const ResultFiles& files) {
    const platform::Status written = writeResultFiles(enginePath(path), files);
    if (!written) {
        noticeLine->say(NoticeLine::Kind::problem,
                        tr("The result was not saved: %1").arg(shown(written.error().message)));
        return;
    }
    m_unsaved = false;
    showUnsaved();
    noticeLine->say(NoticeLine::Kind::information, tr("Saved as %1").arg(path));
}

void WindowController::showUnsaved() {
    unsavedTextField->setVisible(m_unsaved);
}

} // namespace ui
