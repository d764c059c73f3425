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
/// Several processes may share the file: a write takes a lock beside it (FILE.lock), reads the file
/// again, merges its one value and replaces the file atomically. Reading takes no lock and waits
/// for nobody. A write waits for another process's, says so after a second and is given up after
/// ten; as for every write that fails, what was to be stored then lives as long as this process,
/// first-run values only under keys that the file does not have. After that, a lock that is still
/// held is not waited for again.
///
/// Unknown keys are kept, and so are the file's permissions. A link stays one: its target is
/// written, also one that is not there yet if its directory is. A missing or blank file is an empty
/// store. A file that is not a JSON object is reported and reads as one with the values that came
/// with setMissing(); the next write sets it aside as FILE.damaged (with a number when that name is
/// taken), so nothing of it is lost, and stores those values in the new file. A file that cannot be
/// read or set aside stays as it is and is reported once; until it can be read again, what it held
/// when value(), readable() or setMissing() read it last counts, so that a run that readable() let
/// begin goes on with the values of then.
class JsonSettingsStore : public SettingsStore {
public:
    struct LockPatience {
        std::chrono::milliseconds sayAfter{1'000};
        std::chrono::milliseconds giveUpAfter{10'000};
    };

    /// `report` receives one finished message per problem (a damaged file, a failed write); it must
    /// not call the store. The file and its directory are made at the first write.
    JsonSettingsStore(std::string path, std::function<void(const std::string&)> report)
        : JsonSettingsStore(std::move(path), std::move(report), LockPatience()) {}
    JsonSettingsStore(std::string path, std::function<void(const std::string&)> report,
                      LockPatience patience);
    ~JsonSettingsStore() override;

    /// Reads the file as it stands now.
    std::optional<SettingValue> value(std::string_view key) const override;
    void setValue(std::string_view key, SettingValue value) override;
    /// One write, under one lock; none where nothing is missing.
    void setMissing(const KeysAndValues& values) override;
    platform::Status readable() const override;

    /// $XDG_CONFIG_HOME/vexta/settings.json, or ~/.config/vexta/settings.json; without $HOME the
    /// home directory is that of the user's account.
    static std::string perUserPath();

private:
    struct State;
    std::unique_ptr<State> m_state;
};

/// Why the system does not let a settings file be read. A missing and a damaged one are readable.
platform::Status settingsFileReadable(const std::string& path);

/// The values of a settings file as they stand. Makes, locks and changes nothing. A missing file
/// holds none; one that cannot be read or is not a JSON object is a failure.
platform::Result<std::map<std::string, SettingValue, std::less<>>>
readSettingsFile(const std::string& path);

} // namespace settings
