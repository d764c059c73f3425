// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include "settings/json_settings_store.h"

#include <chrono>
#include <csignal>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <future>
#include <limits>
#include <memory>
#include <optional>
#include <string>
#include <thread>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fcntl.h>
#include <pwd.h>
#include <sys/file.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include "platform/files.h"
#include "settings/setting_values.h"
#include "settings/settings_table.h"
#include "support/temp_dir.h"

using setting_values::number;
using setting_values::text;
using settings::JsonSettingsStore;
using settings::SettingValue;
using support::readFile;
using support::TempDir;
using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

namespace {

class JsonSettings : public testing::Test {
protected:
    JsonSettingsStore store() {
        return {path, [this](const std::string& message) { reports.push_back(message); }};
    }
    void write(const std::string& content) { directory.write("settings.json", content); }
    bool exists(const std::string& name) const {
        return std::filesystem::exists(directory.file(name));
    }

    TempDir directory;
    std::string path = directory.file("settings.json");
    std::vector<std::string> reports;
};

} // namespace

// --- Values

TEST_F(JsonSettings, KeepValuesAcrossStores) {
    store().setValue("a", text("500"));
    store().setValue("b", true);
    EXPECT_EQ(store().value("a"), text("500"));
    EXPECT_EQ(store().value("b"), SettingValue(true));
    EXPECT_EQ(store().value("c"), std::nullopt);
    EXPECT_THAT(reports, IsEmpty());
}

TEST_F(JsonSettings, TellABooleanFromANumberAndFromAText) {
    write(R"({"boolean": true, "number": 1, "real": 1.0, "text": "true", "digit": "1"})");
    EXPECT_EQ(store().value("boolean"), SettingValue(true));
    EXPECT_EQ(store().value("number"), number(1));
    EXPECT_EQ(store().value("real"), SettingValue(1.0));
    EXPECT_EQ(store().value("text"), text("true"));
    EXPECT_EQ(store().value("digit"), text("1"));
    EXPECT_TRUE(isStoredTrue(store(), "boolean"));
    for (const char* key : {"number", "real", "text", "digit"}) {
        EXPECT_FALSE(isStoredTrue(store(), key)) << key;
    }
}

TEST_F(JsonSettings, KeepEveryKindOfValueThroughTheFile) {
    const std::vector<SettingValue> values = {
        true,
        false,
        number(std::numeric_limits<std::int64_t>::max()),
        number(std::numeric_limits<std::int64_t>::min()),
        0.1,
        1.0,
        -1e300,
        text(""),
        text("1"),
        text("\"\\\n\t\x01 µ"),
        std::monostate{},
    };
    for (const SettingValue& value : values) {
        store().setValue("key", value);
        EXPECT_EQ(store().value("key"), value) << "kind " << value.index();
    }
}

TEST_F(JsonSettings, ReadWholeNumbersBeyondSixtyFourBitsAsReals) {
    write(R"({"a": 9223372036854775808, "b": -9223372036854775809, "c": 99999999999999999999999})");
    EXPECT_EQ(store().value("a"), SettingValue(9223372036854775808.0));
    EXPECT_EQ(store().value("b"), SettingValue(-9223372036854775809.0));
    EXPECT_EQ(store().value("c"), SettingValue(99999999999999999999999.0));
}

TEST_F(JsonSettings, ReadKindsThatNoRuleReadsAsStoredAllTheSame) {
    write(R"({"list": [1], "object": {"x": 1}, "null": null})");
    for (const char* key : {"list", "object", "null"}) {
        EXPECT_EQ(store().value(key), SettingValue(std::monostate{})) << key;
        EXPECT_EQ(integerSetting(store(), key), 0) << key;
    }
}

TEST_F(JsonSettings, ReadTheFileAtTheMomentAValueIsAskedFor) {
    JsonSettingsStore kept = store();
    write(R"({"a": 1})");
    EXPECT_EQ(kept.value("a"), number(1));
    write(R"({"a": 2})");
    EXPECT_EQ(kept.value("a"), number(2));
    std::filesystem::remove(path);
    EXPECT_EQ(kept.value("a"), std::nullopt);
}

TEST_F(JsonSettings, KeepUnknownKeysInTheirOrder) {
    write(
        R"({"zebra": [1, {"deep": null}], "nD1Threshold": "500", "apple": 18446744073709551615})");
    store().setValue("nD1Threshold", number(100));
    store().setValue("new", false);
    EXPECT_EQ(readFile(path), "{\n"
                              "    \"zebra\": [\n"
                              "        1,\n"
                              "        {\n"
                              "            \"deep\": null\n"
                              "        }\n"
                              "    ],\n"
                              "    \"nD1Threshold\": 100,\n"
                              "    \"apple\": 18446744073709551615,\n"
                              "    \"new\": false\n"
                              "}\n");
}

TEST_F(JsonSettings, MakeTheFileAndItsDirectoriesAtTheFirstWrite) {
    path = directory.file("not/yet/there/settings.json");
    EXPECT_EQ(store().value("a"), std::nullopt);
    EXPECT_FALSE(exists("not"));
    store().setValue("a", number(1));
    EXPECT_EQ(store().value("a"), number(1));
    EXPECT_THAT(reports, IsEmpty());
}

TEST_F(JsonSettings, StoreFirstRunValuesAsTypedJson) {
    JsonSettingsStore fresh = store();
    settings::key::writeFirstRunValues(fresh);
    EXPECT_EQ(readFile(path), "{\n"
                              "    \"leaveIntermediateFiles\": false,\n"
                              "    \"calculateFalsePositiveRate\": false,\n"
                              "    \"nD1Threshold\": \"500\",\n"
                              "    \"nD2Threshold\": \"10\",\n"
                              "    \"windowSizeMidi\": false\n"
                              "}\n");
}

TEST_F(JsonSettings, WriteBytesThatAreNoUtf8AsReplacementCharacters) {
    store().setValue("key", text("a\xff"
                                 "b"));
    EXPECT_EQ(store().value("key"), text("a\xef\xbf\xbd"
                                         "b"));
}

TEST_F(JsonSettings, ReadABlankFileAsAnEmptyStore) {
    for (const char* content : {"", " \r\n\t\n"}) {
        write(content);
        EXPECT_EQ(store().value("a"), std::nullopt);
        store().setValue("a", number(1));
        EXPECT_EQ(store().value("a"), number(1));
    }
    EXPECT_THAT(reports, IsEmpty());
    EXPECT_FALSE(exists("settings.json.damaged"));
}

TEST_F(JsonSettings, WriteThroughALinkThatStaysOne) {
    std::filesystem::create_directory(directory.file("dotfiles"));
    const std::string target = directory.write("dotfiles/vexta.json", R"({"kept": 1})");
    std::filesystem::create_symlink(target, path);
    store().setValue("a", number(2));
    EXPECT_TRUE(std::filesystem::is_symlink(path));
    JsonSettingsStore direct(target, [](const std::string&) {});
    EXPECT_EQ(direct.value("a"), number(2));
    EXPECT_EQ(direct.value("kept"), number(1));
    EXPECT_TRUE(exists("dotfiles/vexta.json.lock")) << "one lock, whichever name is used";
}

TEST_F(JsonSettings, KeepThePermissionsOfTheFile) {
    for (const auto mode : {std::filesystem::perms{0600}, std::filesystem::perms{0666}}) {
        write("{}");
        std::filesystem::permissions(path, mode);
        store().setValue("a", number(1));
        EXPECT_EQ(std::filesystem::status(path).permissions(), mode);
    }
}

TEST_F(JsonSettings, StoreOnlyWhatIsMissing) {
    write(R"({"a": 1})");
    store().setMissing({{"a", number(2)}, {"b", number(3)}});
    EXPECT_EQ(store().value("a"), number(1));
    EXPECT_EQ(store().value("b"), number(3));
}

TEST_F(JsonSettings, WriteNothingWhereNothingIsMissing) {
    write(R"({"a": 1})");
    store().setMissing({{"a", number(2)}});
    EXPECT_EQ(readFile(path), R"({"a": 1})");
    EXPECT_FALSE(exists("settings.json.lock"));
}

// --- Damaged files

TEST_F(JsonSettings, ReportADamagedFileOnceAndSetItAsideAtTheNextWrite) {
    for (const char* content : {"{", "]", "not json", "[1]", "\"text\"", "null", "{\"a\": 1e999}",
                                "{\"a\": \"\xff\"}", "{\"a\": 1} x"}) {
        const TempDir fresh;
        path = fresh.write("settings.json", content);
        reports.clear();
        JsonSettingsStore damaged = store();
        EXPECT_EQ(damaged.value("a"), std::nullopt) << content;
        EXPECT_EQ(damaged.value("a"), std::nullopt) << content;
        EXPECT_THAT(reports, ElementsAre(HasSubstr("first-run values"))) << content;
        EXPECT_EQ(readFile(path), content) << "reading changes nothing";
        damaged.setValue("a", number(1));
        EXPECT_THAT(reports, ElementsAre(HasSubstr(path), HasSubstr(path + ".damaged"))) << content;
        EXPECT_EQ(damaged.value("a"), number(1));
        EXPECT_EQ(readFile(path + ".damaged"), content);
    }
}

TEST_F(JsonSettings, GiveFirstRunValuesForAFileThatIsDamagedLater) {
    write(R"({"nD1Threshold": "700"})");
    JsonSettingsStore kept = store();
    settings::key::writeFirstRunValues(kept);
    EXPECT_EQ(kept.value("nD1Threshold"), text("700"));
    const std::string halfWritten = R"({"nD1Thresh)";
    write(halfWritten);
    EXPECT_EQ(kept.value("nD1Threshold"), text("500"));
    EXPECT_EQ(kept.value("calculateFalsePositiveRate"), SettingValue(false));
    EXPECT_EQ(kept.value("leaveFileForFailedToBeAssignedReads"), std::nullopt);
    EXPECT_THAT(reports, ElementsAre(HasSubstr("first-run values are used")));
    EXPECT_EQ(readFile(path), halfWritten) << "reading changes nothing";
}

TEST_F(JsonSettings, StoreFirstRunValuesInPlaceOfAFileThatIsSetAside) {
    JsonSettingsStore kept = store();
    settings::key::writeFirstRunValues(kept);
    write("{");
    kept.setValue("nD2Threshold", text("20"));
    EXPECT_EQ(readFile(path + ".damaged"), "{");
    EXPECT_EQ(kept.value("nD1Threshold"), text("500"));
    EXPECT_EQ(store().value("nD1Threshold"), text("500")) << "for the programs that come later";
    EXPECT_EQ(store().value("nD2Threshold"), text("20"));
}

TEST_F(JsonSettings, WriteBesideADamagedFileThatWasSetAside) {
    write("{");
    store().setValue("a", number(1));
    EXPECT_EQ(store().value("a"), number(1));
    EXPECT_EQ(readFile(path + ".damaged"), "{");
    EXPECT_THAT(reports, SizeIs(1));
}

TEST_F(JsonSettings, NumberFilesSetAsideSoThatNoneIsLost) {
    for (const char* content : {"first", "second", "third"}) {
        write(content);
        store().setValue("a", number(1));
    }
    EXPECT_EQ(readFile(path + ".damaged"), "first");
    EXPECT_EQ(readFile(path + ".damaged.2"), "second");
    EXPECT_EQ(readFile(path + ".damaged.3"), "third");
    EXPECT_THAT(reports, SizeIs(3));
}

TEST_F(JsonSettings, RefuseDeepNesting) {
    const std::size_t depth = 1'000'000;
    for (const std::string& content :
         {std::string(depth, '['),
          "{\"a\": " + std::string(depth, '[') + std::string(depth, ']') + "}"}) {
        write(content);
        EXPECT_EQ(store().value("a"), std::nullopt);
    }
    EXPECT_THAT(reports, SizeIs(2));
}

TEST_F(JsonSettings, KeepWhatNestsAsDeepAsTheBoundAndRefuseOneLevelMore) {
    const auto nested = [](std::size_t levels) {
        return "{\"a\": " + std::string(levels - 1, '[') + "1" + std::string(levels - 1, ']') + "}";
    };
    write(nested(64));
    store().setValue("b", number(1));
    EXPECT_THAT(reports, IsEmpty());
    EXPECT_THAT(readFile(path), HasSubstr("1\n" + std::string(4 * 63, ' ') + "]"));
    write(nested(65));
    store().setValue("b", number(1));
    EXPECT_THAT(reports, ElementsAre(HasSubstr("not a JSON object")));
    EXPECT_EQ(readFile(path + ".damaged"), nested(65));
}

/// So many that a parser which looks through the list after each of them would not come to an end.
TEST_F(JsonSettings, AreReadFromAFileOfVeryManyObjects) {
    std::string objects = "{}";
    for (int i = 0; i < 400'000; ++i) {
        objects += ",{}";
    }
    write("{\"a\": [" + objects + "], \"b\": \"7\"}");
    EXPECT_EQ(store().value("b"), text("7"));
    EXPECT_THAT(reports, IsEmpty());
}

TEST_F(JsonSettings, CountNoBracketsInsideTexts) {
    write("{\"a\": \"" + std::string(1000, '[') + "\\\"" + std::string(1000, '{') + "\"}");
    EXPECT_EQ(store().value("a"), text(std::string(1000, '[') + "\"" + std::string(1000, '{')));
    EXPECT_THAT(reports, IsEmpty());
}

TEST_F(JsonSettings, RefuseAHugeFileWithoutReadingItAll) {
    write("{}");
    // A hole of 2 TiB: nobody could read it to the end.
    std::error_code refused;
    std::filesystem::resize_file(path, std::uintmax_t{1} << 41U, refused);
    if (refused) {
        std::filesystem::resize_file(path, std::uintmax_t{1} << 32U);
    }
    store().setValue("a", number(1));
    EXPECT_EQ(store().value("a"), number(1));
    EXPECT_THAT(reports, ElementsAre(HasSubstr("too large")));
    EXPECT_TRUE(exists("settings.json.damaged"));
}

// --- Files that cannot be used

TEST_F(JsonSettings, KeepValuesInMemoryWhereNothingCanBeWritten) {
    // A file stands where a directory is needed; that stops the superuser as well.
    path = directory.write("file", "") + "/settings.json";
    JsonSettingsStore unwritable = store();
    unwritable.setValue("a", number(1));
    unwritable.setValue("b", text("x"));
    unwritable.setValue("a", number(2));
    EXPECT_EQ(unwritable.value("a"), number(2));
    EXPECT_EQ(unwritable.value("b"), text("x"));
    EXPECT_EQ(store().value("a"), std::nullopt);
    EXPECT_THAT(reports, ElementsAre(HasSubstr(path)));
}

TEST_F(JsonSettings, TellWhyTheirDirectoryCannotBeMade) {
    path = directory.write("file", "") + "/vexta/settings.json";
    store().setMissing({{"a", number(1)}, {"b", number(2)}});
    EXPECT_THAT(reports, ElementsAre(HasSubstr("Cannot create directory " + directory.file("file") +
                                               "/vexta: Not a directory")));
}

TEST_F(JsonSettings, TellWhichOfSeveralDirectoriesCannotBeMade) {
    path = directory.write("file", "") + "/config/vexta/settings.json";
    store().setValue("a", number(1));
    EXPECT_THAT(reports, ElementsAre(HasSubstr("Cannot create directory " + directory.file("file") +
                                               "/config: Not a directory")));
}

TEST_F(JsonSettings, NeitherReadNorReplaceAFileWhoseNameIsTooLong) {
    path = directory.file(std::string(300, 'n'));
    JsonSettingsStore odd = store();
    EXPECT_THAT(odd.readable().error().message, HasSubstr("File name too long"));
    odd.setValue("a", number(1));
    EXPECT_EQ(odd.value("a"), number(1));
    EXPECT_THAT(reports, ElementsAre(HasSubstr("File name too long")));
}

TEST_F(JsonSettings, TakeAFileThatFailsToBeReadForNoEmptyOne) {
    path = "/proc/self/mem"; // a regular file whose first byte nobody can read
    JsonSettingsStore failing = store();
    EXPECT_FALSE(failing.readable().ok());
    EXPECT_EQ(failing.value("a"), std::nullopt);
    EXPECT_THAT(reports, ElementsAre(AllOf(HasSubstr(path), HasSubstr("Input/output error"))));
}

TEST_F(JsonSettings, KeepTheFileWhereItsSuccessorCannotBeWritten) {
    write(R"({"a": 1})");
    const pid_t child = ::fork();
    if (child == 0) {
        std::signal(SIGXFSZ, SIG_IGN);
        const rlimit none = {0, 0};
        ::setrlimit(RLIMIT_FSIZE, &none);
        JsonSettingsStore full = store();
        full.setValue("a", number(2));
        ::_exit(full.value("a") == number(2) && reports.size() == 1 ? 0 : 1);
    }
    int status = -1;
    ASSERT_EQ(::waitpid(child, &status, 0), child);
    EXPECT_EQ(status, 0);
    EXPECT_EQ(readFile(path), R"({"a": 1})");
    EXPECT_THAT(platform::namesInDirectory(directory.path()).value(),
                testing::UnorderedElementsAre("settings.json", "settings.json.lock"));
}

TEST_F(JsonSettings, PreferAKeptValueToAFirstRunValue) {
    path = directory.write("file", "") + "/settings.json";
    JsonSettingsStore unwritable = store();
    unwritable.setValue("a", number(1));
    unwritable.setMissing({{"a", number(500)}});
    EXPECT_EQ(unwritable.value("a"), number(1));
}

TEST_F(JsonSettings, WriteAgainOnceTheDirectoryTakesIt) {
    const std::string inTheWay = directory.write("file", "");
    path = inTheWay + "/settings.json";
    JsonSettingsStore kept = store();
    kept.setValue("a", number(1));
    std::filesystem::remove(inTheWay);
    kept.setValue("a", number(2));
    EXPECT_EQ(store().value("a"), number(2));
}

TEST_F(JsonSettings, LeaveADirectoryOrAPipeUnderTheirNameAlone) {
    const std::string asDirectory = directory.file("directory");
    const std::string asPipe = directory.file("pipe");
    ASSERT_TRUE(std::filesystem::create_directory(asDirectory));
    ASSERT_EQ(::mkfifo(asPipe.c_str(), 0600), 0);
    for (const std::string& name : {asDirectory, asPipe}) {
        path = name;
        reports.clear();
        JsonSettingsStore odd = store();
        EXPECT_EQ(odd.value("a"), std::nullopt);
        EXPECT_EQ(odd.value("a"), std::nullopt);
        EXPECT_THAT(reports, ElementsAre(HasSubstr(name)));
        odd.setValue("a", number(1));
        EXPECT_EQ(odd.value("a"), number(1));
        EXPECT_THAT(reports, ElementsAre(HasSubstr(name), HasSubstr("this run only")));
        EXPECT_FALSE(std::filesystem::exists(name + ".damaged"));
        EXPECT_FALSE(std::filesystem::is_regular_file(name));
    }
}

TEST_F(JsonSettings, LeaveADamagedFileThatCannotBeSetAside) {
    // The name is as long as a file system takes, so there is no longer one to set it aside under.
    path = directory.write(std::string(255, 'n'), "{");
    JsonSettingsStore damaged = store();
    EXPECT_EQ(damaged.value("a"), std::nullopt);
    damaged.setValue("a", number(1));
    EXPECT_EQ(damaged.value("a"), number(1));
    EXPECT_EQ(readFile(path), "{");
    EXPECT_THAT(reports, ElementsAre(HasSubstr("not a JSON object"),
                                     AllOf(HasSubstr("set aside"), HasSubstr("this run only"))));
}

// --- Files that may be there all the same

namespace {

/// A link that leads to itself: the system can tell nobody, not even the superuser, what stands
/// there.
std::string endlessLink(const TempDir& directory) {
    std::string path = directory.file("endless");
    std::filesystem::create_symlink(path, path);
    return path;
}

} // namespace

TEST_F(JsonSettings, TakeAFileThatCannotBeLookedAtForNoMissingOne) {
    path = endlessLink(directory);
    JsonSettingsStore odd = store();
    EXPECT_FALSE(odd.readable().ok());
    EXPECT_THAT(odd.readable().error().message, HasSubstr(path));
    EXPECT_EQ(odd.value("a"), std::nullopt);
    EXPECT_THAT(reports, ElementsAre(HasSubstr("cannot be read")));
    odd.setMissing({{"a", number(1)}});
    EXPECT_THAT(reports, SizeIs(2));
    EXPECT_TRUE(std::filesystem::is_symlink(path)) << "never replaced";
    EXPECT_FALSE(settings::readSettingsFile(path).ok());
}

TEST_F(JsonSettings, AreReadableWhereTheFileIsMissingBlankOrDamaged) {
    EXPECT_TRUE(store().readable().ok());
    for (const char* content : {"", "{", "{}"}) {
        write(content);
        EXPECT_TRUE(store().readable().ok()) << content;
    }
    path = directory.file("settings.json/below a file");
    EXPECT_TRUE(store().readable().ok());
    path = directory.path();
    EXPECT_FALSE(store().readable().ok());
}

TEST_F(JsonSettings, StayAsTheyWereReadLastWhileTheFileCannotBeRead) {
    write(R"({"a": 7})");
    JsonSettingsStore kept = store();
    EXPECT_EQ(kept.value("a"), number(7));
    std::filesystem::remove(path);
    std::filesystem::create_directory(path);
    EXPECT_EQ(kept.value("a"), number(7));
    EXPECT_THAT(reports, SizeIs(1));
    std::filesystem::remove(path);
    EXPECT_EQ(kept.value("a"), std::nullopt) << "there is no file any more";
}

TEST_F(JsonSettings, StayAsTheyWereWhenARunWasLetBegin) {
    JsonSettingsStore kept = store();
    write(R"({"nD1Threshold": "500"})");
    EXPECT_TRUE(kept.readable().ok());
    std::filesystem::remove(path);
    std::filesystem::create_directory(path);
    EXPECT_EQ(kept.value("nD1Threshold"), text("500")) << "no value was asked for before";
}

TEST_F(JsonSettings, StayAsTheyWereWhenFirstRunValuesWereLookedFor) {
    JsonSettingsStore kept = store();
    write(R"({"nD1Threshold": "700"})");
    kept.setMissing({{"nD1Threshold", text("500")}});
    std::filesystem::remove(path);
    std::filesystem::create_directory(path);
    EXPECT_EQ(kept.value("nD1Threshold"), text("700"));
}

TEST_F(JsonSettings, StayAsTheyWereStoredLastWhileTheFileCannotBeRead) {
    write(R"({"a": 1})");
    JsonSettingsStore kept = store();
    EXPECT_EQ(kept.value("a"), number(1));
    kept.setValue("a", number(2));
    std::filesystem::remove(path);
    std::filesystem::create_directory(path);
    EXPECT_EQ(kept.value("a"), number(2));
}

TEST_F(JsonSettings, WriteADanglingLinksTarget) {
    std::filesystem::create_directory(directory.file("dotfiles"));
    std::filesystem::create_symlink("dotfiles/second", path);
    std::filesystem::create_symlink("vexta.json", directory.file("dotfiles/second"));
    EXPECT_TRUE(store().readable().ok());
    store().setValue("a", number(2));
    EXPECT_TRUE(std::filesystem::is_symlink(path));
    EXPECT_TRUE(std::filesystem::is_symlink(directory.file("dotfiles/second")));
    EXPECT_TRUE(std::filesystem::is_regular_file(directory.file("dotfiles/vexta.json")));
    EXPECT_EQ(store().value("a"), number(2));
    EXPECT_THAT(reports, IsEmpty());
}

TEST_F(JsonSettings, MakeNoDirectoryForADanglingLink) {
    // It may be the place of a disk that is not mounted.
    const std::string target = directory.file("not mounted/vexta.json");
    std::filesystem::create_symlink(target, path);
    JsonSettingsStore dangling = store();
    dangling.setValue("a", number(2));
    EXPECT_EQ(dangling.value("a"), number(2));
    EXPECT_TRUE(std::filesystem::is_symlink(path));
    EXPECT_FALSE(exists("not mounted"));
    EXPECT_THAT(reports, ElementsAre(AllOf(HasSubstr("this run only"), HasSubstr(target))));
}

TEST_F(JsonSettings, OverwriteNoDanglingLinkWhereAFileIsSetAside) {
    write("{");
    std::filesystem::create_symlink("nowhere", path + ".damaged");
    store().setValue("a", number(1));
    EXPECT_TRUE(std::filesystem::is_symlink(path + ".damaged"));
    EXPECT_EQ(readFile(path + ".damaged.2"), "{");
}

// --- A lock that another program holds

namespace {

/// Holds the lock of a settings file, as another program would, while it lives.
class HeldLock {
public:
    explicit HeldLock(const std::string& settingsPath)
        : m_file(::open((settingsPath + ".lock").c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600)) {
        EXPECT_EQ(::flock(m_file, LOCK_EX | LOCK_NB), 0);
    }
    ~HeldLock() { ::close(m_file); }
    HeldLock(const HeldLock&) = delete;
    HeldLock& operator=(const HeldLock&) = delete;

private:
    int m_file;
};

constexpr JsonSettingsStore::LockPatience kWithoutWaiting{std::chrono::hours(1),
                                                          std::chrono::milliseconds(0)};

} // namespace

TEST_F(JsonSettings, AreReadWhileAnotherProgramHoldsTheLock) {
    for (const char* content : {R"({"a": 1})", "{", ""}) {
        write(content);
        const HeldLock held(path);
        JsonSettingsStore reader = store(); // it would wait ten seconds, and say so
        const auto value = reader.value("a");
        EXPECT_EQ(value.has_value(), std::string(content).size() > 1) << content;
        reader.setMissing({});
        EXPECT_TRUE(reader.readable().ok());
    }
    EXPECT_THAT(reports, ElementsAre(HasSubstr("not a JSON object")));
}

TEST_F(JsonSettings, AreReadWhileAnotherThreadWaitsForTheLock) {
    write(R"({"a": 1})");
    auto held = std::make_unique<HeldLock>(path);
    std::promise<void> waits;
    JsonSettingsStore shared(path, [&](const std::string&) { waits.set_value(); },
                             {std::chrono::milliseconds(0), std::chrono::hours(1)});
    std::thread writer([&] { shared.setValue("a", number(2)); });
    waits.get_future().wait();
    EXPECT_EQ(shared.value("a"), number(1));
    held.reset();
    writer.join();
    EXPECT_EQ(shared.value("a"), number(2));
}

TEST_F(JsonSettings, SayThatTheyWaitForTheLockAndThenWrite) {
    auto held = std::make_unique<HeldLock>(path);
    JsonSettingsStore waiting(path,
                              [&](const std::string& message) {
                                  reports.push_back(message);
                                  held.reset();
                              },
                              {std::chrono::milliseconds(0), std::chrono::hours(1)});
    waiting.setValue("a", number(2));
    EXPECT_EQ(store().value("a"), number(2));
    EXPECT_THAT(reports, ElementsAre(AllOf(HasSubstr("Waiting"), HasSubstr(path + ".lock"))));
}

TEST_F(JsonSettings, LeaveWhatAnotherProgramStoredMeanwhile) {
    auto held = std::make_unique<HeldLock>(path);
    JsonSettingsStore waiting(path,
                              [&](const std::string&) {
                                  write(R"({"a": 9})");
                                  held.reset();
                              },
                              {std::chrono::milliseconds(0), std::chrono::hours(1)});
    waiting.setMissing({{"a", number(500)}, {"b", number(10)}});
    EXPECT_EQ(store().value("a"), number(9));
    EXPECT_EQ(store().value("b"), number(10));
}

TEST_F(JsonSettings, GiveUpAWriteWhoseLockStaysHeldAndKeepWhatTheFileHolds) {
    write(R"({"a": 1})");
    auto held = std::make_unique<HeldLock>(path);
    JsonSettingsStore waiting(
        path, [this](const std::string& message) { reports.push_back(message); }, kWithoutWaiting);
    waiting.setMissing({{"a", number(500)}, {"b", number(10)}});
    waiting.setValue("c", number(3));
    EXPECT_EQ(readFile(path), R"({"a": 1})");
    EXPECT_THAT(reports, ElementsAre(AllOf(HasSubstr("this run only"), HasSubstr(".lock"))));
    EXPECT_EQ(waiting.value("a"), number(1)) << "the file's value, not the first-run value";
    EXPECT_EQ(waiting.value("b"), number(10));
    EXPECT_EQ(waiting.value("c"), number(3));
    // The other program stores a value of its own under a key that was missing.
    write(R"({"a": 1, "b": 77})");
    EXPECT_EQ(waiting.value("b"), number(77));
    waiting.setMissing({{"b", number(10)}});
    held.reset();
    waiting.setValue("c", number(4));
    EXPECT_EQ(store().value("c"), number(4));
}

TEST_F(JsonSettings, WaitOnlyOnceForALockThatStaysHeld) {
    const HeldLock held(path);
    const auto patience = std::chrono::milliseconds(50);
    JsonSettingsStore waiting(path,
                              [this](const std::string& message) { reports.push_back(message); },
                              {std::chrono::milliseconds(0), patience});
    for (int i = 0; i < 100; ++i) {
        waiting.setValue("a", number(i));
    }
    // The first said that it waited; of those that followed none waited.
    EXPECT_THAT(reports, ElementsAre(HasSubstr("Waiting"), HasSubstr("this run only")));
}

TEST_F(JsonSettings, HavePatienceForTenSecondsAndSaySoAfterOne) {
    EXPECT_EQ(JsonSettingsStore::LockPatience().sayAfter, std::chrono::seconds(1));
    EXPECT_EQ(JsonSettingsStore::LockPatience().giveUpAfter, std::chrono::seconds(10));
}

// --- Several processes

namespace {

constexpr int kProcesses = 6;
/// A slow disk makes others wait long.
constexpr JsonSettingsStore::LockPatience kEndlessPatience{std::chrono::hours(1),
                                                           std::chrono::hours(1)};
constexpr int kKeysEach = 25;

std::string keyOf(int process, int i) {
    return "key-" + std::to_string(process) + "-" + std::to_string(i);
}

/// Runs `work(number)` in processes of their own and says whether all of them ended well.
template <class Work>
bool runInProcesses(Work work) {
    std::vector<pid_t> children;
    for (int process = 0; process < kProcesses; ++process) {
        const pid_t child = ::fork();
        if (child == 0) {
            work(process);
            ::_exit(0);
        }
        children.push_back(child);
    }
    bool allWell = true;
    for (const pid_t child : children) {
        int status = -1;
        allWell = child > 0 && ::waitpid(child, &status, 0) == child && status == 0 && allWell;
    }
    return allWell;
}

} // namespace

TEST_F(JsonSettings, OfSeveralProcessesAreAllThereAtTheEnd) {
    write(R"({"before": "kept"})");
    ASSERT_TRUE(runInProcesses([this](int process) {
        JsonSettingsStore own(
            path, [](const std::string&) { ::_exit(1); }, kEndlessPatience);
        for (int i = 0; i < kKeysEach; ++i) {
            own.setValue(keyOf(process, i), number(i));
            if (own.value(keyOf(process, i)) != number(i)) {
                ::_exit(2);
            }
        }
    }));
    for (int process = 0; process < kProcesses; ++process) {
        for (int i = 0; i < kKeysEach; ++i) {
            EXPECT_EQ(store().value(keyOf(process, i)), number(i)) << keyOf(process, i);
        }
    }
    EXPECT_EQ(store().value("before"), text("kept"));
    EXPECT_THAT(reports, IsEmpty());
}

TEST_F(JsonSettings, ThatSeveralProcessesFindMissingAreStoredByOneOnly) {
    for (int round = 0; round < 10; ++round) {
        const TempDir fresh;
        path = fresh.file("settings.json");
        ASSERT_TRUE(runInProcesses([this](int process) {
            JsonSettingsStore own(
                path, [](const std::string&) { ::_exit(1); }, kEndlessPatience);
            own.setMissing({{"a", number(process)}, {"b", number(process)}});
            const auto first = own.value("a");
            own.setMissing({{"a", number(-1)}, {"b", number(-1)}});
            if (!first || own.value("a") != first || own.value("b") != first) {
                ::_exit(2);
            }
        }));
    }
}

TEST_F(JsonSettings, ThatSeveralProcessesFindDamagedAreSetAsideOnceOnly) {
    for (int round = 0; round < 10; ++round) {
        const TempDir fresh;
        path = fresh.write("settings.json", "{");
        ASSERT_TRUE(runInProcesses([this](int process) {
            JsonSettingsStore own(
                path, [](const std::string&) {}, kEndlessPatience);
            static_cast<void>(own.value("a"));
            own.setValue(keyOf(process, 0), number(process));
        }));
        for (int process = 0; process < kProcesses; ++process) {
            EXPECT_EQ(store().value(keyOf(process, 0)), number(process));
        }
        EXPECT_EQ(readFile(path + ".damaged"), "{");
        EXPECT_FALSE(std::filesystem::exists(path + ".damaged.2"));
    }
}

// --- The file of a user

namespace {

/// Sets an environment variable, or removes it, for the length of a test.
class Environment {
public:
    Environment(const char* name, const char* value) : m_name(name) {
        if (const char* before = std::getenv(name)) {
            m_before = before;
        }
        set(value);
    }
    ~Environment() { set(m_before ? m_before->c_str() : nullptr); }
    Environment(const Environment&) = delete;
    Environment& operator=(const Environment&) = delete;

private:
    void set(const char* value) {
        if (value) {
            ::setenv(m_name, value, 1);
        } else {
            ::unsetenv(m_name);
        }
    }

    const char* m_name;
    std::optional<std::string> m_before;
};

TEST(SettingsFile, GivesItsValuesWithoutMakingAnything) {
    const support::TempDir dir;
    const auto read =
        settings::readSettingsFile(dir.write("s.json", R"({"a": true, "b": "1", "c": [1]})"));
    ASSERT_TRUE(read.ok());
    ASSERT_EQ(read.value().size(), 3U);
    EXPECT_EQ(read.value().at("a"), settings::SettingValue(true));
    EXPECT_EQ(read.value().at("b"), settings::SettingValue(std::string("1")));
    const auto missing = settings::readSettingsFile(dir.file("missing.json"));
    ASSERT_TRUE(missing.ok());
    EXPECT_TRUE(missing.value().empty());
    EXPECT_EQ(platform::namesInDirectory(dir.path()).value(), std::vector<std::string>{"s.json"});
}

TEST(SettingsFile, RefusesWhatIsNoJsonObjectAndLeavesItAlone) {
    const support::TempDir dir;
    for (const char* text : {"[1]", "{\"a\": ", "@read\nACGT\n+\nIIII\n"}) {
        const std::string path = dir.write("s.json", text);
        const auto read = settings::readSettingsFile(path);
        ASSERT_FALSE(read.ok()) << text;
        EXPECT_EQ(read.error().message.rfind(path, 0), 0U);
        EXPECT_EQ(support::readFile(path), text);
    }
    EXPECT_FALSE(settings::readSettingsFile(dir.path()).ok());
    EXPECT_EQ(platform::namesInDirectory(dir.path()).value().size(), 1U);
}

TEST(SettingsFile, ReadsABlankFileAsNoValues) {
    const support::TempDir dir;
    const auto read = settings::readSettingsFile(dir.write("s.json", " \n"));
    ASSERT_TRUE(read.ok());
    EXPECT_TRUE(read.value().empty());
}

TEST(JsonSettingsPath, IsInTheConfigurationDirectory) {
    const Environment home("HOME", "/home/somebody");
    const Environment configured("XDG_CONFIG_HOME", "/elsewhere");
    EXPECT_EQ(JsonSettingsStore::perUserPath(), "/elsewhere/vexta/settings.json");
}

TEST(JsonSettingsPath, IsBelowHomeWhereNoAbsoluteDirectoryIsConfigured) {
    const Environment home("HOME", "/home/somebody");
    for (const char* value : {static_cast<const char*>(nullptr), "", "relative"}) {
        const Environment configured("XDG_CONFIG_HOME", value);
        EXPECT_EQ(JsonSettingsStore::perUserPath(), "/home/somebody/.config/vexta/settings.json");
    }
}

TEST(JsonSettingsPath, IsBelowTheRootWhereThatIsHome) {
    const Environment home("HOME", "/");
    const Environment configured("XDG_CONFIG_HOME", nullptr);
    EXPECT_EQ(JsonSettingsStore::perUserPath(), "//.config/vexta/settings.json");
}

TEST(JsonSettingsPath, IsBelowTheHomeOfTheAccountWithoutAnyVariable) {
    const passwd* account = ::getpwuid(::getuid());
    ASSERT_NE(account, nullptr);
    const std::string expected = std::string(account->pw_dir) + "/.config/vexta/settings.json";
    const Environment configured("XDG_CONFIG_HOME", nullptr);
    for (const char* value : {static_cast<const char*>(nullptr), ""}) {
        const Environment home("HOME", value);
        EXPECT_EQ(JsonSettingsStore::perUserPath(), expected);
    }
}

} // namespace
