// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <memory>
#include <vector>

#include "run/summary_for_each_patient.h"
#include "ui/tables/patient_attention.h"
#include "ui/tables/record_table_model.h"

namespace ui {

/// The patients of a document, in the order of its list. Every column shows the patient's number;
/// a shape beside it says what needs attention.
class PatientsTableModel : public RecordTableModel {
    Q_OBJECT

public:
    using RecordTableModel::RecordTableModel;

    /// Takes over the list as it is now. Rows appended to the list that was shown before come in
    /// as new rows, so that selection and place in the list stay; any other list is a new one.
    /// Returns whether anything changed.
    bool reload(const run::PatientList& patients);

    int rowCount(const QModelIndex& parent = QModelIndex()) const override;

protected:
    /// Deliberate: the number in every column, whatever its identifier.
    QVariant value(int row, const QString& identifier, int role) const override;

private:
    using Patient = std::shared_ptr<run::SummaryForEachPatient>;
    struct Row {
        Patient patient;
        PatientAttention attention;
    };
    static Row rowOf(const Patient& patient);
    bool isContinuedBy(const std::vector<Patient>& patients) const;

    std::vector<Row> m_rows;
};

} // namespace ui
