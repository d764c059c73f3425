// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include "platform/json_settings_store.h"

#include <algorithm>
#include <cerrno>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <iterator>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <variant>
#include <vector>

#include <fcntl.h>
#include <pwd.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <nlohmann/json.hpp>

#include "platform/descriptor.h"
#include "platform/files.h"

namespace platform {

namespace {

using Json = nlohmann::ordered_json;

// A settings file holds a few lines; anything near this size is something else.
constexpr std::uint64_t kLargestFile = std::uint64_t{16} << 20U;
// Deeper text would overflow the stack of the parser's users; no setting is nested at all.
constexpr std::size_t kDeepestJson = 64;

SettingValue settingOf(const Json& json) {
    if (json.is_boolean()) {
        return json.get<bool>();
    }
    if (json.is_number_unsigned() && json.get<std::uint64_t>() > std::uint64_t{INT64_MAX}) {
        return json.get<double>();
    }
    if (json.is_number_integer()) {
        return json.get<std::int64_t>();
    }
    if (json.is_number_float()) {
        return json.get<double>();
    }
    if (json.is_string()) {
        return json.get<std::string>();
    }
    return std::monostate{};
}

Json jsonOf(const SettingValue& value) {
    return std::visit(
        [](const auto& held) -> Json {
            if constexpr (std::is_same_v<std::decay_t<decltype(held)>, std::monostate>) {
                return nullptr;
            } else {
                return held;
            }
        },
        value);
}

/// Holds the lock beside the settings file while it lives. Without it a write goes on all the same:
/// a directory that takes no lock file takes no settings file either, and that is what is reported.
class FileLock {
public:
    explicit FileLock(const std::string& path)
        : m_descriptor(open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, 0666)) {
        while (m_descriptor >= 0 && flock(m_descriptor, LOCK_EX) != 0 && errno == EINTR) {
        }
    }
    ~FileLock() {
        if (m_descriptor >= 0) {
            close(m_descriptor);
        }
    }
    FileLock(const FileLock&) = delete;
    FileLock& operator=(const FileLock&) = delete;

private:
    int m_descriptor;
};

Status makeDirectories(const std::string& directory) {
    if (fileExists(directory)) {
        return {};
    }
    const std::string parent = directoryOf(directory);
    if (parent != directory && parent != ".") {
        if (Status made = makeDirectories(parent); !made) {
            return made;
        }
    }
    if (mkdir(directory.c_str(), 0777) != 0 && errno != EEXIST) {
        return systemError("create directory", directory, errno);
    }
    return {};
}

/// The file that a link under `path` leads to, else `path`: what is written then leaves the link.
std::string fileBehind(const std::string& path) {
    struct stat facts = {};
    if (lstat(path.c_str(), &facts) != 0 || !S_ISLNK(facts.st_mode)) {
        return path;
    }
    const std::unique_ptr<char, void (*)(void*)> target(realpath(path.c_str(), nullptr),
                                                        &std::free);
    return target ? std::string(target.get()) : path;
}

/// Whether brackets nest within bounds, strings passed over. Texts that are no JSON may count
/// anyhow.
bool nestsWithinBounds(std::string_view text) {
    std::size_t depth = 0;
    bool inString = false;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char byte = text[i];
        if (inString) {
            i += byte == '\\' ? 1 : 0;
            inString = byte != '"';
        } else if (byte == '"') {
            inString = true;
        } else if (byte == '{' || byte == '[') {
            if (++depth > kDeepestJson) {
                return false;
            }
        } else if ((byte == '}' || byte == ']') && depth > 0) {
            --depth;
        }
    }
    return true;
}

/// What stands under the settings file's name.
struct Content {
    enum class Kind {
        usable,    ///< `json` is the file's object, an empty one where there is no file
        damaged,   ///< the file was read and is no settings file
        unreadable ///< the system does not let it be read; it may be well
    };
    Kind kind = Kind::usable;
    Json json = Json::object();
    std::string reason;
};

Content unreadable(const Error& error) {
    return {Content::Kind::unreadable, Json::object(), error.message};
}

Content damaged(std::string reason) {
    return {Content::Kind::damaged, Json::object(), std::move(reason)};
}

Content contentOf(const std::string& text) {
    if (text.find_first_not_of(" \t\r\n") == text.npos) {
        return {};
    }
    if (nestsWithinBounds(text)) {
        Json json = Json::parse(text, nullptr, false);
        if (json.is_object()) {
            return {Content::Kind::usable, std::move(json), {}};
        }
    }
    return damaged("it is not a JSON object");
}

Content readContent(const std::string& path) {
    if (!fileExists(path)) {
        return {};
    }
    auto stream = openRegularFile(path);
    if (!stream) {
        // Another process that sets a damaged file aside leaves no file for a moment.
        return fileExists(path) ? unreadable(stream.error()) : Content{};
    }
    std::string text;
    while (const std::size_t available = stream.value()->available()) {
        text.append(stream.value()->next(), available);
        stream.value()->skip(available);
        if (text.size() > kLargestFile) {
            return damaged("it is too large for a settings file");
        }
    }
    if (stream.value()->failed()) {
        return unreadable(Error{"Cannot read " + path + ": " + stream.value()->error()});
    }
    return contentOf(text);
}

/// $HOME, else what the user's account says. Empty, which is the root directory, for neither.
std::string homeDirectory() {
    const char* home = std::getenv("HOME");
    if (home != nullptr && home[0] != '\0') {
        return home;
    }
    std::vector<char> texts(std::size_t{64} * 1024);
    passwd account = {};
    passwd* found = nullptr;
    getpwuid_r(getuid(), &account, texts.data(), texts.size(), &found);
    return found != nullptr ? found->pw_dir : "";
}

} // namespace

struct JsonSettingsStore::State {
    std::string path;
    std::function<void(const std::string&)> report;
    std::mutex mutex;
    /// Values that could not be written, for this process.
    std::map<std::string, SettingValue, std::less<>> unwritten;
    bool writeReported = false;
    bool readReported = false;

    Content load() {
        const std::string file = fileBehind(path);
        Content content = readContent(file);
        if (content.kind == Content::Kind::damaged) {
            const FileLock lock(file + ".lock");
            return loadLocked(file);
        }
        reportUnreadable(content);
        return content;
    }

    /// A damaged file is set aside. That is done under the lock and after another look: whoever had
    /// the lock before may have put a good file in its place.
    Content loadLocked(const std::string& file) {
        Content content = readContent(file);
        if (content.kind == Content::Kind::damaged) {
            return setAside(file, content.reason);
        }
        reportUnreadable(content);
        return content;
    }

    void reportUnreadable(const Content& content) {
        if (content.kind == Content::Kind::unreadable && !readReported) {
            readReported = true;
            report("The settings file cannot be used, first-run values are used. " +
                   content.reason);
        }
    }

    Content setAside(const std::string& file, const std::string& reason) {
        std::string aside = file + ".damaged";
        for (int number = 2; fileExists(aside); ++number) {
            aside = file + ".damaged." + std::to_string(number);
        }
        if (std::rename(file.c_str(), aside.c_str()) == 0) {
            report("The settings file " + file + " cannot be used (" + reason +
                   "). It was kept as " + aside + "; first-run values are used.");
            return {};
        }
        Content content = unreadable(Error{file + ": " + reason + ", and it cannot be set aside"});
        reportUnreadable(content);
        return content;
    }

    /// Adds the values to what the file holds now; `onlyMissing` passes keys over that it has.
    Status write(const SettingsStore::KeysAndValues& values, bool onlyMissing) {
        const std::string file = fileBehind(path);
        if (Status made = makeDirectories(directoryOf(file)); !made) {
            return made;
        }
        const FileLock lock(file + ".lock");
        Content content = loadLocked(file);
        if (content.kind == Content::Kind::unreadable) {
            return Error{content.reason}; // replacing the file would lose what it holds
        }
        for (const auto& [key, value] : values) {
            if (!onlyMissing || !content.json.contains(key)) {
                content.json[key] = jsonOf(value);
            }
        }
        return writeFileAtomically(
            file, content.json.dump(4, ' ', false, Json::error_handler_t::replace) + "\n");
    }

    /// Stores the values in the file, or where that fails in this process.
    void store(const SettingsStore::KeysAndValues& values, bool onlyMissing) {
        const Status written = write(values, onlyMissing);
        for (const auto& [key, value] : values) {
            if (written) {
                unwritten.erase(key);
            } else {
                unwritten.insert_or_assign(key, value);
            }
        }
        if (!written && !writeReported) {
            writeReported = true;
            report("Settings are kept for this run only: " + written.error().message);
        }
    }

    SettingsStore::KeysAndValues missingOf(const SettingsStore::KeysAndValues& values) {
        const Json json = load().json;
        SettingsStore::KeysAndValues missing;
        std::copy_if(values.begin(), values.end(), std::back_inserter(missing),
                     [&](const auto& entry) {
                         return unwritten.count(entry.first) == 0 && !json.contains(entry.first);
                     });
        return missing;
    }
};

JsonSettingsStore::JsonSettingsStore(std::string path,
                                     std::function<void(const std::string&)> report)
    : m_state(std::make_unique<State>()) {
    m_state->path = std::move(path);
    m_state->report = std::move(report);
}

JsonSettingsStore::~JsonSettingsStore() = default;

std::optional<SettingValue> JsonSettingsStore::value(std::string_view key) const {
    const std::lock_guard lock(m_state->mutex);
    const auto kept = m_state->unwritten.find(key);
    if (kept != m_state->unwritten.end()) {
        return kept->second;
    }
    const Json json = m_state->load().json;
    const auto found = json.find(std::string(key));
    return found == json.end() ? std::nullopt : std::optional(settingOf(*found));
}

void JsonSettingsStore::setValue(std::string_view key, SettingValue value) {
    const std::lock_guard lock(m_state->mutex);
    m_state->store({{std::string(key), std::move(value)}}, false);
}

void JsonSettingsStore::setMissing(const KeysAndValues& values) {
    const std::lock_guard lock(m_state->mutex);
    const KeysAndValues missing = m_state->missingOf(values);
    if (!missing.empty()) {
        m_state->store(missing, true);
    }
}

std::string JsonSettingsStore::perUserPath() {
    const char* configured = std::getenv("XDG_CONFIG_HOME");
    if (configured && configured[0] == '/') {
        return std::string(configured) + "/vexta/settings.json";
    }
    return homeDirectory() + "/.config/vexta/settings.json";
}

Result<std::map<std::string, SettingValue, std::less<>>> readSettingsFile(const std::string& path) {
    const Content content = readContent(path);
    if (content.kind == Content::Kind::unreadable) {
        return Error{content.reason};
    }
    if (content.kind == Content::Kind::damaged) {
        return Error{path + ": " + content.reason};
    }
    std::map<std::string, SettingValue, std::less<>> values;
    for (const auto& [key, value] : content.json.items()) {
        values.insert_or_assign(key, settingOf(value));
    }
    return values;
}

} // namespace platform
