// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include "ui/tables/mutations_table_model.h"

#include <algorithm>

#include "catalogue/domain_words.h"
#include "ui/tables/result_rows.h"

namespace ui {
namespace {

/// Whether the entry at that place counts what the others are compared with: the wild type of a DNA
/// domain, or a fusion panel's internal control.
bool isReference(const catalogue::MutDomain& domain, std::size_t place,
                 const catalogue::Mutation& mutation) {
    if (place != 0) {
        return false;
    }
    const catalogue::DomainType type = catalogue::typeOf(domain);
    return type == catalogue::DomainType::germline || type == catalogue::DomainType::somaticDNA ||
           (type == catalogue::DomainType::fusionRNA && catalogue::isInternalControl(mutation));
}

} // namespace

void MutationsTableModel::reload(const catalogue::MutDomain* domain) {
    beginResetModel();
    m_rows.clear();
    m_largest = 0;
    if (domain != nullptr) {
        for (const auto& mutation : archive::orEmpty(domain->mutationMutAr)) {
            const std::size_t place = m_rows.size();
            m_rows.push_back(mutation ? Row{textOf(mutation->name), mutation->match,
                                            isReference(*domain, place, *mutation)}
                                      : Row());
            m_largest = std::max(m_largest, m_rows.back().match);
        }
    }
    endResetModel();
}

int MutationsTableModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(m_rows.size());
}

QString MutationsTableModel::words(const Row& row) const {
    const QString count = tr("%1, %2 read pairs").arg(row.name, QString::number(row.match));
    return row.isReference ? tr("%1, reference").arg(count) : count;
}

QVariant MutationsTableModel::value(int row, const QString& identifier, int role) const {
    const Row& shown = m_rows[static_cast<std::size_t>(row)];
    const bool isName = identifier == QLatin1String("0");
    const bool isCount = identifier == QLatin1String("1");
    const bool isBar = identifier == QLatin1String("bar");
    const double length =
        m_largest <= 0
            ? 0.0
            : std::max(0.0, static_cast<double>(shown.match) / static_cast<double>(m_largest));
    switch (role) {
    case Qt::DisplayRole:
        return isName ? QVariant(shown.name)
                      : (isCount ? QVariant(QString::number(shown.match)) : QVariant());
    case Qt::TextAlignmentRole:
        return isCount ? QVariant::fromValue(Qt::Alignment(Qt::AlignRight | Qt::AlignVCenter))
                       : QVariant();
    case kBarRole:
        return isBar ? QVariant(length) : QVariant();
    case kReferenceRole:
        return shown.isReference;
    case Qt::AccessibleTextRole:
        return isCount ? QString::number(shown.match) : words(shown);
    case Qt::ToolTipRole:
    case kRowWordsRole:
        return words(shown);
    default:
        return {};
    }
}

} // namespace ui
