// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
// The details of a result row: a panel (Popover), what stands in it (PopoverContents) and the bars
// of its table (CountsChartDelegate). Qt's popup windows close by themselves when the user clicks
// elsewhere; Esc takes an event filter, since a shortcut of the window below would come first. The
// bars are cells of the table, not a chart of their own: so they scroll with their rows, and a
// screen reader meets the numbers. Tested by popover_test.cpp.
#include "ui/window/popover.h"

#include <algorithm>

#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QPainter>
#include <QPropertyAnimation>
#include <QScreen>
#include <QStyle>
#include <QVBoxLayout>

#include "ui/tables/record_table_view.h"
#include "ui/tables/table_models.h"

namespace ui {

// --- The bars

QRectF CountsChartDelegate::barIn(const QRectF& cell, double length) {
    constexpr qreal kMargin = 6.0;
    if (length <= 0.0) {
        return {};
    }
    const qreal room = std::max(0.0, cell.width() - 2 * kMargin);
    const qreal height = std::min(10.0, cell.height() * 0.5);
    return {cell.left() + kMargin, cell.center().y() - height / 2,
            std::max(1.0, room * std::min(1.0, length)), height};
}

void CountsChartDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                                const QModelIndex& index) const {
    CallDelegate::paint(painter, option, index);
    const QRectF bar = barIn(option.rect, index.data(kBarRole).toDouble());
    if (bar.isEmpty()) {
        return;
    }
    const QColor colour =
        index.data(kReferenceRole).toBool() ? mutedIn(option) : toneIn(option, ResultTone::clear);
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(Qt::NoPen);
    painter->setBrush(colour);
    painter->drawRoundedRect(bar, std::min(2.0, bar.width() / 2), 2.0);
    painter->restore();
}

// --- The contents

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

// --- The panel

Popover::Popover(QWidget* contents, QWidget* window)
    : QFrame(window, Qt::Popup | Qt::FramelessWindowHint), m_contents(contents) {
    setObjectName(QStringLiteral("popover"));
    setAccessibleName(tr("Details of the row"));
    // A window with large type gives its font to the popover.
    setAttribute(Qt::WA_WindowPropagation);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(1, 1, 1, 1);
    layout->addWidget(contents);
    for (QWidget* child : contents->findChildren<QWidget*>()) {
        child->installEventFilter(this);
    }
    contents->show();
}

QPoint Popover::place(const QRect& anchor, const QSize& size, const QRect& screen) {
    constexpr int kGap = 4;
    int x = anchor.right() + 1 + kGap;
    if (x + size.width() > screen.right() + 1) {
        x = anchor.left() - kGap - size.width();
    }
    const int y = anchor.center().y() - size.height() / 2;
    const auto within = [](int at, int extent, int from, int to) {
        return std::max(from, std::min(at, to + 1 - extent));
    };
    return {within(x, size.width(), screen.left(), screen.right()),
            within(y, size.height(), screen.top(), screen.bottom())};
}

void Popover::showRelativeToRect(const QRect& anchor, QWidget* of) {
    layout()->activate();
    adjustSize();
    const QRect global(of->mapToGlobal(anchor.topLeft()), anchor.size());
    move(place(global, size(), of->screen()->availableGeometry()));
    appear();
    m_contents->setFocus();
    focusNextChild();
}

void Popover::appear() {
    const int duration = style()->styleHint(QStyle::SH_Widget_Animation_Duration, nullptr, this);
    show();
    if (duration <= 0) {
        return;
    }
    auto* fade = new QPropertyAnimation(this, "windowOpacity", this);
    fade->setDuration(std::min(duration, 120));
    fade->setStartValue(0.0);
    fade->setEndValue(1.0);
    fade->start(QAbstractAnimation::DeleteWhenStopped);
}

bool Popover::eventFilter(QObject* watched, QEvent* event) {
    const auto* key = event->type() == QEvent::ShortcutOverride || event->type() == QEvent::KeyPress
                          ? static_cast<QKeyEvent*>(event)
                          : nullptr;
    if (key == nullptr || !key->matches(QKeySequence::Cancel)) {
        return QFrame::eventFilter(watched, event);
    }
    // The first Esc closes the popover; the next one gets to the window's own command.
    event->accept();
    if (event->type() == QEvent::KeyPress) {
        close();
    }
    return true;
}

void Popover::keyPressEvent(QKeyEvent* event) {
    if (event->matches(QKeySequence::Cancel)) {
        close();
        return;
    }
    QFrame::keyPressEvent(event);
}

void Popover::paintEvent(QPaintEvent* event) {
    QFrame::paintEvent(event);
    QPainter painter(this);
    painter.setPen(palette().color(QPalette::Mid));
    painter.drawRect(rect().adjusted(0, 0, -1, -1));
}

} // namespace ui
