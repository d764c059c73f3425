// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include "ui/tables/patients_table_model.h"

#include <algorithm>

#include "ui/tables/result_rows.h"

namespace ui {

PatientsTableModel::Row PatientsTableModel::rowOf(const Patient& patient) {
    return {patient, patient ? attentionFor(*patient) : PatientAttention()};
}

bool PatientsTableModel::isContinuedBy(const std::vector<Patient>& patients) const {
    return patients.size() >= m_rows.size() &&
           std::equal(
               m_rows.begin(), m_rows.end(), patients.begin(),
               [](const Row& row, const Patient& patient) { return row.patient == patient; });
}

bool PatientsTableModel::reload(const run::PatientList& patients) {
    const auto& list = archive::orEmpty(patients);
    const std::vector<Patient> items(list.begin(), list.end());
    if (!isContinuedBy(items)) {
        beginResetModel();
        m_rows.clear();
        std::transform(items.begin(), items.end(), std::back_inserter(m_rows), rowOf);
        endResetModel();
        return true;
    }
    const bool grown = items.size() > m_rows.size();
    if (grown) {
        const auto first = static_cast<std::ptrdiff_t>(m_rows.size());
        beginInsertRows(QModelIndex(), static_cast<int>(first), static_cast<int>(items.size()) - 1);
        std::transform(items.begin() + first, items.end(), std::back_inserter(m_rows), rowOf);
        endInsertRows();
    }
    return grown;
}

int PatientsTableModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(m_rows.size());
}

QVariant PatientsTableModel::value(int row, const QString& /*identifier*/, int role) const {
    const Row& shown = m_rows[static_cast<std::size_t>(row)];
    const QString number = shown.patient ? textOf(shown.patient->patientNo) : QString();
    switch (role) {
    case Qt::DisplayRole:
        return number;
    case kShapeRole:
        return static_cast<int>(shown.attention.shape);
    case kToneRole:
        // The number keeps the default colour; the tone is that of the shape alone.
        return static_cast<int>(ResultTone::plain);
    case kShapeToneRole:
        return static_cast<int>(shown.attention.tone);
    case Qt::ToolTipRole:
    case Qt::AccessibleDescriptionRole:
        return shown.attention.words;
    case Qt::AccessibleTextRole:
    case kRowWordsRole:
        return tr("Patient %1. %2").arg(number, shown.attention.words);
    default:
        return {};
    }
}

} // namespace ui
