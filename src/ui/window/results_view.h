// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include <QObject>
#include <QRect>
#include <QString>

#include "run/main_routine.h"
#include "ui/tables/result_rows.h"
#include "ui/window/window_outlets.h"

class QTableView;

namespace ui {

class MutationsTableModel;
class PatientsTableModel;
class ResultTableModel;

/// The results side of a document window: the patients, the files and counts of the one on show,
/// that patient's four tables with their notices, and the details of a row. Main thread only.
class ResultsView : public QObject {
    Q_OBJECT

public:
    /// Gives the tables their models. `outlets` and `routine` must outlive the view.
    /// `reasonWithoutPatient` is asked for the text of tables that have no patient to show.
    ResultsView(const WindowOutlets& outlets, run::MainRoutine& routine,
                std::function<QString()> reasonWithoutPatient, QObject* parent);

    int patientCount() const;
    /// Takes over the driver's list of patients. Returns whether that changed anything.
    bool reloadPatients();
    /// Takes over the rows of the selected patient.
    void reloadResultTables();
    void showEmptyTexts();

    /// Selects that row alone, or none where the table ends before it.
    void selectPatientRow(std::int64_t row);
    /// In rising order.
    std::vector<std::int64_t> selectedPatientRows() const;
    /// Makes the selected row the driver's and shows its patient. Without one, the last patient
    /// stays on show.
    void takeSelection();
    /// The patient at the driver's selected row; null where there is none at that row, which may
    /// lie beyond the list.
    std::shared_ptr<run::SummaryForEachPatient> selectedPatient() const;

    /// Shows the patient's files and counts.
    void showPatient(const run::SummaryForEachPatient& patient);
    /// Shows what a run writes.
    void setText(run::RunField field, const std::string& text);

    /// Fills the popover for the selected row of a result table. Returns the domain that it then
    /// lists; null for another table or where there is no row.
    std::shared_ptr<const catalogue::MutDomain> fillPopover(const QTableView& table);
    /// The cell in column "1" of the table's selected row; empty where there is none.
    QRect popoverAnchor(const QTableView& table) const;

private:
    void showNotices();
    /// The result table behind a view; nullopt for any other view.
    std::optional<ResultTable> resultTableOf(const QTableView& view) const;

    const WindowOutlets& m_outlets;
    run::MainRoutine& m_routine;
    std::function<QString()> m_reasonWithoutPatient;
    PatientsTableModel* m_patients;
    MutationsTableModel* m_mutations;
    /// In the order of kResultTables.
    std::array<ResultTableModel*, 4> m_results{};
};

} // namespace ui
