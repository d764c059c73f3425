// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QAbstractTableModel>
#include <QStringList>

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

} // namespace ui
