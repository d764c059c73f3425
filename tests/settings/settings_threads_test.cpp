// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

#include "settings/json_settings_store.h"
#include "settings/settings_store.h"
#include "support/temp_dir.h"

using settings::JsonSettingsStore;
using settings::MemorySettingsStore;
using settings::OverlaySettingsStore;
using settings::SettingsStore;
using settings::SettingValue;

namespace {

constexpr int kThreads = 4;
constexpr int kKeysEach = 15;
/// A slow disk makes others wait long.
constexpr JsonSettingsStore::LockPatience kEndlessPatience{std::chrono::hours(1),
                                                           std::chrono::hours(1)};

std::string keyOf(int thread, int i) {
    return std::to_string(thread) + "-" + std::to_string(i);
}

/// Stores and reads from several threads, each with the store that `storeOf` gives it.
template <class StoreOf>
void storeFromThreads(StoreOf storeOf) {
    std::vector<std::thread> threads;
    for (int thread = 0; thread < kThreads; ++thread) {
        threads.emplace_back([&storeOf, thread] {
            SettingsStore& store = storeOf(thread);
            for (int i = 0; i < kKeysEach; ++i) {
                store.setValue(keyOf(thread, i), std::int64_t{i});
                EXPECT_EQ(store.value(keyOf(thread, i)), SettingValue(std::int64_t{i}));
                static_cast<void>(store.value(keyOf(0, i)));
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
}

void expectAll(const SettingsStore& store) {
    for (int thread = 0; thread < kThreads; ++thread) {
        for (int i = 0; i < kKeysEach; ++i) {
            EXPECT_EQ(store.value(keyOf(thread, i)), SettingValue(std::int64_t{i}));
        }
    }
}

} // namespace

TEST(SettingsOfSeveralThreads, AreAllKeptInMemory) {
    MemorySettingsStore store;
    storeFromThreads([&](int) -> SettingsStore& { return store; });
    expectAll(store);
}

TEST(SettingsOfSeveralThreads, AreAllKeptThroughAnOverlay) {
    MemorySettingsStore below;
    OverlaySettingsStore store(below, {{keyOf(1, 1), std::int64_t{99}}});
    storeFromThreads([&](int) -> SettingsStore& { return store; });
    expectAll(store);
    EXPECT_EQ(below.value(keyOf(1, 1)), std::nullopt);
}

TEST(SettingsOfSeveralThreads, AreAllKeptInOneFileStore) {
    const support::TempDir directory;
    JsonSettingsStore store(
        directory.file("s.json"), [](const std::string& message) { ADD_FAILURE() << message; },
        kEndlessPatience);
    storeFromThreads([&](int) -> SettingsStore& { return store; });
    expectAll(store);
}

TEST(SettingsOfSeveralThreads, AreAllKeptInOneFileOfSeveralStores) {
    const support::TempDir directory;
    const auto fail = [](const std::string& message) { ADD_FAILURE() << message; };
    std::vector<std::unique_ptr<JsonSettingsStore>> stores;
    for (int thread = 0; thread < kThreads; ++thread) {
        stores.push_back(
            std::make_unique<JsonSettingsStore>(directory.file("s.json"), fail, kEndlessPatience));
    }
    storeFromThreads(
        [&](int thread) -> SettingsStore& { return *stores[static_cast<std::size_t>(thread)]; });
    expectAll(*stores.front());
}
