// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
//
// How rules read a stored value, whatever its kind, and the two stores that keep no file.
//
// People edit the file and scripts write it, so a threshold may stand there as 500, "500", 500.0 or
// " 500 reads". Rules read all of them alike and never fail: a value without a number is 0, and one
// that does not say true is false. Integers saturate, because a threshold that no machine word
// holds is still a threshold that no patient reaches. The characters decide, not the locale: a
// comma is no decimal point anywhere.
//
// Tested by settings_store_test.cpp.
#include "settings/settings_store.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <iterator>
#include <limits>
#include <map>
#include <mutex>
#include <string>
#include <string_view>
#include <system_error>
#include <utility>
#include <variant>

#include "platform/numbers.h"

namespace settings {

namespace {

bool isSpace(char byte) {
    return byte == ' ' || (byte >= '\t' && byte <= '\r');
}

std::string_view withoutLeadingSpace(std::string_view text) {
    while (!text.empty() && isSpace(text.front())) {
        text.remove_prefix(1);
    }
    return text;
}

std::int64_t leadingInteger(std::string_view text) {
    text = withoutLeadingSpace(text);
    const bool negative = !text.empty() && text.front() == '-';
    if (negative || (!text.empty() && text.front() == '+')) {
        text.remove_prefix(1);
    }
    if (text.empty() || text.front() < '0' || text.front() > '9') {
        return 0;
    }
    constexpr std::uint64_t kHighest = std::numeric_limits<std::int64_t>::max();
    std::uint64_t digits = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), digits);
    if (error != std::errc() || digits > kHighest) {
        return negative ? std::numeric_limits<std::int64_t>::min()
                        : std::numeric_limits<std::int64_t>::max();
    }
    const auto value = static_cast<std::int64_t>(digits);
    return negative ? -value : value;
}

bool textIsTrue(std::string_view text) {
    text = withoutLeadingSpace(text);
    if (!text.empty() && (text.front() == '+' || text.front() == '-')) {
        text.remove_prefix(1);
    }
    while (!text.empty() && text.front() == '0') {
        text.remove_prefix(1);
    }
    return !text.empty() && std::string_view("123456789YyTt").find(text.front()) != text.npos;
}

} // namespace

std::int64_t integerSetting(const SettingsStore& store, std::string_view key) {
    const std::optional<SettingValue> value = store.value(key);
    if (!value) {
        return 0;
    }
    if (const auto* text = std::get_if<std::string>(&*value)) {
        return leadingInteger(*text);
    }
    if (const auto* number = std::get_if<std::int64_t>(&*value)) {
        return *number;
    }
    if (const auto* real = std::get_if<double>(&*value)) {
        return platform::truncated(*real);
    }
    const auto* boolean = std::get_if<bool>(&*value);
    return boolean && *boolean ? 1 : 0;
}

bool booleanSetting(const SettingsStore& store, std::string_view key) {
    const std::optional<SettingValue> value = store.value(key);
    if (!value) {
        return false;
    }
    if (const auto* boolean = std::get_if<bool>(&*value)) {
        return *boolean;
    }
    if (const auto* number = std::get_if<std::int64_t>(&*value)) {
        return *number != 0;
    }
    if (const auto* real = std::get_if<double>(&*value)) {
        return *real != 0.0;
    }
    const auto* text = std::get_if<std::string>(&*value);
    return text && textIsTrue(*text);
}

bool isStoredTrue(const SettingsStore& store, std::string_view key) {
    const std::optional<SettingValue> value = store.value(key);
    return value && *value == SettingValue(true);
}

// --- In memory

struct MemorySettingsStore::State {
    mutable std::mutex mutex;
    SettingValues values;
};

MemorySettingsStore::MemorySettingsStore() : m_state(std::make_unique<State>()) {}

MemorySettingsStore::~MemorySettingsStore() = default;

std::optional<SettingValue> MemorySettingsStore::value(std::string_view key) const {
    const std::lock_guard lock(m_state->mutex);
    const auto found = m_state->values.find(key);
    return found == m_state->values.end() ? std::nullopt : std::optional(found->second);
}

SettingValues MemorySettingsStore::values() const {
    const std::lock_guard lock(m_state->mutex);
    return m_state->values;
}

void MemorySettingsStore::setValue(std::string_view key, SettingValue value) {
    const std::lock_guard lock(m_state->mutex);
    m_state->values.insert_or_assign(std::string(key), std::move(value));
}

void MemorySettingsStore::setMissing(const KeysAndValues& values) {
    const std::lock_guard lock(m_state->mutex);
    for (const auto& [key, value] : values) {
        m_state->values.emplace(key, value);
    }
}

// --- Overlay

OverlaySettingsStore::OverlaySettingsStore(SettingsStore& below, const SettingValues& values)
    : m_below(below) {
    for (const auto& [key, value] : values) {
        m_values.setValue(key, value);
    }
}

OverlaySettingsStore::~OverlaySettingsStore() = default;

std::optional<SettingValue> OverlaySettingsStore::value(std::string_view key) const {
    const std::optional<SettingValue> given = m_values.value(key);
    return given ? given : m_below.value(key);
}

SettingValues OverlaySettingsStore::values() const {
    SettingValues all = m_values.values();
    all.merge(m_below.values());
    return all;
}

void OverlaySettingsStore::setValue(std::string_view key, SettingValue value) {
    SettingsStore& keeper = m_values.value(key) ? static_cast<SettingsStore&>(m_values) : m_below;
    keeper.setValue(key, std::move(value));
}

void OverlaySettingsStore::setMissing(const KeysAndValues& values) {
    KeysAndValues notGiven;
    std::copy_if(values.begin(), values.end(), std::back_inserter(notGiven),
                 [this](const auto& entry) { return !m_values.value(entry.first); });
    m_below.setMissing(notGiven);
}

} // namespace settings
