// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QFrame>
#include <QLabel>

class QLabel;
class QToolButton;

namespace ui {

/// One line across the window for what the tables cannot say. It is never a box and asks for no
/// answer. Hidden while it has nothing to say.
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
    /// Makes the line as high as its text needs at this width, so that no window is too small for
    /// all of it.
    void fitHeight();

    QLabel* m_shape;
    QLabel* m_text;
    QToolButton* m_dismiss;
    Kind m_kind = Kind::information;
};

/// The notice beside a result table that holds a finding: a shape and a few words, in the palette's
/// text or in the tone of a finding.
class FindingNotice : public QLabel {
    Q_OBJECT
    /// Whether the words have the tone of a finding.
    Q_PROPERTY(bool toned MEMBER m_toned)

public:
    explicit FindingNotice(QWidget* parent = nullptr);
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    int shapeSide() const;

    bool m_toned = true;
};

} // namespace ui
