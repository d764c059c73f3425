// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include "ui/window/popover.h"

#include <algorithm>

#include <QKeyEvent>
#include <QPainter>
#include <QPropertyAnimation>
#include <QScreen>
#include <QStyle>
#include <QVBoxLayout>

namespace ui {

Popover::Popover(QWidget* contents, QWidget* window)
    : QFrame(window, Qt::Popup | Qt::FramelessWindowHint), m_contents(contents) {
    setObjectName(QStringLiteral("popover"));
    setAccessibleName(tr("Details of the row"));
    // The font of a window with large type is the popover's as well.
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
    // The first Esc is the popover's; the window's own command of that key gets the next one.
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
