// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include "ui/window/finding_notice.h"

#include <QPainter>

#include "ui/tables/call_icons.h"
#include "ui/tables/result_tones.h"

namespace ui {
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

void FindingNotice::paintEvent(QPaintEvent*) {
    const QColor colour =
        toneColourOnWindow(m_toned ? ResultTone::finding : ResultTone::plain, palette());
    const int side = shapeSide();
    QPainter painter(this);
    callIcon(m_toned ? CallShape::triangle : CallShape::halfDiamond, colour, colour)
        .paint(&painter, QRect(0, (height() - side) / 2, side, side));
    painter.setPen(colour);
    const QRect room = rect().adjusted(side + kGap, 0, 0, 0);
    painter.drawText(room, static_cast<int>(Qt::AlignLeft | Qt::AlignVCenter),
                     fontMetrics().elidedText(text(), Qt::ElideRight, room.width()));
}

} // namespace ui
