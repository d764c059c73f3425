// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QFrame>

namespace ui {

/// A panel beside the place that it explains. Transient: it closes on Esc and when the user works
/// elsewhere.
class Popover : public QFrame {
    Q_OBJECT

public:
    /// Takes `contents` in; lives with `window`.
    Popover(QWidget* contents, QWidget* window);

    /// Opens beside `anchor`, a rectangle of `of`, at its right-hand edge where there is room.
    void showRelativeToRect(const QRect& anchor, QWidget* of);

    /// Where a panel of `size` goes: to the right of the anchor, else to its left, always within
    /// `screen`. All in the screen's coordinates.
    static QPoint place(const QRect& anchor, const QSize& size, const QRect& screen);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    void appear();

    QWidget* m_contents;
};

} // namespace ui
