// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include "platform/file_identity.h"

#include <filesystem>

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include "platform/files.h"
#include "support/temp_dir.h"

namespace {

namespace fs = std::filesystem;
using platform::FileIdentity;

FileIdentity identityOfWritten(const std::string& path) {
    auto file = platform::FreshFile::create(path);
    EXPECT_TRUE(file.ok());
    return file.value().identity().value();
}

TEST(FileIdentity, StaysWithTheFileWhateverItHoldsAndIsCalled) {
    const support::TempDir dir;
    const FileIdentity made = identityOfWritten(dir.file("a"));
    dir.write("a", "longer");
    fs::rename(dir.file("a"), dir.file("b"));
    EXPECT_TRUE(platform::openRegularFile(dir.file("b"), made).ok());
    EXPECT_EQ(platform::identityOfOwnNewFile(dir.file("b"), made).value(), made);
}

TEST(FileIdentity, IsKnownOfAnAtomicFileBeforeItStandsInItsPlace) {
    const support::TempDir dir;
    auto file = platform::AtomicFile::create(dir.file("a"));
    const FileIdentity made = file.value().identity().value();
    ASSERT_TRUE(file.value().commitUnflushed().ok());
    EXPECT_TRUE(platform::openRegularFile(dir.file("a"), made).ok());
    FileIdentity copied;
    ASSERT_TRUE(platform::copyFileAtomically(dir.file("a"), dir.file("b"), &copied).ok());
    EXPECT_TRUE(platform::openRegularFile(dir.file("b"), copied).ok());
    EXPECT_FALSE(platform::openRegularFile(dir.file("a"), copied).ok());
}

TEST(FileIdentity, IsAnotherOnesForAFileThatTookItsPlace) {
    const support::TempDir dir;
    const FileIdentity made = identityOfWritten(dir.file("a"));
    dir.write("b", "");
    fs::rename(dir.file("b"), dir.file("a"));
    const auto opened = platform::openRegularFile(dir.file("a"), made);
    ASSERT_FALSE(opened.ok());
    EXPECT_EQ(opened.error().message, dir.file("a") + " is not the file that was made there");
    EXPECT_FALSE(platform::openRegularFile(dir.file("a"), FileIdentity()).ok());
}

TEST(FileIdentity, WhatTheFileSystemDoesNotTellIsNoDifference) {
    const FileIdentity known = {1, 2, 3, 4};
    EXPECT_EQ(known, (FileIdentity{1, 0, 3, 4}));
    EXPECT_EQ((FileIdentity{1, 2, 3, 0}), known);
    EXPECT_NE(known, (FileIdentity{1, 2, 3, 5}));
    EXPECT_NE(known, (FileIdentity{1, 5, 3, 4}));
    EXPECT_NE(known, (FileIdentity{5, 2, 3, 4}));
    EXPECT_NE(known, FileIdentity());
}

TEST(OwnNewFile, IsARegularFileOfOursWithOneName) {
    const support::TempDir dir;
    const std::string file = dir.write("file", "");
    EXPECT_TRUE(platform::identityOfOwnNewFile(file, {}).ok());
    fs::create_symlink(file, dir.file("link"));
    EXPECT_FALSE(platform::identityOfOwnNewFile(dir.file("link"), {}).ok());
    ASSERT_EQ(::mkfifo(dir.file("fifo").c_str(), 0600), 0);
    EXPECT_FALSE(platform::identityOfOwnNewFile(dir.file("fifo"), {}).ok());
    EXPECT_FALSE(platform::identityOfOwnNewFile(dir.path(), {}).ok());
    EXPECT_FALSE(platform::identityOfOwnNewFile(dir.file("missing"), {}).ok());
    fs::create_hard_link(file, dir.file("second"));
    EXPECT_FALSE(platform::identityOfOwnNewFile(file, {}).ok());
}

TEST(OwnNewFile, BelongsToThisUser) {
    if (::geteuid() != 0) {
        GTEST_SKIP() << "only root can give a file away";
    }
    const support::TempDir dir;
    const std::string file = dir.write("file", "");
    ASSERT_EQ(::chown(file.c_str(), 65534, 65534), 0);
    EXPECT_FALSE(platform::identityOfOwnNewFile(file, {}).ok());
}

TEST(OwnNewFile, IsNotOlderThanAnEarlierOne) {
    const support::TempDir dir;
    const std::string file = dir.write("file", "");
    FileIdentity other = platform::identityOfOwnNewFile(file, {}).value();
    if (other.born == 0) {
        GTEST_SKIP() << "this file system does not keep when a file was made";
    }
    EXPECT_TRUE(platform::identityOfOwnNewFile(file, other).ok());
    other.born += 1;
    EXPECT_FALSE(platform::identityOfOwnNewFile(file, other).ok());
}

} // namespace
