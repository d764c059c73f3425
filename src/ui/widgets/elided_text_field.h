// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QLineEdit>

namespace ui {

/// A text to read and select, never to edit. A text that is too long is elided in the middle until
/// the field has the keyboard; the tooltip has all of it.
class ElidedTextField : public QLineEdit {
    Q_OBJECT

public:
    explicit ElidedTextField(QWidget* parent = nullptr);

protected:
    void changeEvent(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    QRect textRect() const;
    void takeColoursOfWindow();
};

} // namespace ui
