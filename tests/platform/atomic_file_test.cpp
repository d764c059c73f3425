// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include "platform/files.h"

#include <csignal>
#include <filesystem>

#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include "support/temp_dir.h"

namespace {

namespace fs = std::filesystem;
using platform::AtomicFile;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

std::vector<std::string> namesIn(const support::TempDir& directory) {
    return platform::namesInDirectory(directory.path()).value();
}

TEST(AtomicFile, AppearsUnderItsNameOnlyWhenCommitted) {
    const support::TempDir directory;
    const std::string path = directory.file("result");
    auto file = AtomicFile::create(path);
    ASSERT_TRUE(file.ok());
    ASSERT_TRUE(file.value().write("one ").ok());
    ASSERT_TRUE(file.value().write("two").ok());
    EXPECT_FALSE(platform::fileExists(path));
    ASSERT_TRUE(file.value().commit().ok());
    EXPECT_EQ(support::readFile(path), "one two");
    EXPECT_THAT(namesIn(directory), ElementsAre("result"));
}

TEST(AtomicFile, KeepsTheOldContentWhenNotCommitted) {
    const support::TempDir directory;
    const std::string path = directory.write("result", "old");
    {
        auto file = AtomicFile::create(path);
        ASSERT_TRUE(file.ok());
        ASSERT_TRUE(file.value().write("new").ok());
    }
    EXPECT_EQ(support::readFile(path), "old");
    EXPECT_THAT(namesIn(directory), ElementsAre("result"));
}

TEST(AtomicFile, LeavesNothingBehindWhenAnotherIsAssignedOverIt) {
    const support::TempDir directory;
    auto first = AtomicFile::create(directory.file("first"));
    auto second = AtomicFile::create(directory.file("second"));
    ASSERT_TRUE(first.ok() && second.ok());
    first.value() = std::move(second.value());
    ASSERT_TRUE(first.value().commit().ok());
    EXPECT_THAT(namesIn(directory), ElementsAre("second"));
}

TEST(AtomicFile, ShowsNothingOfItselfBeforeTheCommit) {
    const support::TempDir directory;
    const auto file = AtomicFile::create(directory.file("x_S1_L001_R1_001.fastq"));
    ASSERT_TRUE(file.ok());
    for (const std::string& name : namesIn(directory)) {
        EXPECT_EQ(name.front(), '.') << "where the file needs a name, it is a hidden one";
    }
}

TEST(AtomicFile, LeavesNothingBehindWhenItsProcessIsKilled) {
    const support::TempDir directory;
    const int unnamed = ::open(directory.path().c_str(), O_WRONLY | O_TMPFILE | O_CLOEXEC, 0600);
    if (unnamed < 0) {
        GTEST_SKIP() << "this file system knows no files without a name";
    }
    ::close(unnamed);
    const pid_t child = ::fork();
    if (child == 0) {
        auto file = AtomicFile::create(directory.file("result"));
        if (!file.ok() || !file.value().write("half").ok()) {
            ::_exit(1);
        }
        ::raise(SIGKILL);
    }
    int status = 0;
    ASSERT_EQ(::waitpid(child, &status, 0), child);
    ASSERT_TRUE(WIFSIGNALED(status)) << "the child could not write";
    EXPECT_THAT(namesIn(directory), IsEmpty());
}

TEST(AtomicFile, HasThePermissionsAskedForLessTheUmask) {
    const support::TempDir directory;
    const mode_t previous = ::umask(027);
    auto open = AtomicFile::create(directory.file("open"));
    auto secret = AtomicFile::create(directory.file("secret"), 0600);
    ::umask(previous);
    ASSERT_TRUE(open.ok() && open.value().commit().ok());
    ASSERT_TRUE(secret.ok() && secret.value().commit().ok());
    EXPECT_EQ(fs::status(directory.file("open")).permissions(), fs::perms{0640});
    EXPECT_EQ(fs::status(directory.file("secret")).permissions(), fs::perms{0600});
}

TEST(AtomicFile, ReplacesALinkAndLeavesItsTarget) {
    const support::TempDir directory;
    const std::string target = directory.write("target", "untouched");
    const std::string link = directory.file("link");
    fs::create_symlink(target, link);
    ASSERT_TRUE(platform::writeFileAtomically(link, "new").ok());
    EXPECT_FALSE(fs::is_symlink(link));
    EXPECT_EQ(support::readFile(link), "new");
    EXPECT_EQ(support::readFile(target), "untouched");
}

TEST(AtomicFile, RefusesToReplaceADirectoryOrAFifo) {
    const support::TempDir directory;
    const std::string fifo = directory.file("fifo");
    ASSERT_EQ(::mkfifo(fifo.c_str(), 0600), 0);
    for (const std::string& path : {directory.path(), fifo}) {
        const platform::Status status = platform::writeFileAtomically(path, "new");
        ASSERT_FALSE(status.ok());
        EXPECT_THAT(status.error().message, HasSubstr(path));
        EXPECT_THAT(status.error().message, HasSubstr("not a regular file"));
    }
    EXPECT_THAT(namesIn(directory), ElementsAre("fifo"));
}

TEST(AtomicFile, NamesThePathAndTheReasonWhenItCannotBeCreated) {
    const support::TempDir directory;
    const std::string path = directory.file("missing/result");
    const platform::Status status = platform::writeFileAtomically(path, "new");
    ASSERT_FALSE(status.ok());
    EXPECT_EQ(status.error().message, "Cannot create " + path + ": No such file or directory");
}

TEST(AtomicFile, FailsWhenItsDirectoryIsTakenAwayBeforeTheCommit) {
    const support::TempDir directory;
    fs::create_directory(directory.file("inner"));
    auto file = AtomicFile::create(directory.file("inner/result"));
    ASSERT_TRUE(file.ok());
    fs::remove_all(directory.file("inner"));
    const platform::Status status = file.value().commit();
    ASSERT_FALSE(status.ok());
    EXPECT_THAT(status.error().message, HasSubstr(directory.file("inner/result")));
    EXPECT_FALSE(file.value().write("more").ok());
}

TEST(AtomicFile, AcceptsANameWithoutADirectory) {
    const support::TempDir directory;
    const fs::path previous = fs::current_path();
    fs::current_path(directory.path());
    const platform::Status status = platform::writeFileAtomically("result", "here");
    fs::current_path(previous);
    ASSERT_TRUE(status.ok());
    EXPECT_EQ(support::readFile(directory.file("result")), "here");
}

} // namespace
