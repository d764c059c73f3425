// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include "platform/files.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include "support/temp_dir.h"

namespace {

using platform::copyFileAtomically;
using testing::ElementsAre;
using testing::HasSubstr;

TEST(CopyFile, CopiesEveryByte) {
    const support::TempDir directory;
    std::string bytes;
    while (bytes.size() < 1000 * 1000) {
        bytes.append("ACGT\r\n\0N", 8).append(std::to_string(bytes.size()));
    }
    const std::string from = directory.write("from", bytes);
    ASSERT_TRUE(copyFileAtomically(from, directory.file("to")).ok());
    EXPECT_EQ(support::readFile(directory.file("to")), bytes);
    EXPECT_EQ(support::readFile(from), bytes);
}

TEST(CopyFile, CopiesAnEmptyFile) {
    const support::TempDir directory;
    ASSERT_TRUE(copyFileAtomically(directory.write("from", ""), directory.file("to")).ok());
    EXPECT_EQ(support::readFile(directory.file("to")), "");
}

TEST(CopyFile, ReadsAndWritesWhatTheSystemDoesNotCopyByItself) {
    // The kernel says size 0 of this file and copies nothing of it, but gives its text to a read.
    const support::TempDir directory;
    ASSERT_TRUE(copyFileAtomically("/proc/self/status", directory.file("to")).ok());
    EXPECT_THAT(support::readFile(directory.file("to")), HasSubstr("Threads:"));
}

TEST(CopyFile, ReplacesAnOlderFile) {
    const support::TempDir directory;
    const std::string to = directory.write("to", "an older and longer content");
    ASSERT_TRUE(copyFileAtomically(directory.write("from", "new"), to).ok());
    EXPECT_EQ(support::readFile(to), "new");
}

TEST(CopyFile, RefusesAFifoAndADirectoryAndLeavesNothing) {
    const support::TempDir directory;
    const std::string fifo = directory.file("fifo");
    ASSERT_EQ(::mkfifo(fifo.c_str(), 0600), 0);
    for (const std::string& from : {fifo, directory.path()}) {
        const auto status = copyFileAtomically(from, directory.file("to"));
        ASSERT_FALSE(status.ok());
        EXPECT_EQ(status.error().message, from + " is not a regular file");
    }
    EXPECT_THAT(platform::namesInDirectory(directory.path()).value(), ElementsAre("fifo"));
}

TEST(CopyFile, NamesAMissingSource) {
    const support::TempDir directory;
    const std::string from = directory.file("from");
    const auto status = copyFileAtomically(from, directory.file("to"));
    ASSERT_FALSE(status.ok());
    EXPECT_EQ(status.error().message, "Cannot open " + from + ": No such file or directory");
}

} // namespace
