// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>

#include <QWidget>

class QCheckBox;

namespace ui {

/// One setting that is on or off: a check box and what it does. Stored at once.
class BooleanPreferenceRow : public QWidget {
    Q_OBJECT

public:
    /// What a row shows and where its value lives.
    struct Setting {
        QString name; ///< of the check box
        QString label;
        QString effect;
        std::function<bool()> read;
        std::function<void(bool)> write;
    };

    explicit BooleanPreferenceRow(Setting setting, QWidget* parent = nullptr);

    /// Shows what is stored now.
    void reload();

private:
    Setting m_setting;
    QCheckBox* m_box;
};

} // namespace ui
