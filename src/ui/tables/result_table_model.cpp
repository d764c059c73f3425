// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include "ui/tables/result_table_model.h"

#include <utility>

namespace ui {
namespace {

constexpr std::array kIdentifiers = {"0", "1", "2", "3"};

/// The place in a ResultRow that the identifier names; kIdentifiers.size() for an unknown one.
std::size_t placeOf(const QString& identifier) {
    std::size_t place = 0;
    while (place < kIdentifiers.size() && identifier != QLatin1String(kIdentifiers[place])) {
        ++place;
    }
    return place;
}

QString toolTipOf(const QString& text, CallShape shape) {
    const QString words = wordsOf(shape);
    return words.isEmpty() || text.isEmpty() ? text : text + QStringLiteral(" – ") + words;
}

} // namespace

ResultTableModel::ResultTableModel(ResultTable table, TableColumns columns, QObject* parent)
    : RecordTableModel(std::move(columns), parent), m_table(table) {}

void ResultTableModel::reload(const run::SummaryForEachPatient* patient) {
    beginResetModel();
    m_rows = resultRows(m_table, patient);
    endResetModel();
}

int ResultTableModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(m_rows.size());
}

QVariant ResultTableModel::value(int row, const QString& identifier, int role) const {
    const std::size_t place = placeOf(identifier);
    if (place == kIdentifiers.size()) {
        return {};
    }
    const ResultRow& cells = m_rows[static_cast<std::size_t>(row)];
    const ResultCell& cell = cells[place];
    const QString& text = cell.text;
    const CallShape shape = shapeOfCell(m_table, place, cell);
    switch (role) {
    case Qt::DisplayRole:
        return text;
    case kToneRole:
        return static_cast<int>(toneOfCell(m_table, cell));
    case kShapeRole:
        return static_cast<int>(shape);
    case Qt::ToolTipRole:
        return toolTipOf(text, shape);
    case Qt::AccessibleTextRole:
        // The first cell of a row tells the whole row, the others what stands in them.
        return place == 0 ? rowWords(cells) : text;
    case Qt::AccessibleDescriptionRole:
        return wordsOf(shape);
    case kRowWordsRole:
        return rowWords(cells);
    default:
        return {};
    }
}

} // namespace ui
