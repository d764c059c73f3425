// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include "ui/tables/record_table_model.h"

#include <utility>

#include <QTextDocument>

namespace ui {

RecordTableModel::RecordTableModel(TableColumns columns, QObject* parent)
    : QAbstractTableModel(parent), m_columns(std::move(columns)) {}

int RecordTableModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(m_columns.identifiers.size());
}

QVariant RecordTableModel::data(const QModelIndex& index, int role) const {
    if (!checkIndex(index, CheckIndexOption::IndexIsValid)) {
        return {};
    }
    const QVariant found = value(index.row(), m_columns.identifiers.at(index.column()), role);
    return role == Qt::ToolTipRole && found.isValid()
               ? Qt::convertFromPlainText(found.toString(), Qt::WhiteSpaceNormal)
               : found;
}

QVariant RecordTableModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal) {
        return {};
    }
    if (role == Qt::TextAlignmentRole) {
        return QVariant::fromValue(Qt::Alignment(Qt::AlignLeft | Qt::AlignVCenter));
    }
    return role == Qt::DisplayRole ? m_columns.titles.value(section) : QVariant();
}

int RecordTableModel::columnOf(const QString& identifier) const {
    return static_cast<int>(m_columns.identifiers.indexOf(identifier));
}

QString RecordTableModel::cellText(int row, const QString& identifier) const {
    return row < 0 || row >= rowCount() ? QString()
                                        : value(row, identifier, Qt::DisplayRole).toString();
}

} // namespace ui
