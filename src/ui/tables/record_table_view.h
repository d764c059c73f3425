// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QStringList>
#include <QTableView>

#include "ui/tables/table_models.h"

namespace ui {

/// A table of the document window: rows to select and read, never to edit. The window description
/// names its columns. A table without rows says why in one sentence.
class RecordTableView : public QTableView {
    Q_OBJECT
    Q_PROPERTY(QStringList columnIdentifiers MEMBER m_columnIdentifiers)
    Q_PROPERTY(QStringList columnTitles MEMBER m_columnTitles)
    /// For each column a text that it has room for at first.
    Q_PROPERTY(QStringList columnSamples MEMBER m_columnSamples)
    Q_PROPERTY(QString emptyText READ emptyText WRITE setEmptyText)
    /// What a screen reader says of the table while it has rows.
    Q_PROPERTY(QString rowsText MEMBER m_rowsText WRITE setRowsText)

public:
    explicit RecordTableView(QWidget* parent = nullptr);

    TableColumns columns() const { return {m_columnIdentifiers, m_columnTitles}; }
    /// Shown while there are no rows; set again whenever the rows changed.
    QString emptyText() const { return m_emptyText; }
    void setEmptyText(const QString& text);
    void setRowsText(const QString& text);

    /// Makes the columns as wide as their samples and titles.
    void fitColumns();
    QSize sizeHint() const override;

    /// The selected row; where several are, the current one or else the last; -1 when none is.
    int selectedRow() const;
    /// Takes the keyboard, and selects the first row where none is selected.
    void jumpTo();

    void reset() override;

Q_SIGNALS:
    /// Double click on a row, or Enter or Space with a selected row.
    void detailsRequested();

protected:
    bool event(QEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    void fitRowsToFont();
    void describe();

    QStringList m_columnIdentifiers;
    QStringList m_columnTitles;
    QStringList m_columnSamples;
    QString m_emptyText;
    QString m_rowsText;
};

} // namespace ui
