// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
// A file stands under its name only when its content is on the disk, and what says that it is saved
// says so when the name is there, too. Otherwise a power failure leaves an empty file behind.
#include "platform/files.h"

#include <filesystem>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include "support/temp_dir.h"
#include "support/watched_flushes.h"

namespace {

namespace fs = std::filesystem;
using support::WatchedFlushes;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

platform::Status moveIntoPlace(const std::string& from, const std::string& to) {
    auto file = platform::AtomicFile::ofFinished(from, to);
    return file ? file.value().commit() : platform::Status(file.error());
}

/// Saves "new text" over "old" in each way there is, and tells of every flush what the disk would
/// then hold.
class FlushedFiles : public testing::Test {
protected:
    int note(const struct stat& flushed) {
        const std::string shown = support::readFile(path);
        if (S_ISDIR(flushed.st_mode)) {
            seen.push_back("the directory, with " + shown);
            return directoryFailure;
        }
        seen.push_back(std::to_string(flushed.st_size) + " bytes, under the name " + shown);
        return fileFailure;
    }
    platform::Status moveNewText() const {
        return moveIntoPlace(directory.write("finished", "new text"), path);
    }
    platform::Status writeNewText() const {
        return platform::writeFileAtomically(path, "new text");
    }
    void expectFlushedInOrder() const {
        EXPECT_THAT(seen,
                    ElementsAre("8 bytes, under the name old", "the directory, with new text"));
    }

    const support::TempDir directory;
    const std::string path = directory.write("result", "old");
    std::vector<std::string> seen;
    int fileFailure = 0;
    int directoryFailure = 0;
    const WatchedFlushes flushes{[this](const struct stat& flushed) { return note(flushed); }};
};

TEST_F(FlushedFiles, AnAtomicFileIsOnDiskBeforeItTakesItsNameAndTheNameBeforeItIsSaved) {
    ASSERT_TRUE(writeNewText().ok());
    expectFlushedInOrder();
}

TEST_F(FlushedFiles, AFileThatIsMovedIntoPlaceLikewise) {
    ASSERT_TRUE(moveNewText().ok());
    expectFlushedInOrder();
}

TEST_F(FlushedFiles, ACopyThatCanBeMadeAgainIsNotWaitedFor) {
    ASSERT_TRUE(platform::copyFileAtomically(directory.write("input", "new text"), path).ok());
    EXPECT_EQ(support::readFile(path), "new text");
    EXPECT_THAT(seen, IsEmpty());
}

TEST_F(FlushedFiles, WhatTheDiskRefusesLeavesTheOldFileAndIsAnError) {
    fileFailure = EIO;
    const platform::Status written = writeNewText();
    ASSERT_FALSE(written.ok());
    EXPECT_EQ(written.error().message, "Cannot write " + path + ": Input/output error");
    EXPECT_THAT(platform::namesInDirectory(directory.path()).value(), ElementsAre("result"));
    EXPECT_EQ(moveNewText().error().message, written.error().message);
    EXPECT_EQ(support::readFile(path), "old");
}

TEST_F(FlushedFiles, ADirectoryThatIsNotFlushedIsAnError) {
    directoryFailure = EIO;
    for (const platform::Status& status : {writeNewText(), moveNewText()}) {
        ASSERT_FALSE(status.ok());
        EXPECT_EQ(status.error().message,
                  "Cannot flush the directory of " + path + ": Input/output error");
    }
}

TEST_F(FlushedFiles, AFileSystemThatCannotFlushDirectoriesIsNoError) {
    directoryFailure = EINVAL;
    EXPECT_TRUE(writeNewText().ok());
    EXPECT_TRUE(moveNewText().ok());
}

TEST(AFinishedFile, StaysWhereItIsWhenItCannotBeMoved) {
    const support::TempDir directory;
    const std::string from = directory.write("finished", "text");
    fs::create_directory(directory.file("taken"));
    const platform::Status moved = moveIntoPlace(from, directory.file("taken"));
    ASSERT_FALSE(moved.ok());
    EXPECT_THAT(moved.error().message, HasSubstr("Cannot replace " + directory.file("taken")));
    EXPECT_EQ(support::readFile(from), "text");
    EXPECT_FALSE(moveIntoPlace(directory.file("missing"), directory.file("x")).ok());
}

} // namespace
