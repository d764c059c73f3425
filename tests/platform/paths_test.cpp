// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include "platform/files.h"

#include <filesystem>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using testing::ElementsAre;

TEST(LastPathComponent, IsWhatFollowsTheLastSlash) {
    EXPECT_EQ(platform::lastPathComponent("/a/b"), "b");
    EXPECT_EQ(platform::lastPathComponent("b"), "b");
    EXPECT_EQ(platform::lastPathComponent("/b"), "b");
    EXPECT_EQ(platform::lastPathComponent(""), "");
}

TEST(LastPathComponent, IsTheOneBeforeSlashesAtTheEnd) {
    EXPECT_EQ(platform::lastPathComponent("a/"), "a");
    EXPECT_EQ(platform::lastPathComponent("/a/b/"), "b");
    EXPECT_EQ(platform::lastPathComponent("/a/b//"), "b");
    EXPECT_EQ(platform::lastPathComponent("/"), "");
}

TEST(DirectoryOf, IsWhatPrecedesTheLastSlash) {
    EXPECT_EQ(platform::directoryOf("/a/b"), "/a");
    EXPECT_EQ(platform::directoryOf("a/b/c"), "a/b");
    EXPECT_EQ(platform::directoryOf("/b"), "/");
    EXPECT_EQ(platform::directoryOf("b"), ".");
    EXPECT_EQ(platform::directoryOf(""), ".");
}

TEST(PathExtension, FollowsTheLastDotOfTheLastComponent) {
    EXPECT_EQ(platform::pathExtension("x.fastq.gz"), "gz");
    EXPECT_EQ(platform::pathExtension("/run.1/x.fastq"), "fastq");
    EXPECT_EQ(platform::pathExtension("/run.1/x"), "");
    EXPECT_EQ(platform::pathExtension("x"), "");
    EXPECT_EQ(platform::pathExtension(".hidden"), "");
    EXPECT_EQ(platform::pathExtension("/run/.hidden"), "");
    EXPECT_EQ(platform::pathExtension(".hidden.gz"), "gz");
    EXPECT_EQ(platform::pathExtension("x."), "");
    EXPECT_EQ(platform::pathExtension(""), "");
}

TEST(WithoutPathExtension, KeepsANameThatHasNone) {
    EXPECT_EQ(platform::withoutPathExtension("x.fastq.gz"), "x.fastq");
    EXPECT_EQ(platform::withoutPathExtension("/run.1/x.gz"), "/run.1/x");
    EXPECT_EQ(platform::withoutPathExtension("/run.1/x"), "/run.1/x");
    EXPECT_EQ(platform::withoutPathExtension(".hidden"), ".hidden");
    EXPECT_EQ(platform::withoutPathExtension("x."), "x.");
    EXPECT_EQ(platform::withoutPathExtension(""), "");
}

TEST(AbsolutePath, BeginsAtTheCurrentDirectory) {
    const std::string here = std::filesystem::current_path().string();
    EXPECT_EQ(platform::absolutePath("a/b"), here + "/a/b");
    EXPECT_EQ(platform::absolutePath("./a"), here + "/a");
    EXPECT_EQ(platform::absolutePath("../a"), here + "/../a");
    EXPECT_EQ(platform::absolutePath("."), here);
    EXPECT_EQ(platform::absolutePath("./"), here);
}

TEST(AbsolutePath, KeepsAnAbsoluteOrEmptyPath) {
    EXPECT_EQ(platform::absolutePath("/a/../b"), "/a/../b");
    EXPECT_EQ(platform::absolutePath(""), "");
}

TEST(SplitAt, GivesOnePieceMoreThanThereAreSeparators) {
    EXPECT_THAT(platform::splitAt("a_R1_b_R1_c", "_R1_"), ElementsAre("a", "b", "c"));
    EXPECT_THAT(platform::splitAt("_R1", "_R1"), ElementsAre("", ""));
    EXPECT_THAT(platform::splitAt("abc", "_R1"), ElementsAre("abc"));
    EXPECT_THAT(platform::splitAt("", "_"), ElementsAre(""));
    EXPECT_THAT(platform::splitAt("___", "__"), ElementsAre("", "_"));
    EXPECT_THAT(platform::splitAt("abc", ""), ElementsAre("abc"));
}

} // namespace
