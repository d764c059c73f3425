// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
//
// From a document's list of patients to the widgets that show it. What is on show is decided by the
// driver's list and its selected row alone, and the row may lie beyond the list: no patient is then
// on show, and nothing corrects the row. The tables take over finished rows when they are reloaded,
// so a run may go on filling its record meanwhile. What a row says is decided in result_rows.h.
// Tested by window_controller_test.cpp and window_story_test.cpp.
#include "ui/window/results_view.h"

#include <algorithm>
#include <utility>

#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>

#include "ui/tables/record_table_view.h"
#include "ui/tables/table_models.h"
#include "ui/widgets/shown_texts.h"
#include "ui/window/popover.h"
#include "ui/window/window_texts.h"

namespace ui {
namespace {

QString shown(std::int64_t count) {
    return QString::number(count);
}

void showWhyNotAssessable(QLabel& notice, const QString& why) {
    notice.setText(why);
    notice.setToolTip(plainToolTip(why));
    notice.setVisible(!why.isEmpty());
}

int selectedRowOf(const QTableView& table) {
    const auto* ours = qobject_cast<const RecordTableView*>(&table);
    return ours != nullptr ? ours->selectedRow() : -1;
}

} // namespace

ResultsView::ResultsView(const WindowOutlets& outlets, run::MainRoutine& routine,
                         std::function<QString()> reasonWithoutPatient, QObject* parent)
    : QObject(parent), m_outlets(outlets), m_routine(routine),
      m_reasonWithoutPatient(std::move(reasonWithoutPatient)),
      m_patients(new PatientsTableModel(outlets.patientsNoTableView->columns(), this)),
      m_mutations(new MutationsTableModel(outlets.popoverTableView->columns(), this)) {
    outlets.patientsNoTableView->setModel(m_patients);
    outlets.patientsNoTableView->horizontalHeader()->hide();
    outlets.patientsNoTableView->fitColumns();
    outlets.popoverTableView->setModel(m_mutations);
    const auto views = outlets.resultTableViews();
    for (const ResultTable table : kResultTables) {
        const auto place = static_cast<std::size_t>(table);
        m_results[place] = new ResultTableModel(table, views[place]->columns(), this);
        views[place]->setModel(m_results[place]);
        views[place]->fitColumns();
    }
}

// --- Patients

int ResultsView::patientCount() const {
    return m_patients->rowCount();
}

bool ResultsView::reloadPatients() {
    const bool changed = m_patients->reload(m_routine.summaryForEachPatientMutAr);
    const int count = patientCount();
    m_outlets.patientsTitleLabel->setText(count > 0 ? tr("&Patients (%1)").arg(count)
                                                    : tr("&Patients"));
    showEmptyTexts();
    return changed;
}

void ResultsView::selectPatientRow(std::int64_t row) {
    if (row >= 0 && row < patientCount()) {
        m_outlets.patientsNoTableView->selectRow(static_cast<int>(row));
        return;
    }
    // Deliberate: after a failed patient of a batch the row may lie beyond the table. Nothing
    // corrects that; nobody is selected, and the result tables show nothing.
    m_outlets.patientsNoTableView->clearSelection();
    reloadResultTables();
}

std::vector<std::int64_t> ResultsView::selectedPatientRows() const {
    std::vector<std::int64_t> rows;
    const auto* selection = m_outlets.patientsNoTableView->selectionModel();
    for (const QModelIndex& index : selection->selectedRows()) {
        rows.push_back(index.row());
    }
    std::sort(rows.begin(), rows.end());
    return rows;
}

void ResultsView::takeSelection() {
    const int row = m_outlets.patientsNoTableView->selectedRow();
    if (row < 0) {
        return;
    }
    m_routine.selectedPatientRowNo = row;
    if (const auto patient = selectedPatient()) {
        showPatient(*patient);
    }
    reloadResultTables();
}

std::shared_ptr<run::SummaryForEachPatient> ResultsView::selectedPatient() const {
    const auto& patients = archive::orEmpty(m_routine.summaryForEachPatientMutAr);
    const std::int64_t row = m_routine.selectedPatientRowNo;
    if (row < 0 || static_cast<std::uint64_t>(row) >= patients.size()) {
        return nullptr;
    }
    return patients[static_cast<std::size_t>(row)];
}

// --- Files and counts

void ResultsView::showPatient(const run::SummaryForEachPatient& patient) {
    m_outlets.file1TextField->setText(textOf(patient.file1));
    m_outlets.file2TextField->setText(textOf(patient.file2));
    m_outlets.totalNumberOfReadsTextField->setText(shown(patient.totalNumberOfReads));
    m_outlets.readsMappedTextField->setText(shown(patient.readsMapped));
    m_outlets.readsFailedToBeMappedTextField->setText(shown(patient.readsFailedToBeMapped));
    m_outlets.mappedShareLabel->setText(
        mappedShare(patient.readsMapped, patient.totalNumberOfReads));
}

void ResultsView::setText(run::RunField field, const std::string& text) {
    using run::RunField;
    const QString shownText = QString::fromStdString(text);
    switch (field) {
    case RunField::file1:
        m_outlets.file1TextField->setText(shownText);
        return;
    case RunField::file2:
        m_outlets.file2TextField->setText(shownText);
        return;
    case RunField::totalNumberOfReads:
        m_outlets.totalNumberOfReadsTextField->setText(shownText);
        break;
    case RunField::readsMapped:
        m_outlets.readsMappedTextField->setText(shownText);
        break;
    case RunField::readsFailedToBeMapped:
        m_outlets.readsFailedToBeMappedTextField->setText(shownText);
        break;
    }
    // The share is that of a finished patient; counts on their way have none.
    m_outlets.mappedShareLabel->clear();
}

// --- Result tables

void ResultsView::reloadResultTables() {
    const auto patient = selectedPatient();
    for (ResultTableModel* model : m_results) {
        model->reload(patient.get());
    }
    showNotices();
    showEmptyTexts();
}

void ResultsView::showNotices() {
    const auto notices = m_outlets.resultNotices();
    for (std::size_t place = 0; place < notices.size(); ++place) {
        notices[place]->setVisible(holdsFinding(kResultTables[place], m_results[place]->rows()));
    }
    const auto patient = selectedPatient();
    showWhyNotAssessable(*m_outlets.germlineDNANotAssessableTextField,
                         whyNotAssessable(ResultTable::germlineDNA, patient.get()));
    showWhyNotAssessable(*m_outlets.somaticDNANotAssessableTextField,
                         whyNotAssessable(ResultTable::somaticDNA, patient.get()));
}

void ResultsView::showEmptyTexts() {
    const QString reason = m_reasonWithoutPatient();
    m_outlets.patientsNoTableView->setEmptyText(reason);
    const QString text = selectedPatient() ? tr("This patient has no rows in this table.") : reason;
    for (RecordTableView* view : m_outlets.resultTableViews()) {
        view->setEmptyText(text);
    }
}

std::optional<ResultTable> ResultsView::resultTableOf(const QTableView& view) const {
    const auto views = m_outlets.resultTableViews();
    const auto found = std::find(views.begin(), views.end(), &view);
    return found == views.end()
               ? std::nullopt
               : std::optional(kResultTables[static_cast<std::size_t>(found - views.begin())]);
}

// --- Details of a row

std::shared_ptr<const catalogue::MutDomain> ResultsView::fillPopover(const QTableView& table) {
    const auto patient = selectedPatient();
    const std::optional<ResultTable> kind = resultTableOf(table);
    const RowDetails details =
        kind ? rowDetails(*kind, patient.get(), selectedRowOf(table)) : RowDetails();
    m_outlets.popoverCommentTextField->setText(details.commentLine);
    m_outlets.popoverCommentTextField->setVisible(!details.commentLine.isEmpty());
    m_outlets.popoverViewControllerHUD->setTitle(
        details.mutDomain
            ? tr("%1, patient %2").arg(textOf(details.mutDomain->name), textOf(patient->patientNo))
            : QString());
    m_mutations->reload(details.mutDomain.get());
    m_outlets.popoverViewControllerHUD->fitToRows();
    return details.mutDomain;
}

QRect ResultsView::popoverAnchor(const QTableView& table) const {
    const auto* model = qobject_cast<const RecordTableModel*>(table.model());
    const int row = selectedRowOf(table);
    const int callColumn = model == nullptr ? -1 : model->columnOf(QStringLiteral("1"));
    return row < 0 || callColumn < 0 ? QRect() : table.visualRect(model->index(row, callColumn));
}

} // namespace ui
