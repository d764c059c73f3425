// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <vector>

#include "ui/tables/record_table_model.h"
#include "ui/tables/result_rows.h"

namespace ui {

/// One of the four result tables of the patient on show.
class ResultTableModel : public RecordTableModel {
    Q_OBJECT

public:
    ResultTableModel(ResultTable table, TableColumns columns, QObject* parent);

    /// Takes over the patient's rows as they are now; none without a patient.
    void reload(const run::SummaryForEachPatient* patient);

    ResultTable table() const { return m_table; }
    const std::vector<ResultRow>& rows() const { return m_rows; }
    int rowCount(const QModelIndex& parent = QModelIndex()) const override;

protected:
    QVariant value(int row, const QString& identifier, int role) const override;

private:
    ResultTable m_table;
    std::vector<ResultRow> m_rows;
};

} // namespace ui
