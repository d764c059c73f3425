// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QLabel>

namespace ui {

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
