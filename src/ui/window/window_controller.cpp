// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
//
// The window of a document. It decides nothing about a run: commands go to the document, and what
// the document tells, as its window and as the observer of its runs, goes into widgets and models
// here. What this file does decide is what the user may press (validateMenuItem()) and which of the
// notices stands where: about the run beside the tables, about the results on the ribbon.
//
// A window that is closed during a run is hidden, not destroyed: what the document tells after that
// still finds its widgets.
//
// Tested by window_controller_test.cpp, window_story_test.cpp and window_lifetime_test.cpp.
#include "ui/window/window_controller.h"

#include <algorithm>
#include <utility>

#include <QAction>
#include <QFile>
#include <QFileInfo>
#include <QHeaderView>
#include <QLabel>
#include <QLayout>
#include <QLineEdit>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QProgressBar>

#include "document/working_copies.h"
#include "platform/files.h"
#include "settings/settings_table.h"
#include "ui/tables/record_table_view.h"
#include "ui/tables/table_models.h"
#include "ui/widgets/shown_texts.h"
#include "ui/window/desktop_preferences.h"
#include "ui/window/error_log_window.h"
#include "ui/window/notices.h"
#include "ui/window/popover.h"
#include "ui/window/run_controls.h"
#include "ui/window/save_dialog.h"
#include "ui/window/window_description.h"
#include "ui/window/window_frame.h"

namespace ui {
namespace {

QString shown(const std::string& text) {
    return QString::fromStdString(text);
}

QString shown(std::int64_t count) {
    return QString::number(count);
}

int selectedRowOf(const QTableView& table) {
    const auto* ours = qobject_cast<const RecordTableView*>(&table);
    return ours != nullptr ? ours->selectedRow() : -1;
}

} // namespace

// --- Making

WindowController::WindowController(document::VextaDocument& document,
                                   const QString& windowDescription,
                                   settings::SettingsStore& settings,
                                   const ApplicationActions& actions,
                                   DirectoriesInUse directoriesInUse)
    : vextaDocument(&document), mainRoutine(&document.mainRoutine()),
      totalNumberOfReads(QStringLiteral("")), readsMapped(QStringLiteral("")),
      readsFailedToBeMapped(QStringLiteral("")), m_settings(settings),
      m_description(windowDescription), m_window(loadWindowDescription(windowDescription)),
      m_directoriesInUse(std::move(directoriesInUse)) {
    takeOutlets();
    makeModels();
    m_menus = std::make_unique<WindowMenus>(*mainWindow, actions);
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

void WindowController::takeOutlets() {
    mainWindow = m_window.get();
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
    find(analyzeButton, "analyzeButton");
    find(analyzeAllButton, "analyzeAllButton");
    find(stopButton, "stopButton");
    find(errorLogTextView, "errorLogTextView");
    find(errorLogWindow, "errorLogWindow");
    find(popoverViewControllerHUD, "popoverViewControllerHUD");
    find(popoverTableView, "popoverTableView");
    find(popoverCommentTextField, "popoverCommentTextField");
    find(noticeLine, "noticeLine");
    find(ribbon, "ribbon");
    find(unsavedTextField, "unsavedTextField");
    find(mappedShareLabel, "mappedShareLabel");
    find(patientsTitleLabel, "patientsTitleLabel");
    find(m_busyIndicator, "busyIndicator");
    auto* progressRoom = outlet<QWidget>(*mainWindow, "runProgressContainer");
    runProgressView = new RunProgressView(*mainRoutine, progressRoom);
    progressRoom->layout()->addWidget(runProgressView);
}

void WindowController::makeModels() {
    m_resultViews = {germlineDNAResultTableView, somaticDNAResultTableView,
                     germlineRNAResultTableView, somaticRNAResultTableView};
    m_notices = {germlineDNAResultTextField, somaticDNAResultTextField, germlineRNAResultTextField,
                 somaticRNAResultTextField};
    m_patientsModel = new PatientsTableModel(patientsNoTableView->columns(), this);
    patientsNoTableView->setModel(m_patientsModel);
    for (const ResultTable table : kResultTables) {
        const auto place = static_cast<std::size_t>(table);
        m_resultModels[place] = new ResultTableModel(table, m_resultViews[place]->columns(), this);
        m_resultViews[place]->setModel(m_resultModels[place]);
    }
    m_mutationsModel = new MutationsTableModel(popoverTableView->columns(), this);
    popoverTableView->setModel(m_mutationsModel);
    patientsNoTableView->horizontalHeader()->hide();
    patientsNoTableView->fitColumns();
    for (RecordTableView* view : m_resultViews) {
        view->fitColumns();
    }
}

void WindowController::connectTables() {
    connect(patientsNoTableView->selectionModel(), &QItemSelectionModel::selectionChanged, this,
            [this] { tableViewSelectionDidChange(patientsNoTableView); });
    for (RecordTableView* view : m_resultViews) {
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
    // A patient that fails brings the log to the front, with the keyboard: Esc, meant for the
    // batch, comes there.
    connect(errorLogWindow, &ErrorLogWindow::escaped, this, [this] {
        if (m_running) {
            stopButton->cancelOperation(stopButton);
        }
    });
    const auto on = [this](QAction* action, auto command) {
        connect(action, &QAction::triggered, this, command);
    };
    on(m_menus->analyze, &WindowController::analyze);
    on(m_menus->analyzeAll, &WindowController::analyzeAll);
    on(m_menus->stop, [this] { stopButton->cancelOperation(stopButton); });
    on(m_menus->saveResult, &WindowController::saveVEXtAFile);
    on(m_menus->copy, &WindowController::copy);
    on(m_menus->makeSummaryTable, &WindowController::makeSummaryTable);
    on(m_menus->showErrorLog, &WindowController::showErrorLogWindow);
    on(m_menus->showThresholds, &WindowController::showND1AndND2Threshold);
    on(m_menus->close, [this] { mainWindow->close(); });
    on(m_menus->jumpToPatients, [this] { patientsNoTableView->jumpTo(); });
    for (std::size_t place = 0; place < m_resultViews.size(); ++place) {
        on(m_menus->jumpToTable[place], [view = m_resultViews[place]] { view->jumpTo(); });
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
        warnOfBystanders();
    }
}

void WindowController::warnOfBystanders() {
    const std::vector<std::string> files =
        readsInputsInPlace() ? std::vector<std::string>() : vextaDocument->bystanders();
    m_danger.clear();
    if (files.empty()) {
        return;
    }
    m_danger = shown(document::bystandersWarning(files));
    noticeLine->say(NoticeLine::Kind::danger, m_danger);
    if (m_running) {
        errorLogWindow->append(m_danger + QLatin1Char('\n'));
    }
}

void WindowController::showResultPath(const QString& path) {
    mainWindow->setWindowTitle(titleOfFile(path));
    ribbon->setToolTip(plainToolTip(path));
}

// --- Commands

bool WindowController::beginAnalysis(bool batch) {
    if (m_running) {
        return false;
    }
    vextaDocument->inputMode =
        readsInputsInPlace() ? document::InputMode::direct : document::InputMode::workingCopies;
    if (!takeDirectory()) {
        return false;
    }
    m_running = true;
    m_request = {batch, 0, textOf(vextaDocument->fastqFileDir)};
    noticeLine->clear();
    warnOfBystanders();
    runProgressView->begin();
    updateActions();
    return true;
}

bool WindowController::takeDirectory() {
    if (vextaDocument->inputMode == document::InputMode::direct) {
        return true;
    }
    m_directoryInUse = m_directoriesInUse.use(archive::stringOrEmpty(vextaDocument->fastqFileDir));
    if (!m_directoryInUse) {
        noticeLine->say(NoticeLine::Kind::problem,
                        tr("Not started: another analysis is working in this folder, and the "
                           "working copies of the two would mix. Wait until it is done."));
    }
    return m_directoryInUse != nullptr;
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
    if (!m_running) {
        return;
    }
    // Deliberate: a patient that runs is never interrupted, and a single run does not look at the
    // flag at all.
    noticeLine->say(NoticeLine::Kind::information,
                    m_request.batch
                        ? tr("Stopping: the patient that runs now will finish, the others are "
                             "skipped.")
                        : tr("A single patient's run cannot be stopped: it will finish."));
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
    const std::optional<ResultTable> table = resultTableOf(sender);
    const auto* model = qobject_cast<const RecordTableModel*>(sender->model());
    const int row = selectedRowOf(*sender);
    const int callColumn = model == nullptr ? -1 : model->columnOf(QStringLiteral("1"));
    summaryForEachPatientUsedForPopover = selectedPatient();
    const RowDetails details =
        table ? rowDetails(*table, summaryForEachPatientUsedForPopover.get(), row) : RowDetails();
    mutDomainUsedForPopover = details.mutDomain;
    popoverCommentTextField->setText(details.commentLine);
    popoverCommentTextField->setVisible(!details.commentLine.isEmpty());
    popoverViewControllerHUD->setTitle(
        details.mutDomain ? tr("%1, patient %2")
                                .arg(textOf(details.mutDomain->name),
                                     textOf(summaryForEachPatientUsedForPopover->patientNo))
                          : QString());
    m_mutationsModel->reload(mutDomainUsedForPopover.get());
    popoverViewControllerHUD->fitToRows();
    const QRect anchor = row < 0 || callColumn < 0
                             ? QRect()
                             : sender->visualRect(sender->model()->index(row, callColumn));
    popover->showRelativeToRect(anchor, sender->viewport());
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
        return analyzeButton->isEnabled() && !m_running;
    }
    if (title == QLatin1String(titles::kAnalyzeAll)) {
        return analyzeAllButton->isEnabled() && !m_running;
    }
    return true;
}

void WindowController::updateActions() {
    if (!m_menus) {
        return; // the window is being made
    }
    for (QAction* action : m_menus->validated()) {
        action->setEnabled(validateMenuItem(action->text()));
    }
}

// --- The tables' data

std::optional<ResultTable> WindowController::resultTableOf(const QTableView* view) const {
    const auto found = std::find(m_resultViews.begin(), m_resultViews.end(), view);
    return found == m_resultViews.end()
               ? std::nullopt
               : std::optional(
                     kResultTables[static_cast<std::size_t>(found - m_resultViews.begin())]);
}

std::shared_ptr<run::SummaryForEachPatient> WindowController::selectedPatient() const {
    const auto& patients = archive::orEmpty(mainRoutine->summaryForEachPatientMutAr);
    const std::int64_t row = mainRoutine->selectedPatientRowNo;
    if (row < 0 || static_cast<std::uint64_t>(row) >= patients.size()) {
        return nullptr;
    }
    return patients[static_cast<std::size_t>(row)];
}

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
    if (table != patientsNoTableView) {
        return;
    }
    const int row = patientsNoTableView->selectedRow();
    if (row < 0) {
        return;
    }
    mainRoutine->selectedPatientRowNo = row;
    if (const auto patient = selectedPatient()) {
        showPatient(*patient);
    }
    reloadResultTables();
}

void WindowController::showPatient(const run::SummaryForEachPatient& patient) {
    file1TextField->setText(textOf(patient.file1));
    file2TextField->setText(textOf(patient.file2));
    totalNumberOfReadsTextField->setText(shown(patient.totalNumberOfReads));
    readsMappedTextField->setText(shown(patient.readsMapped));
    readsFailedToBeMappedTextField->setText(shown(patient.readsFailedToBeMapped));
    mappedShareLabel->setText(mappedShare(patient.readsMapped, patient.totalNumberOfReads));
}

void WindowController::showNotices() {
    for (std::size_t place = 0; place < m_notices.size(); ++place) {
        m_notices[place]->setVisible(
            holdsFinding(kResultTables[place], m_resultModels[place]->rows()));
    }
}

QString WindowController::reasonWithoutPatient() const {
    if (m_running) {
        return tr("The analysis is running.");
    }
    if (m_patientsModel->rowCount() > 0) {
        return tr("Select a patient.");
    }
    if (vextaDocument->isSavedResult()) {
        return tr("The saved result holds no patients.");
    }
    return analyzeButton->isEnabled() ? tr("Press Analyze (Ctrl+R)") : tr("No results.");
}

void WindowController::showEmptyTexts() {
    const QString reason = reasonWithoutPatient();
    patientsNoTableView->setEmptyText(reason);
    const QString text = selectedPatient() ? tr("This patient has no rows in this table.") : reason;
    for (RecordTableView* view : m_resultViews) {
        view->setEmptyText(text);
    }
}

// --- The window of the document

void WindowController::reloadPatientsTable() {
    if (m_patientsModel->reload(mainRoutine->summaryForEachPatientMutAr)) {
        m_unsaved = m_patientsModel->rowCount() > 0;
        showUnsaved();
    }
    const int count = m_patientsModel->rowCount();
    patientsTitleLabel->setText(count > 0 ? tr("&Patients (%1)").arg(count) : tr("&Patients"));
    showEmptyTexts();
    updateActions();
}

void WindowController::reloadResultTables() {
    const auto patient = selectedPatient();
    for (ResultTableModel* model : m_resultModels) {
        model->reload(patient.get());
    }
    showNotices();
    showEmptyTexts();
}

void WindowController::selectPatientRow(std::int64_t row) {
    if (row >= 0 && row < m_patientsModel->rowCount()) {
        patientsNoTableView->selectRow(static_cast<int>(row));
        return;
    }
    // Deliberate: after a failed patient of a batch the row may lie beyond the table. Nothing
    // corrects that; nobody is selected, and the result tables show nothing.
    patientsNoTableView->clearSelection();
    reloadResultTables();
}

std::vector<std::int64_t> WindowController::selectedPatientRows() const {
    std::vector<std::int64_t> rows;
    for (const QModelIndex& index : patientsNoTableView->selectionModel()->selectedRows()) {
        rows.push_back(index.row());
    }
    std::sort(rows.begin(), rows.end());
    return rows;
}

void WindowController::setAnalyzeButtonEnabled(bool enabled) {
    analyzeButton->setEnabled(enabled);
    showEmptyTexts();
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
    m_busyIndicator->setVisible(busy);
}

void WindowController::updateWindowFromSummaryForEachPatient(
    const run::SummaryForEachPatient& summary) {
    showPatient(summary);
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
    m_request.planned = count;
    runProgressView->patientStarts(position, count);
}

void WindowController::preparing(const document::Preparation& preparation) {
    runProgressView->preparing(preparation);
}

void WindowController::prepared() {
    runProgressView->prepared();
}

void WindowController::setText(run::RunField field, const std::string& text) {
    using run::RunField;
    switch (field) {
    case RunField::file1:
        file1TextField->setText(shown(text));
        return;
    case RunField::file2:
        file2TextField->setText(shown(text));
        return;
    case RunField::totalNumberOfReads:
        totalNumberOfReadsTextField->setText(shown(text));
        break;
    case RunField::readsMapped:
        readsMappedTextField->setText(shown(text));
        break;
    case RunField::readsFailedToBeMapped:
        readsFailedToBeMappedTextField->setText(shown(text));
        break;
    }
    // The share is that of a finished patient; counts on their way have none.
    mappedShareLabel->clear();
}

void WindowController::appendToErrorLog(const std::string& text) {
    errorLogWindow->append(shown(text));
}

void WindowController::showWarning(const std::string& text) {
    errorLogWindow->append(shown(text));
    const QString line = shown(text).trimmed();
    if (m_danger.isEmpty()) {
        noticeLine->say(NoticeLine::Kind::problem, line);
    } else {
        noticeLine->say(NoticeLine::Kind::danger, m_danger + QLatin1Char('\n') + line);
    }
}

void WindowController::showCatalogueNotice(const std::string& text) {
    if (text.empty()) {
        ribbon->clear();
    } else {
        ribbon->say(NoticeLine::Kind::problem, shown(text));
    }
}

void WindowController::analysisEnded(const document::AnalysisOutcome& outcome) {
    m_running = false;
    m_danger.clear();
    m_directoryInUse.reset();
    runProgressView->end();
    const OutcomeLine line = outcomeLine(outcome, m_request);
    if (!line.text.isEmpty()) {
        noticeLine->say(line.problem ? NoticeLine::Kind::problem : NoticeLine::Kind::information,
                        line.text);
    }
    showEmptyTexts();
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
    connect(dialog, &QFileDialog::fileSelected, this,
            [this, bytes](const QString& path) { writeResult(path, bytes); });
    dialog->open();
}

void WindowController::writeResult(const QString& path, const std::string& bytes) {
    const platform::Status written = platform::writeFileAtomically(enginePath(path), bytes);
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
