// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
//
// A file's name in a window: read and copied, by keyboard as well, but never changed. So it is a
// line edit, read-only and without frame and base. While the text is too long and the keyboard
// elsewhere, the field paints it itself and leaves out the middle, since names of one run differ at
// their ends. Tested by window_controller_test.cpp and, for its colours, by
// window_colours_test.cpp.
#include "ui/widgets/elided_text_field.h"

#include <QEvent>
#include <QPainter>
#include <QStyleOptionFrame>
#include <QTextDocument>

namespace ui {

ElidedTextField::ElidedTextField(QWidget* parent) : QLineEdit(parent) {
    setReadOnly(true);
    setFrame(false);
    takeColoursOfWindow();
    connect(this, &QLineEdit::textChanged, this, [this](const QString& text) {
        setToolTip(text.isEmpty() ? QString()
                                  : Qt::convertFromPlainText(text, Qt::WhiteSpaceNormal));
        setCursorPosition(0);
    });
}

/// The field paints no base, so its text lies on the window.
void ElidedTextField::takeColoursOfWindow() {
    QPalette clear;
    clear.setBrush(QPalette::Base, Qt::transparent);
    clear.setColor(QPalette::Text, palette().color(QPalette::WindowText));
    setPalette(clear);
}

void ElidedTextField::changeEvent(QEvent* event) {
    QLineEdit::changeEvent(event);
    if (event->type() == QEvent::PaletteChange &&
        palette().color(QPalette::Text) != palette().color(QPalette::WindowText)) {
        takeColoursOfWindow();
    }
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
