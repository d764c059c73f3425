// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
//
// The preferences window: groups of rows, one row for each setting.
//
// A row shows what its setting's readers make of the stored value, not the stored text, so a user
// sees what a run would use. A switch is stored at the click. A number is stored when its field is
// left, and a text that is no value is put back; what is being typed survives a reload. Rows keep
// no value of their own: a run may repair a setting at any time, and other programs share the file.
//
// Tested by preferences_window_test.cpp; what becomes of a typed text by preference_rules_test.cpp.
#include "ui/application/preferences_window.h"

#include <functional>
#include <utility>

#include <QCheckBox>
#include <QDialogButtonBox>
#include <QEvent>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollArea>
#include <QStyle>
#include <QVBoxLayout>

#include "ui/application/preference_rules.h"
#include "ui/window/desktop_preferences.h"

namespace ui {

namespace {

constexpr int kSpaceBetweenRows = 16;
constexpr int kDigits = 14;

QVBoxLayout* makeRows(QWidget& group) {
    auto* rows = new QVBoxLayout(&group);
    rows->setSpacing(kSpaceBetweenRows);
    return rows;
}

/// A wrapped line under a preference that says what it does.
QLabel* makeEffectLabel(const QString& text) {
    auto* label = new QLabel(text);
    label->setWordWrap(true);
    label->setTextFormat(Qt::PlainText);
    return label;
}

QString effectText(const IntegerPreference& preference) {
    return preference.effect + QLatin1Char('\n') + rangeText(preference) + QLatin1Char(' ') +
           takesEffectText(TakesEffect::nextCall);
}

} // namespace

/// One setting that is on or off: a check box and what it does. Stored at once.
class BooleanPreferenceRow : public QWidget {
public:
    /// What a row shows and where its value lives.
    struct Contents {
        QString name; ///< of the check box
        QString label;
        QString effect;
        std::function<bool()> read;
        std::function<void(bool)> write;
    };

    explicit BooleanPreferenceRow(Contents contents);

    /// Shows what is stored now.
    void reload() { m_box->setChecked(m_contents.read()); }

private:
    Contents m_contents;
    QCheckBox* m_box;
};

BooleanPreferenceRow::BooleanPreferenceRow(Contents contents)
    : m_contents(std::move(contents)), m_box(new QCheckBox(m_contents.label)) {
    m_box->setObjectName(m_contents.name);
    m_box->setAccessibleDescription(m_contents.effect);
    QLabel* effect = makeEffectLabel(m_contents.effect);
    // Under the check box's text.
    effect->setIndent(style()->pixelMetric(QStyle::PM_IndicatorWidth) +
                      style()->pixelMetric(QStyle::PM_CheckBoxLabelSpacing));
    auto* rows = new QVBoxLayout(this);
    rows->setContentsMargins(0, 0, 0, 0);
    rows->addWidget(m_box);
    rows->addWidget(effect);
    connect(m_box, &QCheckBox::clicked, this, [this](bool on) { m_contents.write(on); });
    reload();
}

/// One whole-number setting: label, field, what it does, and a note on what was typed. The value is
/// stored when the field is left or Enter is pressed; a text that is no value is put back.
class IntegerPreferenceRow : public QWidget {
public:
    /// `settings` must outlive the row.
    IntegerPreferenceRow(IntegerPreference preference, settings::SettingsStore& settings);

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

IntegerPreferenceRow::IntegerPreferenceRow(IntegerPreference preference,
                                           settings::SettingsStore& settings)
    : m_preference(std::move(preference)), m_settings(settings), m_field(new QLineEdit),
      m_note(makeEffectLabel({})) {
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

namespace {

BooleanPreferenceRow* makeRow(const BooleanPreference& preference,
                              settings::SettingsStore& settings) {
    return new BooleanPreferenceRow(
        {settingName(preference.setting), preference.label,
         preference.effect + QLatin1Char(' ') + takesEffectText(preference.when),
         [&settings, preference] { return settings::isOn(settings, preference.setting); },
         [&settings, preference](bool on) { settings.setValue(preference.setting, on); }});
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
    groups->addWidget(makeResults());
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
            {kReadsInputsInPlace, tr("&Read the inputs where they are"),
             tr("Runs open the FASTQ files themselves, plain or .gz, and make no working copies. "
                "Nothing is written beside the inputs, so that they may lie on a read-only disk, "
                "and runs are faster. The results are the same. Off at first.") +
                 QLatin1Char(' ') + takesEffectText(TakesEffect::nextRun),
             readsInputsInPlace, setReadsInputsInPlace}));
    addRow(*rows, makeRow(failedReadsFilePreference(), m_settings));
    return group;
}

QWidget* PreferencesWindow::makeResults() {
    auto* group = new QGroupBox(tr("Saved results"));
    addRow(*makeRows(*group),
           new BooleanPreferenceRow(
               {kWritesRecords, tr("&Write a record beside saved documents"),
                tr("Saving a result also writes a file of the same name that ends in "
                   "\".record.json\". It tells how the result was made: program, catalogue, "
                   "settings, each patient's files and how far they were read, failed patients and "
                   "warnings. On at first.") +
                    QLatin1Char(' ') + tr("Takes effect from the next Save on."),
                writesRecords, setWritesRecords}));
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
