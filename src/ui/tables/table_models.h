// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

#include <QAbstractTableModel>
#include <QStringList>

#include "catalogue/mut_domain.h"
#include "run/summary_for_each_patient.h"
#include "ui/tables/result_rows.h"

namespace ui {

/// A column as a window description names it. What stands in it is told by the identifier.
struct TableColumns {
    QStringList identifiers;
    QStringList titles;
};

/// Roles beside Qt's own.
enum TableRole : int {
    kToneRole = Qt::UserRole, ///< ResultTone as int
    kShapeRole,               ///< CallShape as int
    kShapeToneRole,           ///< ResultTone of the shape, where it is not that of the text
    kRowWordsRole,            ///< the whole row, readable as words
    kBarRole,                 ///< length of a bar, 0 to 1
    kReferenceRole,           ///< whether the bar is that of a wild type or control
};

/// What the document window's tables have in common: columns by identifier, plain texts, nothing
/// to edit. Tooltips, which a toolkit would read as markup, are escaped here.
class RecordTableModel : public QAbstractTableModel {
    Q_OBJECT

public:
    RecordTableModel(TableColumns columns, QObject* parent);

    int columnCount(const QModelIndex& parent = QModelIndex()) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

    /// The first column of that identifier; -1 when there is none.
    int columnOf(const QString& identifier) const;
    /// What the cell in the column of that identifier shows; nothing for an unknown identifier or
    /// a row that is not there.
    QString cellText(int row, const QString& identifier) const;

protected:
    /// The cell's value for the role, as plain text where it is one. Called with rows that are
    /// there only.
    virtual QVariant value(int row, const QString& identifier, int role) const = 0;

private:
    TableColumns m_columns;
};

/// The patients of a document, in the order of its list. Every column shows the patient's number;
/// a shape beside it says what needs attention, and the tooltip names the sample.
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
        QString sample; ///< its name; may be empty
    };
    static Row rowOf(const Patient& patient);
    bool isContinuedBy(const std::vector<Patient>& patients) const;

    std::vector<Row> m_rows;
};

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

/// The mutations of one domain with their counts, for the popover. A column "bar" shows no text:
/// its cells are bars whose lengths compare the counts.
class MutationsTableModel : public RecordTableModel {
    Q_OBJECT

public:
    using RecordTableModel::RecordTableModel;

    /// Takes over the domain's mutations as they are now; none without a domain.
    void reload(const catalogue::MutDomain* domain);

    int rowCount(const QModelIndex& parent = QModelIndex()) const override;

protected:
    QVariant value(int row, const QString& identifier, int role) const override;

private:
    struct Row {
        QString name;
        std::int64_t match = 0;
        bool isReference = false;
    };
    QString words(const Row& row) const;

    std::vector<Row> m_rows;
    std::int64_t m_largest = 0;
};

} // namespace ui
