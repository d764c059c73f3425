// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
//
// One small JSON file that the window, the command line and an editor share.
//
// Each read opens the file and parses it. The file is small and rules ask it rarely, and no program
// ever works with a value that another one has replaced. A writer replaces the file by a rename, so
// a reader meets the old content or the new one and needs no lock.
//
// A write changes one key of a file that another program may be changing, too. So writers take
// turns: lock, read again, merge, replace. The lock is a file beside the settings, because a lock
// on the settings file itself would stay with the old content at the rename. flock() waits without
// end or not at all, so a writer that waits asks again every few milliseconds; the system gives a
// lock back when its holder dies. A write costs about ten milliseconds, nearly all of it the flush
// to disk.
//
// Nothing that a user typed is lost. A file that is no settings file is renamed and never
// overwritten; one that cannot be read may be well and is left alone; links stay links, and their
// targets are written. Reading never changes anything on the disk.
//
// Whatever bytes the file holds, reading them ends in values or in a reason: its size and its
// nesting are bounded. Tested by json_settings_store_test.cpp, settings_threads_test.cpp (several
// threads) and fuzz/settings_fuzz.cpp (arbitrary bytes).
#include "settings/json_settings_store.h"

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <iterator>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <system_error>
#include <thread>
#include <type_traits>
#include <utility>
#include <variant>
#include <vector>

#include <fcntl.h>
#include <pwd.h>
#include <sys/file.h>
#include <unistd.h>

#include <nlohmann/json.hpp>

#include "platform/descriptor.h"
#include "platform/files.h"

namespace settings {

namespace {

namespace fs = std::filesystem;

using Json = nlohmann::ordered_json;
using SettingValues = std::map<std::string, SettingValue, std::less<>>;

// A settings file holds a few lines; anything near this size is something else.
constexpr std::uint64_t kLargestFile = std::uint64_t{16} << 20U;
// The library walks a value by recursion when it writes or destroys it, so a deep one would
// overflow the stack. No setting is nested at all.
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

using Clock = std::chrono::steady_clock;

/// Holds the lock beside the settings file while it lives. Where the system gives none, the write
/// goes on: a directory that takes no lock file takes no settings file either, and the write
/// reports that.
class FileLock {
public:
    explicit FileLock(const std::string& path)
        : m_file(open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, 0666)) {}

    /// False when another process still holds the lock at `end`. Calls `sayWaiting` once if it
    /// waits until `timeToSay`.
    bool takeBefore(Clock::time_point end, Clock::time_point timeToSay,
                    const std::function<void()>& sayWaiting) const {
        constexpr std::chrono::milliseconds kPause(2); // a write takes about ten
        bool said = false;
        while (isHeldByAnother()) {
            const Clock::time_point now = Clock::now();
            if (now >= end) {
                return false;
            }
            if (now >= timeToSay && !said) {
                said = true;
                sayWaiting();
            }
            std::this_thread::sleep_for(kPause);
        }
        return true;
    }

private:
    bool isHeldByAnother() const {
        int outcome = 0;
        do {
            outcome = m_file.isOpen() ? flock(m_file.number(), LOCK_EX | LOCK_NB) : 0;
        } while (outcome != 0 && errno == EINTR);
        return outcome != 0 && errno == EWOULDBLOCK;
    }

    platform::Descriptor m_file;
};

/// Names the very directory that cannot be made.
platform::Status makeDirectories(const std::string& directory) {
    if (platform::fileExists(directory)) {
        return {};
    }
    const std::string parent = platform::directoryOf(directory);
    if (parent != directory && parent != ".") {
        if (platform::Status made = makeDirectories(parent); !made) {
            return made;
        }
    }
    std::error_code failure;
    fs::create_directory(directory, failure);
    return failure && failure != std::errc::file_exists
               ? platform::systemError("create directory", directory, failure.value())
               : platform::Status();
}

/// The file that the links under `path` lead to, whether or not it is there; `path` itself where it
/// is no link. A write goes there, so that links stay links.
platform::Result<std::string> fileBehind(const std::string& path) {
    constexpr int kMostLinks = 40; // as many as the system follows
    std::string place = path;
    for (int links = 0; links <= kMostLinks; ++links) {
        std::error_code failure;
        const fs::file_status status = fs::symlink_status(place, failure);
        if (fs::status_known(status) && !fs::is_symlink(status)) {
            return place; // it may be missing
        }
        const fs::path target = failure ? fs::path() : fs::read_symlink(place, failure);
        if (failure) {
            return platform::systemError("examine", path, failure.value());
        }
        place = (fs::path(place).parent_path() / target).string();
    }
    return platform::systemError("examine", path, ELOOP);
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

/// The object that the text holds; nullopt for anything else, and for one that nests too deep. The
/// library's callback could count the depth, but with one its parser looks through a whole list
/// after each object that ends in it, and a hostile file would take hours.
std::optional<Json> objectIn(const std::string& text) {
    if (!nestsWithinBounds(text)) {
        return std::nullopt;
    }
    Json json = Json::parse(text, nullptr, false);
    return json.is_object() ? std::optional(std::move(json)) : std::nullopt;
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

Content unreadable(const platform::Error& error) {
    return {Content::Kind::unreadable, Json::object(), error.message};
}

Content damaged(std::string reason) {
    return {Content::Kind::damaged, Json::object(), std::move(reason)};
}

Content contentOf(const std::string& text) {
    if (text.find_first_not_of(" \t\r\n") == text.npos) {
        return {};
    }
    std::optional<Json> json = objectIn(text);
    return json ? Content{Content::Kind::usable, std::move(*json), {}}
                : damaged("it is not a JSON object");
}

/// Whether nothing stands under the path. Fails where the system cannot tell.
platform::Result<bool> isNotThere(const std::string& path) {
    std::error_code failure;
    const fs::file_status status = fs::status(path, failure);
    return fs::status_known(status) ? platform::Result<bool>(!fs::exists(status))
                                    : platform::systemError("examine", path, failure.value());
}

/// Links are followed.
Content readContent(const std::string& path) {
    auto stream = platform::openRegularFile(path);
    if (!stream) {
        const platform::Result<bool> notThere = isNotThere(path);
        if (!notThere) {
            return unreadable(notThere.error());
        }
        return notThere.value() ? Content{} : unreadable(stream.error());
    }
    std::string text;
    while (const std::size_t available = stream.value()->available()) {
        text.append(stream.value()->next(), available);
        stream.value()->skip(available);
        if (text.size() > kLargestFile) {
            return damaged("it is too large for a settings file");
        }
    }
    if (!stream.value()->status()) {
        return unreadable(platform::Error{"Cannot read " + path + ": " +
                                          stream.value()->status().error().message});
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
    LockPatience patience;

    /// Held during a write, also while it waits for another process. Taken before `mutex`.
    std::mutex writing;
    /// The last wait for the lock was in vain. Until a writer gets it again, none waits.
    bool waitedInVain = false;

    /// Guards what follows. Held for moments only, so that readers never wait.
    std::mutex mutex;
    /// Values that could not be written, for this process.
    SettingValues unwritten;
    /// First-run values that could not be written. They serve where the file has none.
    SettingValues unwrittenFirst;
    /// What the file held when it was last readable. Serves while it is not.
    Json lastRead = Json::object();
    /// The first-run values that came with setMissing(), which serve in place of a damaged file.
    Json firstRun = Json::object();
    /// The keys whose first-run values this process stored.
    std::set<std::string, std::less<>> madeHere;
    bool writeReported = false;
    bool readReported = false;
    bool damageReported = false;

    /// Reads what stands under the path now, and remembers it: a run that readable() let begin goes
    /// on with the values of then. Takes no lock file, changes nothing on the disk, reports
    /// nothing. REQUIRES: `mutex` is held.
    Content look() {
        Content content = readContent(path);
        if (content.kind == Content::Kind::usable) {
            lastRead = content.json;
        } else if (content.kind == Content::Kind::damaged) {
            lastRead = firstRun;
        }
        return content;
    }

    /// What rules read. REQUIRES: `mutex` is held.
    const Json& read() {
        const Content content = look();
        if (content.kind == Content::Kind::unreadable) {
            reportUnreadable(content);
        } else if (content.kind == Content::Kind::damaged && !std::exchange(damageReported, true)) {
            report("The settings file " + path + " cannot be used (" + content.reason +
                   "); first-run values are used.");
        }
        return lastRead;
    }

    void reportUnreadable(const Content& content) {
        if (!std::exchange(readReported, true)) {
            report("The settings file cannot be read. " + content.reason);
        }
    }

    /// Renames a damaged file to a name that is free. REQUIRES: the lock is held, and the file was
    /// read under it: the last holder may have put a good file in its place.
    static platform::Result<std::string> setAside(const std::string& file) {
        std::string aside = file + ".damaged";
        std::error_code failure;
        for (int number = 2; fs::exists(fs::symlink_status(aside, failure)); ++number) {
            aside = file + ".damaged." + std::to_string(number);
        }
        fs::rename(file, aside, failure);
        return failure ? platform::systemError("set aside", file, failure.value())
                       : platform::Result<std::string>(aside);
    }

    /// The file's values; for a damaged file, which is set aside, the first-run values. Fails where
    /// replacing the file would lose what it holds. REQUIRES: the lock is held.
    platform::Result<Json> readToReplace(const std::string& file) {
        Content content = readContent(file);
        if (content.kind == Content::Kind::unreadable) {
            return platform::Error{content.reason};
        }
        if (content.kind == Content::Kind::damaged) {
            const platform::Result<std::string> aside = setAside(file);
            if (!aside) {
                return platform::Error{file + ": " + content.reason +
                                       ", and it cannot be set aside. " + aside.error().message};
            }
            report("The settings file " + file + " cannot be used (" + content.reason +
                   "). It was kept as " + aside.value() + "; first-run values are used.");
            const std::lock_guard lock(mutex);
            return firstRun;
        }
        return std::move(content.json);
    }

    /// Adds the values to what the file holds now; `onlyMissing` skips keys that it has.
    /// REQUIRES: `writing` is held.
    platform::Status write(const SettingsStore::KeysAndValues& values, bool onlyMissing) {
        const platform::Result<std::string> file = fileBehind(path);
        if (!file) {
            return file.error();
        }
        // Not for a link, whose target may lie on a disk that is not mounted.
        if (file.value() == path) {
            if (platform::Status made = makeDirectories(platform::directoryOf(path)); !made) {
                return made;
            }
        }
        const FileLock lock(file.value() + ".lock");
        if (platform::Status taken = waitFor(lock, file.value() + ".lock"); !taken) {
            return taken;
        }
        platform::Result<Json> json = readToReplace(file.value());
        if (!json) {
            return json.error();
        }
        for (const auto& [key, value] : values) {
            if (!onlyMissing || !json.value().contains(key)) {
                json.value()[key] = jsonOf(value);
            }
        }
        return platform::writeFileAtomically(
            file.value(), json.value().dump(4, ' ', false, Json::error_handler_t::replace) + "\n");
    }

    platform::Status waitFor(const FileLock& lock, const std::string& lockPath) {
        const Clock::time_point now = Clock::now();
        const auto mostWait = waitedInVain ? std::chrono::milliseconds(0) : patience.giveUpAfter;
        waitedInVain = !lock.takeBefore(now + mostWait, now + patience.sayAfter, [&] {
            report("Waiting to store a setting: another program holds " + lockPath + ".");
        });
        return waitedInVain ? platform::Status(platform::Error{"another program holds " + lockPath})
                            : platform::Status();
    }

    /// Stores the values in the file, or, where that fails, for this process.
    void store(const SettingsStore::KeysAndValues& values, bool onlyMissing) {
        const platform::Status written = write(values, onlyMissing);
        const std::lock_guard lock(mutex);
        for (const auto& [key, value] : values) {
            if (written) {
                unwritten.erase(key);
                unwrittenFirst.erase(key);
            } else {
                (onlyMissing ? unwrittenFirst : unwritten).insert_or_assign(key, value);
            }
        }
        look(); // remembers what was just stored, in case the file becomes unreadable
        if (!written && !std::exchange(writeReported, true)) {
            report("Settings are kept for this run only: " + written.error().message);
        }
    }

    /// Notes the values as first-run values. Returns those that neither the file nor this process
    /// has.
    SettingsStore::KeysAndValues missingOf(const SettingsStore::KeysAndValues& values) {
        const std::lock_guard lock(mutex);
        for (const auto& [key, value] : values) {
            firstRun[key] = jsonOf(value);
        }
        // The write reports what is wrong with the file.
        const Json json = look().json;
        SettingsStore::KeysAndValues missing;
        std::copy_if(
            values.begin(), values.end(), std::back_inserter(missing), [&](const auto& entry) {
                return unwritten.count(entry.first) == 0 &&
                       unwrittenFirst.count(entry.first) == 0 && !json.contains(entry.first);
            });
        return missing;
    }
};

JsonSettingsStore::JsonSettingsStore(std::string path,
                                     std::function<void(const std::string&)> report,
                                     LockPatience patience)
    : m_state(std::make_unique<State>()) {
    m_state->path = std::move(path);
    m_state->report = std::move(report);
    m_state->patience = patience;
}

JsonSettingsStore::~JsonSettingsStore() = default;

std::optional<SettingValue> JsonSettingsStore::value(std::string_view key) const {
    State& state = *m_state;
    const std::lock_guard lock(state.mutex);
    if (const auto kept = state.unwritten.find(key); kept != state.unwritten.end()) {
        return kept->second;
    }
    const Json& json = state.read();
    if (const auto found = json.find(std::string(key)); found != json.end()) {
        return settingOf(*found);
    }
    const auto first = state.unwrittenFirst.find(key);
    return first == state.unwrittenFirst.end() ? std::nullopt : std::optional(first->second);
}

void JsonSettingsStore::setValue(std::string_view key, SettingValue value) {
    const std::lock_guard lock(m_state->writing);
    m_state->store({{std::string(key), std::move(value)}}, false);
    const std::lock_guard reading(m_state->mutex);
    if (const auto made = m_state->madeHere.find(key); made != m_state->madeHere.end()) {
        m_state->madeHere.erase(made);
    }
}

void JsonSettingsStore::setMissing(const KeysAndValues& values) {
    const std::lock_guard lock(m_state->writing);
    const KeysAndValues missing = m_state->missingOf(values);
    if (!missing.empty()) {
        m_state->store(missing, true);
        const std::lock_guard reading(m_state->mutex);
        for (const auto& [key, value] : missing) {
            m_state->madeHere.insert(key);
        }
    }
}

SettingValues JsonSettingsStore::values() const {
    State& state = *m_state;
    const std::lock_guard lock(state.mutex);
    SettingValues all(state.unwritten.begin(), state.unwritten.end());
    for (const auto& [key, value] : state.read().items()) {
        all.emplace(key, settingOf(value));
    }
    all.insert(state.unwrittenFirst.begin(), state.unwrittenFirst.end());
    return all;
}

SettingOrigin JsonSettingsStore::origin(std::string_view key) const {
    const std::lock_guard lock(m_state->mutex);
    return m_state->madeHere.count(key) > 0 ? SettingOrigin::firstRun : SettingOrigin::stored;
}

platform::Status JsonSettingsStore::readable() const {
    const std::lock_guard lock(m_state->mutex);
    const Content content = m_state->look();
    return content.kind == Content::Kind::unreadable
               ? platform::Status(platform::Error{content.reason})
               : platform::Status();
}

std::string JsonSettingsStore::perUserPath() {
    const char* configured = std::getenv("XDG_CONFIG_HOME");
    if (configured && configured[0] == '/') {
        return std::string(configured) + "/vexta/settings.json";
    }
    return homeDirectory() + "/.config/vexta/settings.json";
}

platform::Status settingsFileReadable(const std::string& path) {
    const Content content = readContent(path);
    return content.kind == Content::Kind::unreadable
               ? platform::Status(platform::Error{content.reason})
               : platform::Status();
}

platform::Result<std::map<std::string, SettingValue, std::less<>>>
readSettingsFile(const std::string& path) {
    const Content content = readContent(path);
    if (content.kind == Content::Kind::unreadable) {
        return platform::Error{content.reason};
    }
    if (content.kind == Content::Kind::damaged) {
        return platform::Error{path + ": " + content.reason};
    }
    std::map<std::string, SettingValue, std::less<>> values;
    for (const auto& [key, value] : content.json.items()) {
        values.insert_or_assign(key, settingOf(value));
    }
    return values;
}

} // namespace settings
