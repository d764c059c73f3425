// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

#include "platform/result.h"

namespace settings {

/// A value of the store. Its kind matters: true, 1 and "1" are three different values.
/// std::monostate stands for a stored value of a kind that no rule reads (a list, an object, null).
using SettingValue = std::variant<std::monostate, bool, std::int64_t, double, std::string>;

using SettingValues = std::map<std::string, SettingValue, std::less<>>;

/// Where a value comes from.
enum class SettingOrigin {
    notSet,     ///< nothing is stored; it reads as 0 or false
    firstRun,   ///< stored by this process, since nothing was
    stored,     ///< by the user, or at an earlier first start
    forThisRun, ///< given for this process, never stored
};

/// The per-user settings. A rule reads a value at the moment it needs it and never keeps it.
/// Implementations may be called from any thread.
class SettingsStore {
public:
    using KeysAndValues = std::vector<std::pair<std::string, SettingValue>>;

    virtual ~SettingsStore() = default;

    /// The value under `key`, or nullopt when nothing is stored there.
    virtual std::optional<SettingValue> value(std::string_view key) const = 0;
    /// Stores the value. A store that cannot write keeps the value for this process, and reports
    /// that once where its maker told it to.
    virtual void setValue(std::string_view key, SettingValue value) = 0;
    /// Stores, in order, the values whose keys hold nothing yet. It is one step: a value that
    /// another process stores meanwhile is not replaced.
    virtual void setMissing(const KeysAndValues& values) = 0;
    /// Every value, as they stand together at one moment. For who tells of settings; a rule reads
    /// the one that it needs.
    virtual SettingValues values() const = 0;
    /// Where the value under `key` comes from. REQUIRES: there is one.
    virtual SettingOrigin origin(std::string_view /*key*/) const { return SettingOrigin::stored; }
    /// Fails where the stored values cannot be read now. No run may begin then: it would take
    /// first-run values for the user's.
    virtual platform::Status readable() const { return {}; }
};

/// String-or-number integer conversion: a text is read as optional white space, sign and digits
/// (saturating), so "" and "x" are 0 and "12abc" is 12; a double is truncated (saturating, NaN 0);
/// a boolean is 0 or 1; a missing value is 0.
std::int64_t integerSetting(const SettingsStore& store, std::string_view key);

/// Truth conversion: a number is true when it is not 0; a text when, after white space, a sign and
/// zeros, it goes on with a digit 1-9 or one of Y, y, T, t; a missing value is false.
bool booleanSetting(const SettingsStore& store, std::string_view key);

/// Whether the value is the boolean true itself. A number 1 or a text "1" is not.
bool isStoredTrue(const SettingsStore& store, std::string_view key);

/// Settings in memory, for tests and for values that live no longer than the process.
class MemorySettingsStore : public SettingsStore {
public:
    MemorySettingsStore();
    ~MemorySettingsStore() override;
    std::optional<SettingValue> value(std::string_view key) const override;
    SettingValues values() const override;
    void setValue(std::string_view key, SettingValue value) override;
    void setMissing(const KeysAndValues& values) override;

private:
    struct State;
    std::unique_ptr<State> m_state;
};

/// Values for this run only, laid over another store. A key given here is read here and stored
/// here (a repair); every other key goes through to the store below.
class OverlaySettingsStore : public SettingsStore {
public:
    /// `below` must outlive the overlay.
    OverlaySettingsStore(SettingsStore& below, const SettingValues& values);
    ~OverlaySettingsStore() override;
    std::optional<SettingValue> value(std::string_view key) const override;
    SettingValues values() const override;
    void setValue(std::string_view key, SettingValue value) override;
    void setMissing(const KeysAndValues& values) override;
    SettingOrigin origin(std::string_view key) const override {
        return m_values.value(key) ? SettingOrigin::forThisRun : m_below.origin(key);
    }
    platform::Status readable() const override { return m_below.readable(); }

private:
    SettingsStore& m_below;
    MemorySettingsStore m_values;
};

} // namespace settings
