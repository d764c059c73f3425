// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include "platform/file_identity.h"

#include <array>
#include <cstdint>
#include <filesystem>

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

#include "platform/files.h"
#include "support/temp_dir.h"

namespace {

namespace fs = std::filesystem;
using platform::FileIdentity;
using platform::onlyWeCanWriteIn;

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
    const auto copied = platform::copyFileAtomically(dir.file("a"), dir.file("b"));
    ASSERT_TRUE(copied.ok());
    EXPECT_TRUE(platform::openRegularFile(dir.file("b"), copied.value()).ok());
    EXPECT_FALSE(platform::openRegularFile(dir.file("a"), copied.value()).ok());
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

// --- Who else can write in a folder

constexpr std::uint32_t kNobody = 65534;

/// Below a temporary directory that itself is closed: "outer/inner".
class FolderRights : public testing::Test {
protected:
    void SetUp() override { fs::create_directories(inner); }
    static void setMode(const std::string& path, unsigned mode) {
        fs::permissions(path, static_cast<fs::perms>(mode));
    }
    support::TempDir dir;
    std::string outer = dir.file("outer");
    std::string inner = outer + "/inner";
};

TEST_F(FolderRights, AreOursAloneInADirectoryThatOthersMayOnlyRead) {
    for (const unsigned mode : {0700U, 0755U, 01755U, 0500U}) {
        setMode(inner, mode);
        EXPECT_TRUE(onlyWeCanWriteIn(inner)) << mode;
        EXPECT_TRUE(onlyWeCanWriteIn(inner + "/")) << mode;
        EXPECT_TRUE(onlyWeCanWriteIn(inner + "/./../inner")) << mode;
    }
}

TEST_F(FolderRights, AreSharedWhereTheGroupOrOthersMayWriteStickyOrNot) {
    for (const unsigned mode : {0770U, 0720U, 0777U, 0702U, 01777U, 01770U}) {
        setMode(inner, mode);
        EXPECT_FALSE(onlyWeCanWriteIn(inner)) << mode;
    }
}

TEST_F(FolderRights, AreSharedWhereAnAccessListLetsAnotherUserWrite) {
    struct Entry {
        std::uint16_t tag;
        std::uint16_t rights;
        std::uint32_t id;
    };
    struct List {
        std::uint32_t version = 2;
        std::array<Entry, 5> entries;
    };
    constexpr std::uint32_t kNoId = 0xffffffff;
    const auto setList = [this](std::uint16_t mask) {
        // The owner, nobody, the group, the mask, others.
        const List list{2,
                        {Entry{1, 7, kNoId}, Entry{2, 7, kNobody}, Entry{4, 5, kNoId},
                         Entry{16, mask, kNoId}, Entry{32, 5, kNoId}}};
        return ::setxattr(inner.c_str(), "system.posix_acl_access", &list, sizeof list, 0) == 0;
    };
    if (!setList(7)) {
        GTEST_SKIP() << "this file system knows no access lists";
    }
    EXPECT_FALSE(onlyWeCanWriteIn(inner));
    ASSERT_TRUE(setList(5)); // nobody's right to write is masked
    EXPECT_TRUE(onlyWeCanWriteIn(inner));
}

TEST_F(FolderRights, AreSharedBelowADirectoryWhereOthersCanRename) {
    setMode(outer, 0777);
    EXPECT_FALSE(onlyWeCanWriteIn(inner));
    setMode(outer, 01777); // there, the sticky bit keeps what is ours
    EXPECT_TRUE(onlyWeCanWriteIn(inner));
}

TEST_F(FolderRights, HoldForEveryPlaceThatALinkLeadsThrough) {
    const std::string open = dir.file("open");
    fs::create_directory(open);
    setMode(open, 0777);
    fs::create_directory_symlink("outer/inner", dir.file("link"));
    fs::create_directory_symlink(inner, open + "/link");
    fs::create_directory_symlink("open/../outer/inner", dir.file("past"));
    fs::create_directory_symlink("open/link", dir.file("through"));
    fs::create_directory_symlink("round", dir.file("round"));
    EXPECT_TRUE(onlyWeCanWriteIn(dir.file("link")));
    EXPECT_TRUE(onlyWeCanWriteIn(dir.file("past")));
    EXPECT_FALSE(onlyWeCanWriteIn(open + "/link"));
    EXPECT_FALSE(onlyWeCanWriteIn(dir.file("through")));
    EXPECT_FALSE(onlyWeCanWriteIn(dir.file("round")));
}

TEST_F(FolderRights, AreNotOursInADirectoryOfAnotherUser) {
    if (::geteuid() != 0) {
        GTEST_SKIP() << "only root can give a directory away";
    }
    ASSERT_EQ(::chown(inner.c_str(), kNobody, kNobody), 0);
    EXPECT_FALSE(onlyWeCanWriteIn(inner));
    ASSERT_EQ(::chown(inner.c_str(), 0, 0), 0);
    ASSERT_EQ(::chown(outer.c_str(), kNobody, kNobody), 0);
    EXPECT_FALSE(onlyWeCanWriteIn(inner));
    setMode(outer, 01777); // its owner may rename there all the same
    EXPECT_FALSE(onlyWeCanWriteIn(inner));
}

TEST_F(FolderRights, AreNotVouchedForWhereNothingIsKnown) {
    EXPECT_FALSE(onlyWeCanWriteIn(dir.file("missing")));
    EXPECT_FALSE(onlyWeCanWriteIn(dir.write("file", "")));
    EXPECT_FALSE(onlyWeCanWriteIn("/proc/self")); // a file system that is not on the list
}

} // namespace
