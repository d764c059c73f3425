// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
// Both notices show a shape beside their words, and a colour that repeats what the shape says: red
// and orange look alike to many people. Colours follow the palette, also when the desktop changes
// between light and dark. Tested by window_colours_test.cpp and, as part of the window, by
// window_controller_test.cpp.
#include "ui/window/notices.h"

#include <algorithm>

#include <QAccessible>
#include <QEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>
#include <QToolButton>

namespace ui {

// --- The line across a window

namespace {

ResultTone toneOf(NoticeLine::Kind kind) {
    switch (kind) {
    case NoticeLine::Kind::danger:
        return ResultTone::finding;
    case NoticeLine::Kind::problem:
        return ResultTone::controlFault;
    case NoticeLine::Kind::information:
        break;
    }
    return ResultTone::clear;
}

CallShape shapeOf(NoticeLine::Kind kind) {
    switch (kind) {
    case NoticeLine::Kind::danger:
        return CallShape::triangle;
    case NoticeLine::Kind::problem:
        return CallShape::square;
    case NoticeLine::Kind::information:
        break;
    }
    return CallShape::circle;
}

} // namespace

NoticeLine::NoticeLine(QWidget* parent)
    : QFrame(parent), m_shape(new QLabel(this)), m_text(new QLabel(this)),
      m_details(new QToolButton(this)), m_dismiss(new QToolButton(this)) {
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(12, 5, 6, 5);
    layout->addWidget(m_shape);
    layout->addWidget(m_text, 1);
    layout->addWidget(m_details);
    layout->addWidget(m_dismiss);
    m_text->setTextFormat(Qt::PlainText);
    m_text->setWordWrap(true);
    m_text->setObjectName(QStringLiteral("noticeText"));
    m_text->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    // A screen reader says the line again when the keyboard comes to it.
    m_text->setFocusPolicy(Qt::StrongFocus);
    // A long path, which has no place to break, is cut and does not widen the window.
    m_text->setMinimumWidth(1);
    m_details->setObjectName(QStringLiteral("noticeDetails"));
    m_details->setAccessibleName(tr("Show details"));
    m_details->hide();
    connect(m_details, &QToolButton::clicked, this, &NoticeLine::detailsRequested);
    m_dismiss->setText(QStringLiteral("✕"));
    m_dismiss->setAutoRaise(true);
    m_dismiss->setToolTip(tr("Hide this line"));
    m_dismiss->setAccessibleName(tr("Hide this line"));
    connect(m_dismiss, &QToolButton::clicked, this, &NoticeLine::clear);
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Maximum);
    hide();
}

void NoticeLine::say(Kind kind, const QString& text) {
    m_kind = kind;
    m_text->setText(text);
    setAccessibleName(text);
    showShape();
    show();
    layOut();
    QAccessibleEvent alert(this, QAccessible::Alert);
    QAccessible::updateAccessibility(&alert);
}

void NoticeLine::offerDetails(const QString& words, const QString& name) {
    m_details->setText(words);
    m_details->setAccessibleName(name);
    m_details->setToolTip(name);
    m_details->setVisible(!words.isEmpty());
    layOut();
}

void NoticeLine::clear() {
    m_text->clear();
    m_details->hide();
    hide();
}

QString NoticeLine::text() const {
    return m_text->text();
}

bool NoticeLine::isDismissible() const {
    return !m_dismiss->isHidden();
}

void NoticeLine::setDismissible(bool dismissible) {
    m_dismiss->setVisible(dismissible);
}

void NoticeLine::showShape() {
    const QColor colour = toneColourOnWindow(toneOf(m_kind), palette());
    const int side = fontMetrics().height() * 4 / 5;
    m_shape->setPixmap(
        callIcon(shapeOf(m_kind), colour, colour).pixmap(QSize(side, side), devicePixelRatioF()));
}

void NoticeLine::layOut() {
    const QWidget* parent = parentWidget();
    if (isVisible() && parent != nullptr && parent->layout() != nullptr) {
        parent->layout()->activate();
        layout()->activate();
        fitHeight();
    }
}

void NoticeLine::fitHeight() {
    // Without a text it has no height to ask for.
    m_text->setMinimumHeight(std::max(0, m_text->heightForWidth(m_text->width())));
}

void NoticeLine::resizeEvent(QResizeEvent* event) {
    QFrame::resizeEvent(event);
    fitHeight();
}

void NoticeLine::changeEvent(QEvent* event) {
    QFrame::changeEvent(event);
    if (event->type() == QEvent::PaletteChange && isVisible()) {
        showShape();
    }
}

void NoticeLine::paintEvent(QPaintEvent*) {
    // A tint of the line's tone over the window, and a bar of it at the left edge.
    QColor tone = toneColourOnWindow(toneOf(m_kind), palette());
    QPainter painter(this);
    painter.fillRect(QRect(0, 0, 4, height()), tone);
    tone.setAlphaF(0.08F);
    painter.fillRect(rect(), tone);
}

// --- The words beside a table

namespace {

constexpr int kGap = 5;

} // namespace

FindingNotice::FindingNotice(QWidget* parent) : QLabel(parent) {
    setTextFormat(Qt::PlainText);
}

int FindingNotice::shapeSide() const {
    return fontMetrics().height() * 4 / 5;
}

QSize FindingNotice::sizeHint() const {
    return QLabel::sizeHint() + QSize(shapeSide() + kGap, 0);
}

QSize FindingNotice::minimumSizeHint() const {
    return {shapeSide(), QLabel::minimumSizeHint().height()};
}

ResultTone FindingNotice::tone() const {
    if (m_notAssessable) {
        return ResultTone::muted;
    }
    return m_toned ? ResultTone::finding : ResultTone::plain;
}

CallShape FindingNotice::shape() const {
    if (m_notAssessable) {
        return CallShape::hollowSquare;
    }
    return m_toned ? CallShape::triangle : CallShape::halfDiamond;
}

void FindingNotice::paintEvent(QPaintEvent*) {
    const QColor colour = toneColourOnWindow(tone(), palette());
    const int side = shapeSide();
    QPainter painter(this);
    callIcon(shape(), colour, colour).paint(&painter, QRect(0, (height() - side) / 2, side, side));
    painter.setPen(colour);
    const QRect room = rect().adjusted(side + kGap, 0, 0, 0);
    painter.drawText(room, static_cast<int>(Qt::AlignLeft | Qt::AlignVCenter),
                     fontMetrics().elidedText(text(), Qt::ElideRight, room.width()));
}

} // namespace ui
