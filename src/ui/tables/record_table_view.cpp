// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
//
// One view for all tables of the document window: rows are selected and read, Enter opens details,
// Tab leaves the table. All tables show a selected row alike, so a frame tells which of them has
// the keyboard. Tested by popover_test.cpp and window_controller_test.cpp.
#include "ui/tables/record_table_view.h"

#include <algorithm>

#include <QHeaderView>
#include <QKeyEvent>
#include <QPainter>

#include "ui/tables/call_delegate.h"
#include "ui/tables/result_tones.h"

namespace ui {

RecordTableView::RecordTableView(QWidget* parent) : QTableView(parent) {
    setItemDelegate(new CallDelegate(this));
    setEditTriggers(NoEditTriggers);
    setSelectionBehavior(SelectRows);
    setSelectionMode(SingleSelection);
    setAlternatingRowColors(true);
    setShowGrid(false);
    setWordWrap(false);
    // Tab goes on to the next control; arrows move between rows.
    setTabKeyNavigation(false);
    setCornerButtonEnabled(false);
    verticalHeader()->hide();
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    horizontalHeader()->setHighlightSections(false);
    horizontalHeader()->setStretchLastSection(true);
    fitRowsToFont();
}

void RecordTableView::fitRowsToFont() {
    verticalHeader()->setMinimumSectionSize(1);
    verticalHeader()->setDefaultSectionSize(fontMetrics().height() * 3 / 2);
}

void RecordTableView::fitColumns() {
    const int shape = fontMetrics().height();
    const int margin = 4 * (style()->pixelMetric(QStyle::PM_FocusFrameHMargin, nullptr, this) + 1);
    for (int column = 0; column < m_columnTitles.size(); ++column) {
        const int sample = fontMetrics().horizontalAdvance(m_columnSamples.value(column));
        const int title = fontMetrics().horizontalAdvance(m_columnTitles[column]);
        setColumnWidth(column, std::max(sample + shape, title) + margin);
    }
}

QSize RecordTableView::sizeHint() const {
    const QSize hint = QTableView::sizeHint();
    if (m_columnSamples.isEmpty()) {
        return hint;
    }
    return {horizontalHeader()->length() + 2 * frameWidth() +
                style()->pixelMetric(QStyle::PM_ScrollBarExtent, nullptr, this),
            hint.height()};
}

void RecordTableView::setEmptyText(const QString& text) {
    m_emptyText = text;
    describe();
    viewport()->update();
}

void RecordTableView::setRowsText(const QString& text) {
    m_rowsText = text;
    describe();
}

void RecordTableView::reset() {
    QTableView::reset();
    describe();
}

void RecordTableView::describe() {
    const bool isEmpty = model() == nullptr || model()->rowCount() == 0;
    setAccessibleDescription(isEmpty ? m_emptyText : m_rowsText);
}

int RecordTableView::selectedRow() const {
    if (selectionModel() == nullptr) {
        return -1;
    }
    if (selectionModel()->isRowSelected(currentIndex().row())) {
        return currentIndex().row();
    }
    int last = -1;
    for (const QModelIndex& index : selectionModel()->selectedRows()) {
        last = std::max(last, index.row());
    }
    return last;
}

void RecordTableView::jumpTo() {
    setFocus(Qt::ShortcutFocusReason);
    if (selectedRow() < 0 && model() != nullptr && model()->rowCount() > 0) {
        selectRow(0);
    }
}

bool RecordTableView::event(QEvent* event) {
    const bool handled = QTableView::event(event);
    if (event->type() == QEvent::Paint && hasFocus()) {
        // Every table shows its selected row alike: the frame tells which one has the keyboard.
        QPainter painter(this);
        painter.setPen(legibleHighlight(palette()));
        painter.drawRect(rect().adjusted(0, 0, -1, -1));
    }
    return handled;
}

void RecordTableView::focusInEvent(QFocusEvent* event) {
    QTableView::focusInEvent(event);
    update();
}

void RecordTableView::focusOutEvent(QFocusEvent* event) {
    QTableView::focusOutEvent(event);
    update();
}

void RecordTableView::keyPressEvent(QKeyEvent* event) {
    const bool asksForDetails = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter ||
                                event->key() == Qt::Key_Space;
    const Qt::KeyboardModifiers modifiers = event->modifiers() & ~Qt::KeypadModifier;
    if (asksForDetails && modifiers == Qt::NoModifier) {
        if (selectedRow() >= 0) {
            Q_EMIT detailsRequested();
        }
        event->accept();
        return;
    }
    QTableView::keyPressEvent(event);
}

void RecordTableView::mouseDoubleClickEvent(QMouseEvent* event) {
    QTableView::mouseDoubleClickEvent(event);
    if (event->button() == Qt::LeftButton && indexAt(event->position().toPoint()).isValid()) {
        Q_EMIT detailsRequested();
    }
}

void RecordTableView::paintEvent(QPaintEvent* event) {
    QTableView::paintEvent(event);
    if (m_emptyText.isEmpty() || (model() != nullptr && model()->rowCount() > 0)) {
        return;
    }
    QPainter painter(viewport());
    const QPalette::ColorRole ground = viewport()->backgroundRole();
    const QPalette::ColorRole text =
        ground == QPalette::Window ? QPalette::WindowText : QPalette::Text;
    painter.setPen(mutedColour(palette().color(text), {palette().color(ground)}));
    painter.drawText(viewport()->rect().adjusted(12, 8, -12, -8),
                     Qt::AlignCenter | Qt::TextWordWrap, m_emptyText);
}

void RecordTableView::changeEvent(QEvent* event) {
    QTableView::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange) {
        fitRowsToFont();
    }
}

} // namespace ui
