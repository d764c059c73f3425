// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QFrame>

class QLabel;
class QToolButton;

namespace ui {

/// One line across the window that says something the tables cannot: never a box, nothing to
/// answer. Hidden while there is nothing to say.
class NoticeLine : public QFrame {
    Q_OBJECT
    Q_PROPERTY(bool dismissible READ isDismissible WRITE setDismissible)

public:
    enum class Kind {
        information,
        problem, ///< something did not work
        danger,  ///< something will be lost
    };

    explicit NoticeLine(QWidget* parent = nullptr);

    /// Plain text.
    void say(Kind kind, const QString& text);
    void clear();
    QString text() const;

    bool isDismissible() const;
    void setDismissible(bool dismissible);

protected:
    void changeEvent(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    void showShape();
    /// Has the line as high as its text needs at this width: the smallest window is one that shows
    /// all of it.
    void fitHeight();

    QLabel* m_shape;
    QLabel* m_text;
    QToolButton* m_dismiss;
    Kind m_kind = Kind::information;
};

} // namespace ui
