// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <map>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>

#include <QObject>
#include <QPointer>

#include "platform/work_queues.h"
#include "settings/json_settings_store.h"
#include "settings/settings_store.h"

class QMessageBox;

/// The per-user settings as the desktop uses them: no window waits for the settings file, and a
/// user is told on screen what is wrong with it.
namespace ui {

/// Tells of a settings file that cannot be used or written, in a plain message that holds nobody:
/// a batch may be running. Further messages join the one on screen.
class SettingsTrouble : public QObject {
    Q_OBJECT

public:
    /// `mainQueue` must outlive whoever calls report().
    explicit SettingsTrouble(platform::MainQueue& mainQueue);
    ~SettingsTrouble() override;

    /// Callable from any thread; shown on the main thread later.
    void report(const std::string& message);

private:
    void show(const QString& message);

    platform::MainQueue& m_mainQueue;
    QPointer<QMessageBox> m_box;
};

/// Settings that nobody waits to store: values go to the store below, in the order given, on a
/// thread of their own. What was given counts at once for everybody who reads here.
///
/// A store whose file another program holds may wait for seconds. On the main thread that would be
/// a frozen window, and the message that says what is waited for could not be shown.
class BackgroundSettings : public settings::SettingsStore {
public:
    /// `below` must outlive this, and is called from any thread.
    explicit BackgroundSettings(settings::SettingsStore& below) : m_below(below) {}

    // Made last, m_writer goes first: it waits until everything given has been stored.

    std::optional<settings::SettingValue> value(std::string_view key) const override;
    void setValue(std::string_view key, settings::SettingValue value) override;
    settings::SettingValues values() const override;
    settings::SettingOrigin origin(std::string_view key) const override;
    void setMissing(const KeysAndValues& values) override;
    platform::Status readable() const override { return m_below.readable(); }

private:
    struct Given {
        settings::SettingValue value;
        std::uint64_t number = 0; ///< tells it from what is given later under its key
    };

    settings::SettingsStore& m_below;
    /// Guards what follows. Never held while something is stored.
    mutable std::mutex m_mutex;
    std::uint64_t m_givenSoFar = 0;
    /// Values on their way to the store, and those that go there only if they are missing.
    std::map<std::string, Given, std::less<>> m_values;
    std::map<std::string, Given, std::less<>> m_missing;
    platform::SerialQueue m_writer;
};

/// The per-user settings file behind both. Made on the main thread.
class DesktopSettings {
public:
    /// `mainQueue` must outlive the settings.
    explicit DesktopSettings(platform::MainQueue& mainQueue);

    settings::SettingsStore& store() { return m_background; }

private:
    SettingsTrouble m_trouble;
    settings::JsonSettingsStore m_file;
    BackgroundSettings m_background;
};

} // namespace ui
