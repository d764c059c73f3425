// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QWidget>

#include "ui/application/preference_rules.h"

class QLabel;
class QLineEdit;

namespace ui {

/// One whole-number setting: label, field, what it does, and a note on what was typed. The value is
/// stored when the field is left or Enter is pressed; a text that is no value is put back.
class IntegerPreferenceRow : public QWidget {
    Q_OBJECT

public:
    /// `settings` must outlive the row.
    IntegerPreferenceRow(IntegerPreference preference, settings::SettingsStore& settings,
                         QWidget* parent = nullptr);

    /// Shows what the store holds now, unless the user is just typing.
    void reload();
    /// Stores what was typed and not stored yet; a text that is no value is put back.
    void storeEdited();

private:
    void showStored();
    void judge(const QString& typed);
    void showNote(const QString& note);

    IntegerPreference m_preference;
    settings::SettingsStore& m_settings;
    QLineEdit* m_field;
    QLabel* m_note;
};

} // namespace ui
