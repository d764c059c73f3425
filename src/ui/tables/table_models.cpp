// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
//
// The models of a document window's tables. They answer by the column identifiers of the window
// descriptions, whatever order these give the columns; what a result says is in result_rows.h. Each
// is filled by its reload(), on the main thread. Tested by table_models_test.cpp.
#include "ui/tables/table_models.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <utility>

#include <QTextDocument>

#include "catalogue/domain_words.h"
#include "document/folder_account.h"
#include "platform/files.h"

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

// --- Patients

PatientsTableModel::Row PatientsTableModel::rowOf(const Patient& patient) {
    if (!patient) {
        return {};
    }
    const std::string file = platform::lastPathComponent(archive::stringOrEmpty(patient->file1));
    return {patient, attentionFor(*patient), QString::fromStdString(document::sampleNameOf(file))};
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
    const auto who = [&] {
        return shown.sample.isEmpty() ? tr("Patient %1").arg(number)
                                      : tr("Patient %1, sample %2").arg(number, shown.sample);
    };
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
        return QString(who() + QLatin1Char('\n') + shown.attention.words);
    case Qt::AccessibleDescriptionRole:
        return shown.attention.words;
    case Qt::AccessibleTextRole:
    case kRowWordsRole:
        return tr("%1. %2").arg(who(), shown.attention.words);
    default:
        return {};
    }
}

// --- Result rows

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

// --- Mutations of a domain

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
