// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include "ui/widgets/drop_area.h"

#include <QPainter>

namespace ui {

namespace {

constexpr int kPadding = 16;
constexpr qreal kRadius = 8.0;
constexpr qreal kLine = 2.0;

} // namespace

DropArea::DropArea(QWidget* parent) : QLabel(parent) {
    setForegroundRole(QPalette::Text); // what is painted beneath is a list's background
    setAlignment(Qt::AlignCenter);
    setWordWrap(true);
    setMargin(kPadding);
    setText(tr("Drop a FASTQ file, a folder of FASTQ files or a saved result here"));
}

void DropArea::setInviting(bool inviting) {
    m_inviting = inviting;
    update();
}

void DropArea::paintEvent(QPaintEvent* event) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QPalette::ColorRole line = m_inviting ? QPalette::Highlight : QPalette::Mid;
    painter.setPen(QPen(palette().color(line), kLine, Qt::DashLine));
    painter.setBrush(palette().base());
    painter.drawRoundedRect(QRectF(rect()).adjusted(kLine, kLine, -kLine, -kLine), kRadius,
                            kRadius);
    QLabel::paintEvent(event);
}

} // namespace ui
