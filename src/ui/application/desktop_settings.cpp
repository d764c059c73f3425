// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
//
// How the desktop stores settings without waiting for them.
//
// A write to the settings file may wait ten seconds for another program's lock, and it flushes to
// disk. On the main thread that would freeze every window, and the message that says what is waited
// for could not be shown. So a value is put into a map, from which it counts at once for whoever
// reads here, and one thread takes the values to the file in the order given. A value leaves the
// map once it can be read below, unless another one was given under its key meanwhile: numbers
// tell the two apart. What is not in the map is read from the file, which waits for no other
// program.
//
// A problem is met on that thread, or on a run's, and is told on the main one in a message box
// without modality: a batch may be running, and nothing of it may wait for a click.
//
// Tested by desktop_settings_test.cpp.
#include "ui/application/desktop_settings.h"

#include <utility>

#include "ui/widgets/shown_texts.h"

namespace ui {

SettingsTrouble::SettingsTrouble(platform::MainQueue& mainQueue) : m_mainQueue(mainQueue) {}

SettingsTrouble::~SettingsTrouble() {
    delete m_box;
}

void SettingsTrouble::report(const std::string& message) {
    m_mainQueue.async(
        [here = QPointer<SettingsTrouble>(this), text = QString::fromStdString(message)] {
            if (here) {
                here->show(text);
            }
        });
}

void SettingsTrouble::show(const QString& message) {
    if (m_box) {
        m_box->setInformativeText(m_box->informativeText() + QStringLiteral("\n\n") + message);
        return;
    }
    m_box = new QMessageBox(QMessageBox::Warning, tr("Settings"),
                            tr("There is trouble with the settings file."), QMessageBox::Ok);
    m_box->setObjectName(QStringLiteral("settingsTrouble"));
    m_box->setAttribute(Qt::WA_DeleteOnClose);
    m_box->setWindowModality(Qt::NonModal);
    m_box->setInformativeText(message);
    showTextsAsTheyStand(*m_box);
    m_box->show();
}

namespace {

template <typename GivenValues>
void forgetStored(GivenValues& given, std::string_view key, std::uint64_t number) {
    const auto found = given.find(key);
    if (found != given.end() && found->second.number == number) {
        given.erase(found);
    }
}

} // namespace

std::optional<settings::SettingValue> BackgroundSettings::value(std::string_view key) const {
    // Over the reading below as well: a value is forgotten here only once it can be read there.
    const std::lock_guard lock(m_mutex);
    if (const auto given = m_values.find(key); given != m_values.end()) {
        return given->second.value;
    }
    if (auto stored = m_below.value(key)) {
        return stored;
    }
    const auto first = m_missing.find(key);
    return first == m_missing.end() ? std::nullopt : std::optional(first->second.value);
}

settings::SettingValues BackgroundSettings::values() const {
    const std::lock_guard lock(m_mutex);
    settings::SettingValues all;
    for (const auto& [key, given] : m_values) {
        all.emplace(key, given.value);
    }
    all.merge(m_below.values());
    for (const auto& [key, given] : m_missing) {
        all.emplace(key, given.value);
    }
    return all;
}

settings::SettingOrigin BackgroundSettings::origin(std::string_view key) const {
    const std::lock_guard lock(m_mutex);
    if (m_values.count(key) > 0) {
        return settings::SettingOrigin::stored;
    }
    return m_missing.count(key) > 0 && !m_below.value(key) ? settings::SettingOrigin::firstRun
                                                           : m_below.origin(key);
}

void BackgroundSettings::setValue(std::string_view key, settings::SettingValue value) {
    const std::lock_guard lock(m_mutex);
    const std::uint64_t number = ++m_givenSoFar;
    m_values.insert_or_assign(std::string(key), Given{value, number});
    m_writer.async([this, key = std::string(key), value = std::move(value), number] {
        m_below.setValue(key, value);
        const std::lock_guard stored(m_mutex);
        forgetStored(m_values, key, number);
    });
}

void BackgroundSettings::setMissing(const KeysAndValues& values) {
    const std::lock_guard lock(m_mutex);
    const std::uint64_t number = ++m_givenSoFar;
    for (const auto& [key, value] : values) {
        m_missing.insert_or_assign(key, Given{value, number});
    }
    m_writer.async([this, values, number] {
        m_below.setMissing(values);
        const std::lock_guard stored(m_mutex);
        for (const auto& entry : values) {
            forgetStored(m_missing, entry.first, number);
        }
    });
}

DesktopSettings::DesktopSettings(platform::MainQueue& mainQueue)
    : m_trouble(mainQueue),
      m_file(settings::JsonSettingsStore::perUserPath(),
             [this](const std::string& message) { m_trouble.report(message); }),
      m_background(m_file) {}

} // namespace ui
