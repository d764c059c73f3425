// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include "ui/window/popover_contents.h"

#include <algorithm>

#include <QHeaderView>
#include <QLabel>
#include <QStyle>
#include <QVBoxLayout>

#include "ui/tables/record_table_view.h"
#include "ui/window/counts_chart.h"

namespace ui {
namespace {

constexpr int kMostRows = 14;
constexpr int kBarWidth = 120;

} // namespace

PopoverContents::PopoverContents(QWidget* parent)
    : QWidget(parent), m_title(new QLabel(this)), m_table(new RecordTableView(this)) {
    auto* comment = new QLabel(this);
    comment->setObjectName(QStringLiteral("popoverCommentTextField"));
    comment->setTextFormat(Qt::PlainText);
    comment->setTextInteractionFlags(Qt::TextSelectableByMouse);
    comment->setAccessibleName(tr("Comment"));
    m_table->setObjectName(QStringLiteral("popoverTableView"));
    m_table->setAccessibleName(tr("Mutations of the domain and their read pairs"));
    m_table->setEmptyText(tr("There are no mutations to show for this row."));
    m_table->setRowsText(tr("The bars compare the numbers of read pairs."));
    m_table->setProperty("columnIdentifiers", QStringList{QStringLiteral("0"), QStringLiteral("1"),
                                                          QStringLiteral("bar")});
    m_table->setProperty("columnTitles", QStringList{tr("Mutation"), tr("Read pairs"), QString()});
    m_table->setItemDelegateForColumn(2, new CountsChartDelegate(m_table));
    m_title->setObjectName(QStringLiteral("popoverTitleLabel"));
    QFont bold = m_title->font();
    bold.setBold(true);
    m_title->setFont(bold);
    m_title->setTextFormat(Qt::PlainText);
    m_title->setBuddy(m_table);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(10, 8, 10, 8);
    layout->addWidget(m_title);
    layout->addWidget(m_table, 1);
    layout->addWidget(comment);
}

void PopoverContents::setTitle(const QString& title) {
    m_title->setText(title);
    m_title->setVisible(!title.isEmpty());
}

void PopoverContents::fitToRows() {
    m_table->resizeColumnsToContents();
    m_table->setColumnWidth(2, kBarWidth);
    const int rows = std::clamp(m_table->model()->rowCount(), 2, kMostRows);
    const bool scrolls = m_table->model()->rowCount() > kMostRows;
    const int frame = 2 * m_table->frameWidth();
    m_table->setFixedHeight(rows * m_table->verticalHeader()->defaultSectionSize() +
                            m_table->horizontalHeader()->sizeHint().height() + frame);
    const int columns = m_table->columnWidth(0) + m_table->columnWidth(1) + m_table->columnWidth(2);
    const int scrollBar = scrolls ? m_table->style()->pixelMetric(QStyle::PM_ScrollBarExtent) : 0;
    m_table->setMinimumWidth(std::clamp(columns + frame + scrollBar, 260, 520));
}

} // namespace ui
