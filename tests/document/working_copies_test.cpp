// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include "document/working_copies.h"

#include <cstdlib>
#include <filesystem>
#include <stdexcept>
#include <utility>
#include <vector>

#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include "platform/file_identity.h"
#include "platform/files.h"
#include "settings/settings_table.h"
#include "support/temp_dir.h"

namespace {

namespace fs = std::filesystem;

/// "hello\n" as a gzip member.
const std::string
    kHelloGz("\x1f\x8b\x08\x00\x00\x00\x00\x00\x00\x03\xcb\x48\xcd\xc9\xc9\xe7\x02\x00"
             "\x20\x30\x3a\x36\x06\x00\x00\x00",
             26);

/// A "gunzip" of the test's own, first in PATH while it lives.
class PrivateGunzip {
public:
    explicit PrivateGunzip(const std::string& script) : m_pathBefore(std::getenv("PATH")) {
        m_directory.write("gunzip", "#!/bin/sh\n" + script + "\n");
        fs::permissions(m_directory.file("gunzip"), fs::perms::owner_all);
        ::setenv("PATH", (m_directory.path() + ":" + m_pathBefore).c_str(), 1);
    }
    ~PrivateGunzip() { ::setenv("PATH", m_pathBefore.c_str(), 1); }
    PrivateGunzip(const PrivateGunzip&) = delete;
    PrivateGunzip& operator=(const PrivateGunzip&) = delete;

private:
    support::TempDir m_directory;
    std::string m_pathBefore;
};

/// Nobody's rights while it lives, where the tests run with all rights.
class WithoutRights {
public:
    WithoutRights() {
        if (m_privileged && ::seteuid(kNobody) != 0) {
            throw std::runtime_error("cannot give rights up");
        }
    }
    ~WithoutRights() {
        if (m_privileged && ::seteuid(0) != 0) {
            std::abort();
        }
    }
    WithoutRights(const WithoutRights&) = delete;
    WithoutRights& operator=(const WithoutRights&) = delete;

private:
    static constexpr uid_t kNobody = 65534;
    bool m_privileged = ::geteuid() == 0;
};

/// While it lives two files can be open besides those that are: enough for a file, not for the
/// pipes of a child.
class WithTwoMoreDescriptors {
public:
    WithTwoMoreDescriptors() {
        const int next = ::dup(0);
        ::close(next);
        const rlim_t limit = static_cast<rlim_t>(next) + 2;
        if (next < 0 || ::getrlimit(RLIMIT_NOFILE, &m_before) != 0 ||
            !limitTo({limit, m_before.rlim_max})) {
            throw std::runtime_error("cannot limit the open files");
        }
    }
    ~WithTwoMoreDescriptors() {
        if (!limitTo(m_before)) {
            std::abort();
        }
    }
    WithTwoMoreDescriptors(const WithTwoMoreDescriptors&) = delete;
    WithTwoMoreDescriptors& operator=(const WithTwoMoreDescriptors&) = delete;

private:
    static bool limitTo(const rlimit& limit) { return ::setrlimit(RLIMIT_NOFILE, &limit) == 0; }

    rlimit m_before = {};
};

class WorkingCopiesTest : public testing::Test {
protected:
    run::WorkingCopies make(const std::string& file1, const std::string& file2) {
        return document::makeWorkingCopies(
            dir.path(), file1, file2,
            {[this](const std::string& line) { log.push_back(line); },
             [](const document::Preparation&) {},
             [this](const run::Warning& warning) { warnings.push_back(run::logLine(warning)); }});
    }
    /// Makes the pair's copies of this compressed read 1; read 2 is plain.
    run::WorkingCopies makeFrom(const std::string& compressed) {
        dir.write("x_R1_001.fastq.gz", compressed);
        dir.write("x_R2_001.fastq", "text");
        return make("x_R1_001.fastq.gz", "x_R2_001.fastq");
    }
    support::TempDir dir;
    std::vector<std::string> log;
    std::vector<std::string> warnings;
};

TEST(ExpansionCommand, LeavesOrdinaryNamesAsTheyAre) {
    EXPECT_EQ(document::expansionCommand("/data/run 1", "x_R1_001.fastq.gz"),
              "gunzip -c \"/data/run 1/x_R1_001.fastq.gz\" > \"/data/run 1/_x_R1_001.fastq\"");
}

TEST_F(WorkingCopiesTest, CopiesPlainInputsByteForByteAndExpandsCompressedOnes) {
    const std::string bytes("a\0b\r\n\xff", 6);
    dir.write("x_R1_001.fastq", bytes);
    dir.write("x_R2_001.fastq.gz", kHelloGz);
    const auto copies = make("x_R1_001.fastq", "x_R2_001.fastq.gz");
    EXPECT_EQ(copies.read1Path, dir.file("_x_R1_001.fastq"));
    EXPECT_EQ(copies.read2Path, dir.file("_x_R2_001.fastq"));
    EXPECT_EQ(support::readFile(copies.read1Path), bytes);
    EXPECT_EQ(support::readFile(copies.read2Path), "hello\n");
    EXPECT_FALSE(copies.obstructed);
    EXPECT_TRUE(log.empty());
}

TEST_F(WorkingCopiesTest, SaysWhichCopyIsBegunOnceNothingStandsUnderItsName) {
    dir.write("x_R1_001.fastq.gz", kHelloGz);
    const std::string left = dir.write("_x_R1_001.fastq", "of an earlier run");
    std::vector<std::string> begunNames;
    bool leftWasThere = false;
    document::makeWorkingCopies(dir.path(), "x_R1_001.fastq.gz", "x_R2_001.fastq",
                                {[](const std::string&) {},
                                 [&](const document::Preparation& preparation) {
                                     begunNames.push_back(preparation.name);
                                     EXPECT_EQ(preparation.copyPath, left);
                                     leftWasThere = platform::fileExists(left);
                                 },
                                 [](const run::Warning&) {}});
    EXPECT_EQ(begunNames, std::vector<std::string>{"x_R1_001.fastq.gz"}); // read 2 is missing
    EXPECT_FALSE(leftWasThere);
}

TEST_F(WorkingCopiesTest, HostileNamesRunNothing) {
    const std::vector<std::string> names = {"$(touch pwned)",
                                            "`touch pwned`",
                                            "\"; touch pwned; \"",
                                            "a b  c",
                                            "line\nbreak",
                                            "back\\slash",
                                            "$HOME",
                                            "-c",
                                            "'; touch pwned; '"};
    const fs::path before = fs::current_path();
    fs::current_path(dir.path());
    for (const std::string& name : names) {
        dir.write(name + ".gz", kHelloGz);
        const auto copies = make(name + ".gz", name + ".gz");
        EXPECT_TRUE(platform::fileExists(copies.read1Path)) << name;
        EXPECT_EQ(support::readFile(copies.read1Path), "hello\n") << name;
    }
    fs::current_path(before);
    EXPECT_FALSE(platform::fileExists(dir.file("pwned")));
    EXPECT_TRUE(log.empty());
}

TEST_F(WorkingCopiesTest, ReplacesALinkUnderACopysNameWithoutWritingThroughIt) {
    const std::string victim = dir.write("victim", "precious");
    for (const char* copy : {"_x_R1_001.fastq", "_x_R2_001.fastq"}) {
        fs::create_symlink(victim, dir.file(copy));
    }
    dir.write("x_R1_001.fastq", "text");
    dir.write("x_R2_001.fastq.gz", kHelloGz);
    const auto copies = make("x_R1_001.fastq", "x_R2_001.fastq.gz");
    EXPECT_EQ(support::readFile(victim), "precious");
    EXPECT_EQ(support::readFile(copies.read1Path), "text");
    EXPECT_EQ(support::readFile(copies.read2Path), "hello\n");
}

TEST_F(WorkingCopiesTest, ReplacesAFifoUnderACopysName) {
    ASSERT_EQ(::mkfifo(dir.file("_x_R1_001.fastq").c_str(), 0600), 0);
    dir.write("x_R1_001.fastq.gz", kHelloGz);
    const auto copies = make("x_R1_001.fastq.gz", "x_R1_001.fastq.gz");
    EXPECT_EQ(support::readFile(copies.read1Path), "hello\n");
}

TEST_F(WorkingCopiesTest, ADirectoryUnderACopysNameObstructsTheRun) {
    fs::create_directory(dir.file("_x_R1_001.fastq"));
    dir.write("x_R1_001.fastq", "text");
    dir.write("x_R2_001.fastq", "text");
    EXPECT_TRUE(make("x_R1_001.fastq", "x_R2_001.fastq").obstructed);
    ASSERT_EQ(log.size(), 1U);
    EXPECT_NE(log[0].find("_x_R1_001.fastq"), std::string::npos);
}

TEST_F(WorkingCopiesTest, AStaleCopyIsGoneWhenItsInputCannotBeRead) {
    dir.write("_x_R1_001.fastq", "stale");
    dir.write("_x_R2_001.fastq", "stale");
    const auto copies = make("x_R1_001.fastq", "x_R2_001.fastq.gz");
    EXPECT_FALSE(platform::fileExists(copies.read1Path));
    EXPECT_FALSE(platform::fileExists(copies.read2Path));
    EXPECT_EQ(log.size(), 2U);
}

TEST_F(WorkingCopiesTest, AFifoOrDirectoryNamedLikeAnInputIsAnErrorAndNoHang) {
    ASSERT_EQ(::mkfifo(dir.file("x_R1_001.fastq.gz").c_str(), 0600), 0);
    fs::create_directory(dir.file("x_R2_001.fastq"));
    make("x_R1_001.fastq.gz", "x_R2_001.fastq");
    ASSERT_EQ(log.size(), 2U);
    EXPECT_NE(log[0].find("x_R1_001.fastq.gz"), std::string::npos);
    EXPECT_NE(log[1].find("x_R2_001.fastq"), std::string::npos);
}

TEST_F(WorkingCopiesTest, ATruncatedInputLeavesNoPartialCopy) {
    dir.write("x_R1_001.fastq.gz", kHelloGz.substr(0, 20));
    dir.write("x_R2_001.fastq", "text");
    const auto copies = make("x_R1_001.fastq.gz", "x_R2_001.fastq");
    EXPECT_FALSE(platform::fileExists(copies.read1Path));
    EXPECT_TRUE(platform::fileExists(copies.read2Path));
    ASSERT_EQ(log.size(), 1U);
    EXPECT_NE(log[0].find(dir.file("x_R1_001.fastq.gz")), std::string::npos);
    EXPECT_EQ(log[0].back(), '\n');
}

/// What holds for the expansion by gunzip and by our own decoder: in a directory of ours alone, and
/// in one that others may write in as well.
class Expansion : public WorkingCopiesTest, public testing::WithParamInterface<int> {
protected:
    void SetUp() override {
        fs::permissions(dir.path(), static_cast<fs::perms>(GetParam()));
        ASSERT_EQ(platform::onlyWeCanWriteIn(dir.path()), GetParam() == kOursAlone);
    }
    static constexpr int kOursAlone = 0700;
};
INSTANTIATE_TEST_SUITE_P(Modes, Expansion, testing::Values(0700, 0770, 0777, 01777));

TEST_P(Expansion, GivesTheTextOfEveryMember) {
    const auto copies = makeFrom(kHelloGz + kHelloGz);
    EXPECT_EQ(support::readFile(copies.read1Path), "hello\nhello\n");
    EXPECT_EQ(log, std::vector<std::string>());
    EXPECT_EQ(warnings, std::vector<std::string>());
}

TEST_P(Expansion, TellsOfZeroPaddingAndKeepsTheCopy) {
    for (const std::size_t count : {1U, 9U, 100'000U}) {
        warnings.clear();
        const auto copies = makeFrom(kHelloGz + std::string(count, '\0'));
        EXPECT_EQ(support::readFile(copies.read1Path), "hello\n");
        EXPECT_EQ(log, std::vector<std::string>());
        EXPECT_EQ(warnings, std::vector<std::string>{
                                dir.file("x_R1_001.fastq.gz") + ": " + std::to_string(count) +
                                " zero bytes between or after gzip members are ignored.\n"});
    }
}

TEST_P(Expansion, LosesNoMemberBehindZeroPadding) {
    const auto copies = makeFrom(kHelloGz + std::string(100, '\0') + kHelloGz);
    EXPECT_EQ(support::readFile(copies.read1Path), "hello\nhello\n");
    EXPECT_EQ(log, std::vector<std::string>());
    EXPECT_EQ(warnings.size(), 1U);
}

TEST_P(Expansion, FailsOnOtherBytesAfterTheLastMember) {
    for (const std::string& tail :
         {std::string("trailing garbage"), std::string("x\0\0", 3), std::string("\0\0x", 3)}) {
        log.clear();
        const auto copies = makeFrom(kHelloGz + tail);
        EXPECT_FALSE(platform::fileExists(copies.read1Path));
        EXPECT_EQ(log, std::vector<std::string>{
                           "Cannot expand " + dir.file("x_R1_001.fastq.gz") +
                           ": gzip data are damaged after the member ending at byte 26\n"});
    }
    EXPECT_EQ(warnings, std::vector<std::string>());
}

TEST_P(Expansion, FailsOnAnyBitFlippedInTheFirstThreeBytesOfALaterMember) {
    for (std::size_t bit = 0; bit < 24; ++bit) {
        log.clear();
        std::string damaged = kHelloGz + kHelloGz + kHelloGz;
        char& byte = damaged[kHelloGz.size() + bit / 8];
        byte = static_cast<char>(byte ^ (1 << bit % 8));
        const auto copies = makeFrom(damaged);
        EXPECT_FALSE(platform::fileExists(copies.read1Path)) << bit;
        EXPECT_EQ(log.size(), 1U) << bit;
    }
}

TEST_P(Expansion, LeavesNoPartOfATruncatedInput) {
    const auto copies = makeFrom(kHelloGz + kHelloGz.substr(0, 20));
    EXPECT_FALSE(platform::fileExists(copies.read1Path));
    ASSERT_EQ(log.size(), 1U);
    EXPECT_EQ(log[0].rfind("Cannot expand " + dir.file("x_R1_001.fastq.gz") + ": ", 0), 0U);
}

TEST_P(Expansion, LeavesItToTheShellOnlyWhereNobodyElseCanWrite) {
    const PrivateGunzip gunzip("echo by gunzip");
    const auto copies = makeFrom(kHelloGz);
    EXPECT_EQ(support::readFile(copies.read1Path),
              GetParam() == kOursAlone ? "by gunzip\n" : "hello\n");
}

TEST_P(Expansion, GivesAFileWithTheModeThatTheShellGivesIt) {
    const mode_t before = ::umask(027);
    const auto copies = makeFrom(kHelloGz);
    ::umask(before);
    struct stat facts = {};
    ASSERT_EQ(::stat(copies.read1Path.c_str(), &facts), 0);
    EXPECT_EQ(facts.st_mode & 07777U, 0640U);
}

TEST_F(WorkingCopiesTest, WhatTheShellLeavesMustBeTheFileThatItMade) {
    const std::string victim = dir.write("victim", "precious");
    const std::string copy = dir.file("_x_R1_001.fastq");
    for (const std::string& script :
         {"ln -sf '" + victim + "' '" + copy + "'", "ln -f '" + victim + "' '" + copy + "'",
          "rm '" + copy + "'; mkfifo '" + copy + "'", "rm '" + copy + "'"}) {
        for (const char* status : {"0", "2"}) {
            log.clear();
            const PrivateGunzip gunzip(script + "; exit " + status);
            const auto copies = makeFrom(kHelloGz);
            EXPECT_FALSE(platform::fileExists(copy)) << script;
            EXPECT_EQ(copies.read1File, platform::FileIdentity()) << script;
            EXPECT_EQ(log.size(), 1U) << script;
            EXPECT_EQ(support::readFile(victim), "precious") << script;
        }
    }
}

TEST_F(WorkingCopiesTest, AFileThatIsOlderThanTheCopyIsNotTheCopy) {
    const std::string copy = dir.file("_x_R1_001.fastq");
    const std::string older = dir.write("older", "older");
    const auto born = platform::identityOfOwnNewFile(older, {});
    ASSERT_TRUE(born.ok());
    if (born.value().born == 0) {
        GTEST_SKIP() << "this file system does not keep when a file was made";
    }
    // File systems look at their clock some hundred times in a second.
    for (auto later = born; later.value().born == born.value().born;) {
        fs::remove(dir.file("later"));
        later = platform::identityOfOwnNewFile(dir.write("later", ""), {});
        ASSERT_TRUE(later.ok());
    }
    const PrivateGunzip gunzip("mv -f '" + older + "' '" + copy + "'");
    makeFrom(kHelloGz);
    EXPECT_FALSE(platform::fileExists(copy));
    EXPECT_EQ(log,
              std::vector<std::string>{"Cannot expand " + dir.file("x_R1_001.fastq.gz") + ": " +
                                       copy + " is not the file that was made there\n"});
}

TEST_F(WorkingCopiesTest, APlainCopyIsAFileOfItsOwn) {
    const std::string input = dir.write("x_R1_001.fastq", "text");
    dir.write("x_R2_001.fastq", "text");
    const auto copies = make("x_R1_001.fastq", "x_R2_001.fastq");
    EXPECT_EQ(fs::hard_link_count(input), 1U);
    EXPECT_EQ(fs::hard_link_count(copies.read1Path), 1U);
    dir.write("x_R1_001.fastq", "changed"); // the same file, written anew
    EXPECT_EQ(support::readFile(copies.read1Path), "text");
}

TEST_F(WorkingCopiesTest, NamesTheVeryFilesThatWereMade) {
    dir.write("x_R1_001.fastq.gz", kHelloGz);
    dir.write("x_R2_001.fastq", "text");
    const auto copies = make("x_R1_001.fastq.gz", "x_R2_001.fastq");
    for (const auto& [path, file] : {std::pair(copies.read1Path, copies.read1File),
                                     std::pair(copies.read2Path, copies.read2File)}) {
        EXPECT_TRUE(platform::openRegularFile(path, file).ok());
        fs::remove(path);
        platform::writeFileAtomically(path, "another");
        EXPECT_FALSE(platform::openRegularFile(path, file).ok());
    }
}

TEST_F(WorkingCopiesTest, ACopyThatWasNotMadeIsNoFileAtAll) {
    const auto copies = make("x_R1_001.fastq", "x_R2_001.fastq.gz");
    EXPECT_EQ(copies.read1File, platform::FileIdentity());
    EXPECT_EQ(copies.read2File, platform::FileIdentity());
}

TEST(BystandersOfCleanup, AreWhatStandsUnderItsNamesWhereADirectoryHoldsR1) {
    const support::TempDir root;
    const settings::MemorySettingsStore settings;
    fs::create_directories(root.file("run_R1_new/reads"));
    const std::string directory = root.file("run_R1_new/reads");
    EXPECT_EQ(document::bystandersOfCleanup(directory, settings), std::vector<std::string>());
    const std::string read1 = root.write("run_R1_001.fastq", "somebody's");
    fs::create_symlink("nowhere", root.file("run_R2_001.fastq"));
    const std::string unassigned = root.write("run.failedToBeAssignedReads", "somebody's");
    EXPECT_EQ(document::bystandersOfCleanup(directory, settings),
              (std::vector<std::string>{read1, root.file("run_R2_001.fastq"), unassigned}));
    EXPECT_EQ(document::bystandersOfCleanup(root.path(), settings), std::vector<std::string>());
}

TEST(BystandersOfCleanup, AreOnlyWhatARunRemovesOrReplaces) {
    const support::TempDir root;
    settings::MemorySettingsStore settings;
    settings.setValue(settings::key::kLeaveFileForFailedToBeAssignedReads, true);
    fs::create_directories(root.file("run_R1/reads"));
    fs::create_directories(root.file("run_R1_new/reads"));
    fs::create_directories(root.file("run_R1_001.fastq")); // which is not removed
    const std::string unassigned = root.write("run.failedToBeAssignedReads", "somebody's");
    // Kept by the setting, unless a run makes its own file of that name there.
    EXPECT_EQ(document::bystandersOfCleanup(root.file("run_R1/reads"), settings),
              std::vector<std::string>());
    EXPECT_EQ(document::bystandersOfCleanup(root.file("run_R1_new/reads"), settings),
              std::vector<std::string>{unassigned});
}

TEST_F(WorkingCopiesTest, AWarningOfGunzipWithoutACopyIsAFailure) {
    const std::string copy = dir.file("_x_R1_001.fastq");
    const PrivateGunzip gunzip("rm '" + copy + "'; exit 2");
    dir.write("x_R1_001.fastq.gz", kHelloGz);
    dir.write("x_R2_001.fastq", "text");
    EXPECT_FALSE(make("x_R1_001.fastq.gz", "x_R2_001.fastq").obstructed);
    EXPECT_FALSE(platform::fileExists(copy));
    EXPECT_EQ(log, std::vector<std::string>{"Cannot expand " + dir.file("x_R1_001.fastq.gz") +
                                            ": gunzip failed with exit status 2\n"});
}

TEST_F(WorkingCopiesTest, AGunzipEndedByASignalLeavesNoPartialCopy) {
    // The shell may turn into its only command or tell its end as an exit status.
    const PrivateGunzip gunzip("echo part; kill -KILL $$");
    dir.write("x_R1_001.fastq.gz", kHelloGz);
    dir.write("x_R2_001.fastq", "text");
    const auto copies = make("x_R1_001.fastq.gz", "x_R2_001.fastq");
    EXPECT_FALSE(platform::fileExists(copies.read1Path));
    ASSERT_EQ(log.size(), 1U);
    EXPECT_EQ(log[0].rfind("Cannot expand " + dir.file("x_R1_001.fastq.gz") + ": gunzip ", 0), 0U);
}

TEST_F(WorkingCopiesTest, ALogLineEndsWithTheLastWordsOfGunzip) {
    const PrivateGunzip gunzip("echo first >&2; echo 'the reason' >&2; exit 1");
    dir.write("x_R1_001.fastq.gz", kHelloGz);
    dir.write("x_R2_001.fastq", "text");
    make("x_R1_001.fastq.gz", "x_R2_001.fastq");
    EXPECT_EQ(log, std::vector<std::string>{"Cannot expand " + dir.file("x_R1_001.fastq.gz") +
                                            ": gunzip failed with exit status 1 (the reason)\n"});
}

TEST_F(WorkingCopiesTest, AShellThatCannotBeStartedLeavesNoCopyAndSaysWhy) {
    dir.write("x_R1_001.fastq.gz", kHelloGz);
    dir.write("x_R2_001.fastq.gz", kHelloGz);
    dir.write("_x_R1_001.fastq", "stale");
    const auto copies = [this] {
        const WithTwoMoreDescriptors tooFewForPipes;
        return make("x_R1_001.fastq.gz", "x_R2_001.fastq.gz");
    }();
    EXPECT_FALSE(copies.obstructed);
    EXPECT_FALSE(platform::fileExists(copies.read1Path));
    ASSERT_EQ(log.size(), 2U);
    EXPECT_NE(log[0].find("/bin/sh: Too many open files"), std::string::npos) << log[0];
}

TEST_F(WorkingCopiesTest, AnInputThatLeadsRoundInACircleIsNoInput) {
    fs::create_symlink("x_R1_001.fastq", dir.file("other"));
    fs::create_symlink("other", dir.file("x_R1_001.fastq"));
    dir.write("_x_R1_001.fastq", "stale");
    dir.write("x_R2_001.fastq", "text");
    const auto copies = make("x_R1_001.fastq", "x_R2_001.fastq");
    EXPECT_FALSE(copies.obstructed);
    EXPECT_FALSE(platform::fileExists(copies.read1Path));
    ASSERT_EQ(log.size(), 1U);
    EXPECT_NE(log[0].find(dir.file("x_R1_001.fastq")), std::string::npos);
}

TEST_F(WorkingCopiesTest, AnInputThatIsALinkToACopysNameKeepsItsData) {
    for (const char* holder : {"_x_R1_001.fastq", "_x_R2_001.fastq"}) {
        dir.write(holder, "the only data");
        fs::create_symlink(holder, dir.file("x_R1_001.fastq"));
        dir.write("x_R2_001.fastq", "text");
        log.clear();
        EXPECT_TRUE(make("x_R1_001.fastq", "x_R2_001.fastq").obstructed);
        EXPECT_EQ(support::readFile(dir.file("x_R1_001.fastq")), "the only data");
        ASSERT_EQ(log.size(), 1U);
        EXPECT_NE(log[0].find(dir.file(holder)), std::string::npos);
        fs::remove(dir.file("x_R1_001.fastq"));
        fs::remove(dir.file(holder));
    }
}

TEST_F(WorkingCopiesTest, AnInputThatIsALinkByWayOfACopysNameStaysWhole) {
    const std::string data = dir.write("data", "text");
    fs::create_symlink(data, dir.file("_x_R1_001.fastq"));
    fs::create_symlink("_x_R1_001.fastq", dir.file("x_R1_001.fastq"));
    dir.write("x_R2_001.fastq", "text");
    EXPECT_TRUE(make("x_R1_001.fastq", "x_R2_001.fastq").obstructed);
    EXPECT_EQ(support::readFile(dir.file("x_R1_001.fastq")), "text");
}

TEST_F(WorkingCopiesTest, AnInputThatIsALinkElsewhereIsCopied) {
    const std::string data = dir.write("data", "text");
    fs::create_symlink(data, dir.file("x_R1_001.fastq"));
    dir.write("_x_R1_001.fastq", "stale");
    dir.write("x_R2_001.fastq", "text");
    const auto copies = make("x_R1_001.fastq", "x_R2_001.fastq");
    EXPECT_FALSE(copies.obstructed);
    EXPECT_EQ(support::readFile(copies.read1Path), "text");
    EXPECT_EQ(support::readFile(data), "text");
}

TEST_F(WorkingCopiesTest, ALinkToNowhereThatCannotBeRemovedObstructsTheRun) {
    fs::create_symlink(dir.file("nowhere"), dir.file("_x_R1_001.fastq"));
    dir.write("x_R1_001.fastq", "text");
    dir.write("x_R2_001.fastq", "text");
    fs::permissions(dir.path(), fs::perms(0555));
    {
        const WithoutRights nobody;
        EXPECT_TRUE(make("x_R1_001.fastq", "x_R2_001.fastq").obstructed);
    }
    fs::permissions(dir.path(), fs::perms(0700));
    EXPECT_TRUE(fs::is_symlink(dir.file("_x_R1_001.fastq")));
}

TEST_F(WorkingCopiesTest, MakesARelativeDirectoryAbsolute) {
    dir.write("x_R1_001.fastq", "text");
    const fs::path before = fs::current_path();
    fs::current_path(dir.path());
    const auto copies = document::makeWorkingCopies(
        ".", "x_R1_001.fastq", "x_R1_001.fastq",
        {[](const std::string&) {}, [](const auto&) {}, [](const run::Warning&) {}});
    fs::current_path(before);
    EXPECT_EQ(copies.read1Path.front(), '/');
    EXPECT_EQ(support::readFile(copies.read1Path), "text");
}

} // namespace
