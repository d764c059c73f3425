// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include "ui/application/background_settings.h"

#include <utility>

namespace ui {

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

} // namespace ui
