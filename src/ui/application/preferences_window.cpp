// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include "ui/application/preferences_window.h"

#include <utility>

#include <QDialogButtonBox>
#include <QEvent>
#include <QGroupBox>
#include <QPushButton>
#include <QScrollArea>
#include <QVBoxLayout>

#include "ui/application/boolean_preference_row.h"
#include "ui/application/integer_preference_row.h"
#include "ui/application/preference_rules.h"
#include "ui/window/desktop_preferences.h"

namespace ui {

namespace {

constexpr int kSpaceBetweenRows = 16;

QVBoxLayout* makeRows(QWidget& group) {
    auto* rows = new QVBoxLayout(&group);
    rows->setSpacing(kSpaceBetweenRows);
    return rows;
}

BooleanPreferenceRow* makeRow(const BooleanPreference& preference,
                              settings::SettingsStore& settings) {
    return new BooleanPreferenceRow(
        {settingName(preference.setting), preference.label,
         preference.effect + QLatin1Char(' ') + takesEffectText(preference.when),
         [&settings, preference] { return settings::isOn(settings, preference.setting); },
         [&settings, preference](bool on) {
             settings.setValue(preference.setting, settings::storedForm(preference.setting, on));
         }});
}

} // namespace

PreferencesWindow::PreferencesWindow(settings::SettingsStore& settings, QWidget* parent)
    : QDialog(parent), m_settings(settings) {
    setObjectName(QStringLiteral("preferenceWindow"));
    setWindowTitle(tr("Preferences"));
    auto* content = new QWidget;
    auto* groups = new QVBoxLayout(content);
    groups->addWidget(makeCalling());
    groups->addWidget(makeFiles());
    groups->addWidget(makeWindows());
    groups->addStretch(1);
    auto* scroller = new QScrollArea;
    scroller->setWidget(content);
    scroller->setWidgetResizable(true);
    scroller->setFrameShape(QFrame::NoFrame);
    scroller->setFocusPolicy(Qt::NoFocus);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close);
    // Enter in a field stores it and must not close the window as well.
    buttons->button(QDialogButtonBox::Close)->setAutoDefault(false);
    buttons->button(QDialogButtonBox::Close)->setDefault(false);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto* rows = new QVBoxLayout(this);
    rows->addWidget(scroller);
    rows->addWidget(buttons);
    resize(620, 720);
}

QWidget* PreferencesWindow::makeCalling() {
    auto* group = new QGroupBox(tr("Calling"));
    QVBoxLayout* rows = makeRows(*group);
    addRow(*rows, new IntegerPreferenceRow(nD1ThresholdPreference(), m_settings));
    addRow(*rows, new IntegerPreferenceRow(nD2ThresholdPreference(), m_settings));
    addRow(*rows, new IntegerPreferenceRow(copyNumberPreference(), m_settings));
    addRow(*rows, makeRow(falsePositiveRatePreference(), m_settings));
    return group;
}

QWidget* PreferencesWindow::makeFiles() {
    auto* group = new QGroupBox(tr("Input files"));
    QVBoxLayout* rows = makeRows(*group);
    addRow(
        *rows,
        new BooleanPreferenceRow(
            {QStringLiteral("readsInputsInPlace"), tr("&Read the inputs where they are"),
             tr("Runs open the FASTQ files themselves, plain or .gz, and make no working copies. "
                "Nothing is written beside the inputs, so that they may lie on a read-only disk, "
                "and runs are faster. The results are the same. Off at first.") +
                 QLatin1Char(' ') + takesEffectText(TakesEffect::nextRun),
             readsInputsInPlace, setReadsInputsInPlace}));
    addRow(*rows, makeRow(failedReadsFilePreference(), m_settings));
    return group;
}

QWidget* PreferencesWindow::makeWindows() {
    auto* group = new QGroupBox(tr("Windows"));
    addRow(*makeRows(*group), makeRow(midiWindowPreference(), m_settings));
    return group;
}

void PreferencesWindow::addRow(QVBoxLayout& rows, IntegerPreferenceRow* row) {
    m_integers.append(row);
    rows.addWidget(row);
}

void PreferencesWindow::addRow(QVBoxLayout& rows, BooleanPreferenceRow* row) {
    m_booleans.append(row);
    rows.addWidget(row);
}

void PreferencesWindow::reload() {
    for (IntegerPreferenceRow* row : std::as_const(m_integers)) {
        row->reload();
    }
    for (BooleanPreferenceRow* row : std::as_const(m_booleans)) {
        row->reload();
    }
}

void PreferencesWindow::changeEvent(QEvent* event) {
    if (event->type() == QEvent::ActivationChange && isActiveWindow()) {
        reload();
    }
    QDialog::changeEvent(event);
}

void PreferencesWindow::hideEvent(QHideEvent* event) {
    for (IntegerPreferenceRow* row : std::as_const(m_integers)) {
        row->storeEdited();
    }
    QDialog::hideEvent(event);
}

void PreferencesWindow::showEvent(QShowEvent* event) {
    reload();
    QDialog::showEvent(event);
}

} // namespace ui
