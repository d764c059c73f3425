// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QDialog>
#include <QList>

#include "settings/settings_store.h"

class QVBoxLayout;

namespace ui {

class BooleanPreferenceRow;
class IntegerPreferenceRow;

/// The settings that a user may change. A change is stored at once; nothing is stored by looking.
/// What another process or a run stored meanwhile is shown when the window comes forward.
class PreferencesWindow : public QDialog {
    Q_OBJECT

public:
    /// `settings` must outlive the window.
    explicit PreferencesWindow(settings::SettingsStore& settings, QWidget* parent = nullptr);

    /// Shows what is stored now.
    void reload();

protected:
    void changeEvent(QEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void showEvent(QShowEvent* event) override;

private:
    QWidget* makeCalling();
    QWidget* makeFiles();
    QWidget* makeResults();
    QWidget* makeWindows();
    void addRow(QVBoxLayout& rows, IntegerPreferenceRow* row);
    void addRow(QVBoxLayout& rows, BooleanPreferenceRow* row);

    settings::SettingsStore& m_settings;
    QList<IntegerPreferenceRow*> m_integers;
    QList<BooleanPreferenceRow*> m_booleans;
};

} // namespace ui
