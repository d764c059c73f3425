// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
//
// Reads arbitrary bytes as a settings file. Reading alone changes no byte. A file that is a
// settings file keeps all it holds through writes; one that is none is kept beside the new one,
// byte for byte. TMPDIR says where the file lies: one in memory makes for many more runs.

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <nlohmann/json.hpp>

#include "require.h"

#include "settings/json_settings_store.h"
#include "settings/settings_table.h"
#include "support/temp_dir.h"

namespace {

using fuzzing::require;
using settings::JsonSettingsStore;
using settings::SettingValue;
using Json = nlohmann::ordered_json;

constexpr const char* kName = "settings.json";
constexpr std::string_view kWrittenKey = settings::key::kND1Threshold;

/// A settings file alone in its directory.
class SettingsFile {
public:
    explicit SettingsFile(std::string bytes) : m_bytes(std::move(bytes)) {
        for (const auto& entry : std::filesystem::directory_iterator(directory().path())) {
            std::filesystem::remove(entry.path());
        }
        directory().write(kName, m_bytes);
    }

    std::string path() const { return directory().file(kName); }
    std::string pathAside() const { return path() + ".damaged"; }
    const std::string& bytesAtFirst() const noexcept { return m_bytes; }
    std::string bytesNow() const { return support::readFile(path()); }

    void requireUnchanged() const {
        require(bytesNow() == m_bytes, "reading changes the file", bytesNow());
        require(!std::filesystem::exists(pathAside()), "a settings file is set aside");
    }
    /// Under its own name or set aside.
    void requireKept() const {
        const bool aside = std::filesystem::exists(pathAside());
        require(support::readFile(aside ? pathAside() : path()) == m_bytes, "a file is lost");
    }

private:
    static const support::TempDir& directory() {
        static const support::TempDir directory;
        return directory;
    }
    std::string m_bytes;
};

JsonSettingsStore storeOf(const SettingsFile& file, std::vector<std::string>& reports) {
    return {file.path(), [&reports](const std::string& line) { reports.push_back(line); }};
}

/// All that the rules can make of a value.
void readInEveryWay(const settings::SettingsStore& store, const std::string& key) {
    const std::int64_t number = settings::integerSetting(store, key);
    const bool truth = settings::booleanSetting(store, key);
    const bool isTrue = settings::isStoredTrue(store, key);
    require(!isTrue || (truth && number == 1), "a truth that is none", key);
}

void requireUsable(const SettingsFile& file,
                   const std::map<std::string, SettingValue, std::less<>>& values) {
    std::vector<std::string> reports;
    const JsonSettingsStore store = storeOf(file, reports);
    for (const auto& [key, value] : values) {
        require(store.value(key) == std::optional(value), "the store reads another value", key);
        readInEveryWay(store, key);
    }
    file.requireUnchanged();
    require(reports.empty(), "a settings file is reported", reports.empty() ? "" : reports[0]);
}

/// Whatever the file holds beside the value that is written stays, its order included.
void requireKeptByWriting(const SettingsFile& file, bool isBlank) {
    std::vector<std::string> reports;
    JsonSettingsStore store = storeOf(file, reports);
    store.setValue(kWrittenKey, std::int64_t{7});
    Json expected = isBlank ? Json::object() : Json::parse(file.bytesAtFirst());
    expected[std::string(kWrittenKey)] = 7;
    const std::string written = file.bytesNow();
    require(Json::parse(written) == expected, "writing a value changes another", written);
    const auto values = settings::readSettingsFile(file.path());
    require(values.ok() && values.value().size() == expected.size(), "written and not read");
    store.setValue(kWrittenKey, std::int64_t{7});
    require(file.bytesNow() == written, "the same value makes another file", file.bytesNow());
    settings::key::writeFirstRunValues(store);
    require(store.value(kWrittenKey) == SettingValue(std::int64_t{7}), "a value is replaced");
    require(reports.empty(), "a settings file is reported", reports.empty() ? "" : reports[0]);
}

void requireSetAside(const SettingsFile& file) {
    std::vector<std::string> reports;
    JsonSettingsStore store = storeOf(file, reports);
    require(!store.value(kWrittenKey), "a value of a damaged file");
    file.requireKept();
    store.setValue(kWrittenKey, std::string("500"));
    require(support::readFile(file.pathAside()) == file.bytesAtFirst(), "a damaged file is lost");
    const auto values = settings::readSettingsFile(file.path());
    require(values.ok() && values.value().size() == 1, "no new file in a damaged one's place");
    require(store.value(kWrittenKey) == SettingValue(std::string("500")), "the value is lost");
    // Told when it is read, and where it went when the write sets it aside.
    require(reports.size() == 2, "a damaged file is reported otherwise than twice",
            reports.empty() ? "" : reports.back());
}

} // namespace

// The fuzzer's library calls it by this name.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const SettingsFile file(std::string(data, data + size));
    const auto values = settings::readSettingsFile(file.path());
    file.requireUnchanged();
    if (values) {
        requireUsable(file, values.value());
        requireKeptByWriting(file,
                             file.bytesAtFirst().find_first_not_of(" \t\r\n") == std::string::npos);
    } else {
        requireSetAside(file);
    }
    return 0;
}
