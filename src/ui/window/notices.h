// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QFrame>
#include <QLabel>

#include "ui/tables/call_icons.h"
#include "ui/tables/result_tones.h"

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
    /// Puts a button behind the text that emits detailsRequested(). `words` stand on it, `name` is
    /// its tooltip and for a screen reader. Without words there is none.
    void offerDetails(const QString& words, const QString& name);
    void clear();
    QString text() const;
    Kind kind() const { return m_kind; }

    bool isDismissible() const;
    void setDismissible(bool dismissible);

Q_SIGNALS:
    void detailsRequested();

protected:
    void changeEvent(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    void showShape();
    /// Gives a line on screen its width, and the text what the buttons leave of it.
    void layOut();
    /// Makes the line as high as its text needs at this width, so that no window is too small for
    /// all of it.
    void fitHeight();

    QLabel* m_shape;
    QLabel* m_text;
    QToolButton* m_details;
    QToolButton* m_dismiss;
    Kind m_kind = Kind::information;
};

/// A notice beside the title of a result table: a shape and a few words. It tells that the table
/// holds a finding, in the palette's text or in the tone of a finding; or that it could hold none.
class FindingNotice : public QLabel {
    Q_OBJECT
    /// Whether the words have the tone of a finding.
    Q_PROPERTY(bool toned MEMBER m_toned)
    /// Whether they tell that there was nothing to judge. Muted, whatever `toned` says.
    Q_PROPERTY(bool notAssessable MEMBER m_notAssessable)

public:
    explicit FindingNotice(QWidget* parent = nullptr);
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    int shapeSide() const;
    ResultTone tone() const;
    CallShape shape() const;

    bool m_toned = true;
    bool m_notAssessable = false;
};

} // namespace ui
