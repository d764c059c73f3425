// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "platform/result.h"
#include "platform/settings_store.h"

namespace platform {

/// Settings in a JSON file: one object whose values are typed (true is not "true" nor 1).
///
/// Several processes may share the file: a write takes a lock beside it (FILE.lock), reads the file
/// again, merges its one value and replaces the file atomically. Unknown keys are kept, and so are
/// the file's permissions; a link to a settings file stays one. A missing or blank file is an empty
/// store. A file that is not a JSON object is reported, set aside as FILE.damaged
/// (with a number when that name is taken) and replaced by the next write; nothing of it is lost.
/// A file that cannot be read or set aside stays as it is: it is reported once, reads as an empty
/// store, and what is stored lives as long as this process.
class JsonSettingsStore : public SettingsStore {
public:
    /// `report` receives one finished message per problem (a damaged file, a failed write); it must
    /// not call the store. The file and its directory are made at the first write.
    JsonSettingsStore(std::string path, std::function<void(const std::string&)> report);
    ~JsonSettingsStore() override;

    /// Reads the file as it stands now.
    std::optional<SettingValue> value(std::string_view key) const override;
    void setValue(std::string_view key, SettingValue value) override;
    /// One write, under one lock; none where nothing is missing.
    void setMissing(const KeysAndValues& values) override;

    /// $XDG_CONFIG_HOME/vexta/settings.json, or ~/.config/vexta/settings.json; without $HOME the
    /// home directory is that of the user's account.
    static std::string perUserPath();

private:
    struct State;
    std::unique_ptr<State> m_state;
};

/// The values of a settings file as they stand. Makes, locks and changes nothing. A missing file
/// holds none; one that cannot be read or is not a JSON object is a failure.
Result<std::map<std::string, SettingValue, std::less<>>> readSettingsFile(const std::string& path);

} // namespace platform
