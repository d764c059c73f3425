// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include "ui/application/integer_preference_row.h"

#include <utility>

#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QVBoxLayout>

#include "ui/application/preference_texts.h"

namespace ui {

namespace {

constexpr int kDigits = 14;

QString effectText(const IntegerPreference& preference) {
    return preference.effect + QLatin1Char('\n') + rangeText(preference) + QLatin1Char(' ') +
           takesEffectText(TakesEffect::nextCall);
}

} // namespace

IntegerPreferenceRow::IntegerPreferenceRow(IntegerPreference preference,
                                           settings::SettingsStore& settings, QWidget* parent)
    : QWidget(parent), m_preference(std::move(preference)), m_settings(settings),
      m_field(new QLineEdit), m_note(makeEffectLabel({})) {
    const QString name = settingName(m_preference.setting);
    m_field->setObjectName(name);
    m_field->setAccessibleDescription(effectText(m_preference));
    m_field->setMaximumWidth(fontMetrics().averageCharWidth() * (kDigits + 4));
    m_note->setObjectName(name + QStringLiteral("Note"));
    QFont noteFont = m_note->font();
    noteFont.setBold(true);
    m_note->setFont(noteFont);
    auto* label = new QLabel(m_preference.label);
    label->setBuddy(m_field);
    auto* line = new QHBoxLayout;
    line->addWidget(label, 1);
    line->addWidget(m_field);
    auto* rows = new QVBoxLayout(this);
    rows->setContentsMargins(0, 0, 0, 0);
    rows->addLayout(line);
    rows->addWidget(m_note);
    rows->addWidget(makeEffectLabel(effectText(m_preference)));
    connect(m_field, &QLineEdit::textEdited, this, &IntegerPreferenceRow::judge);
    connect(m_field, &QLineEdit::editingFinished, this, &IntegerPreferenceRow::storeEdited);
    showStored();
}

void IntegerPreferenceRow::reload() {
    if (!m_field->isModified()) {
        showStored();
    }
}

void IntegerPreferenceRow::showStored() {
    const auto value = storedInteger(m_settings, m_preference);
    m_field->setText(value ? QString::number(*value) : QString());
    m_field->setPlaceholderText(value ? QString()
                                      : QString::number(*m_preference.setting.firstRunValue));
    showNote(value ? judgeInteger(m_preference, m_field->text()).note : QString());
}

void IntegerPreferenceRow::judge(const QString& typed) {
    showNote(judgeInteger(m_preference, typed).note);
}

void IntegerPreferenceRow::storeEdited() {
    if (!m_field->isModified()) {
        return;
    }
    const IntegerVerdict verdict = judgeInteger(m_preference, m_field->text());
    if (verdict.value) {
        storeInteger(m_settings, m_preference, *verdict.value);
    }
    showStored();
    if (!verdict.value) {
        showNote(verdict.note);
    }
}

void IntegerPreferenceRow::showNote(const QString& note) {
    m_note->setText(note);
    m_note->setVisible(!note.isEmpty());
    m_field->setToolTip(note);
}

} // namespace ui
