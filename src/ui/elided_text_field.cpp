// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include "ui/elided_text_field.h"

#include <QPainter>
#include <QStyleOptionFrame>
#include <QTextDocument>

namespace ui {

ElidedTextField::ElidedTextField(QWidget* parent) : QLineEdit(parent) {
    setReadOnly(true);
    setFrame(false);
    QPalette clear;
    clear.setBrush(QPalette::Base, Qt::transparent);
    setPalette(clear);
    connect(this, &QLineEdit::textChanged, this, [this](const QString& text) {
        setToolTip(text.isEmpty() ? QString()
                                  : Qt::convertFromPlainText(text, Qt::WhiteSpaceNormal));
        setCursorPosition(0);
    });
}

QRect ElidedTextField::textRect() const {
    constexpr int kHorizontalMargin = 2;
    QStyleOptionFrame option;
    initStyleOption(&option);
    return style()
        ->subElementRect(QStyle::SE_LineEditContents, &option, this)
        .adjusted(kHorizontalMargin, 0, -kHorizontalMargin, 0);
}

void ElidedTextField::paintEvent(QPaintEvent* event) {
    const QRect rect = textRect();
    if (hasFocus() || fontMetrics().horizontalAdvance(text()) <= rect.width()) {
        QLineEdit::paintEvent(event);
        return;
    }
    QPainter painter(this);
    painter.setPen(palette().color(QPalette::Text));
    painter.drawText(rect, static_cast<int>(Qt::AlignLeft | Qt::AlignVCenter),
                     fontMetrics().elidedText(text(), Qt::ElideMiddle, rect.width()));
}

} // namespace ui
