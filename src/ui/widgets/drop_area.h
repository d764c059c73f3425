// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QLabel>

namespace ui {

/// A framed place that says what may be dropped on its window. It only shows; the window takes the
/// drop. Colours are the palette's, also after a change.
class DropArea : public QLabel {
    Q_OBJECT

public:
    explicit DropArea(QWidget* parent = nullptr);
    /// While something that can be opened hovers over the window.
    void setInviting(bool inviting);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    bool m_inviting = false;
};

} // namespace ui
