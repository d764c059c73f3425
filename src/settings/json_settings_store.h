// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <chrono>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "platform/result.h"
#include "settings/settings_store.h"

namespace settings {

/// Settings in a JSON file: one object whose values are typed (true is not "true" nor 1).
///
/// Several processes may share the file. A write takes a lock beside it (FILE.lock), reads the file
/// again, changes its one key and replaces the file atomically. Reading takes no lock and waits for
/// nobody. A write that waits for another process's lock says so after a second and gives up after
/// ten. Later writes do not wait for that lock again until one of them gets it. A value whose write
/// fails lives as long as this process; a first-run value does so only under a key that the file
/// does not have.
///
/// Unknown keys are kept, and so are the file's permissions. A link stays a link: the store writes
/// its target, even a missing one if its directory is there. A missing or blank file is an empty
/// store.
///
/// A file that is not a JSON object is reported, and reads as one with the values that came with
/// setMissing(). The next write renames it to FILE.damaged (with a number if that name is taken),
/// so that nothing of it is lost, and stores those values in a new file.
///
/// A file that cannot be read or renamed stays as it is and is reported once. Until it is readable
/// again, the store gives what the file held when value(), readable() or setMissing() last read it:
/// a run that readable() let begin goes on with the values of then.
class JsonSettingsStore : public SettingsStore {
public:
    struct LockPatience {
        std::chrono::milliseconds sayAfter{1'000};
        std::chrono::milliseconds giveUpAfter{10'000};
    };

    /// `report` receives one finished message per problem (a damaged file, a failed write) and must
    /// not call the store. The first write makes the file and its directory.
    JsonSettingsStore(std::string path, std::function<void(const std::string&)> report)
        : JsonSettingsStore(std::move(path), std::move(report), LockPatience()) {}
    JsonSettingsStore(std::string path, std::function<void(const std::string&)> report,
                      LockPatience patience);
    ~JsonSettingsStore() override;

    /// Reads the file as it stands now.
    std::optional<SettingValue> value(std::string_view key) const override;
    void setValue(std::string_view key, SettingValue value) override;
    /// One write, under one lock; none where nothing is missing.
    SettingValues values() const override;
    void setMissing(const KeysAndValues& values) override;
    SettingOrigin origin(std::string_view key) const override;
    platform::Status readable() const override;

    /// $XDG_CONFIG_HOME/vexta/settings.json, or ~/.config/vexta/settings.json; without $HOME the
    /// home directory is that of the user's account.
    static std::string perUserPath();

private:
    struct State;
    std::unique_ptr<State> m_state;
};

/// Fails, with the reason, where the system does not let the file be read. A missing file and a
/// damaged one are readable.
platform::Status settingsFileReadable(const std::string& path);

/// The values of a settings file as they stand. Makes, locks and changes nothing. A missing file
/// holds none. Fails for a file that cannot be read or is not a JSON object.
platform::Result<std::map<std::string, SettingValue, std::less<>>>
readSettingsFile(const std::string& path);

} // namespace settings
