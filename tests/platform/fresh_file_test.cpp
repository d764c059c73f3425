// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include "platform/files.h"

#include <csignal>
#include <filesystem>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>

#include "platform/descriptor.h"
#include "support/temp_dir.h"

namespace {

namespace fs = std::filesystem;
using platform::FreshFile;

TEST(FreshFile, HoldsWhatWasWrittenInOrder) {
    const support::TempDir directory;
    auto file = FreshFile::create(directory.file("file"));
    ASSERT_TRUE(file.ok());
    std::string expected;
    // Pieces below, around and above the size of the buffer.
    for (const std::size_t size : {1u, 65535u, 65536u, 2u, 70000u, 200000u, 3u}) {
        const std::string piece(size, static_cast<char>('a' + expected.size() % 26));
        expected += piece;
        ASSERT_TRUE(file.value().write(piece).ok());
    }
    ASSERT_TRUE(file.value().close().ok());
    EXPECT_TRUE(support::readFile(directory.file("file")) == expected);
}

TEST(FreshFile, ReplacesALinkAndLeavesItsTargetUntouched) {
    const support::TempDir directory;
    const std::string target = directory.write("target", "untouched");
    const std::string path = directory.file("link");
    fs::create_symlink(target, path);
    auto file = FreshFile::create(path);
    ASSERT_TRUE(file.ok());
    ASSERT_TRUE(file.value().write("new").ok());
    ASSERT_TRUE(file.value().close().ok());
    EXPECT_FALSE(fs::is_symlink(path));
    EXPECT_EQ(support::readFile(path), "new");
    EXPECT_EQ(support::readFile(target), "untouched");
}

TEST(FreshFile, ReplacesAFifoWithoutWaitingForAReader) {
    const support::TempDir directory;
    const std::string path = directory.file("fifo");
    ASSERT_EQ(::mkfifo(path.c_str(), 0600), 0);
    auto file = FreshFile::create(path);
    ASSERT_TRUE(file.ok());
    ASSERT_TRUE(file.value().close().ok());
    EXPECT_TRUE(fs::is_regular_file(path));
}

TEST(FreshFile, DoesNotWriteIntoAnotherNameOfTheOldFile) {
    const support::TempDir directory;
    const std::string old = directory.write("old", "kept");
    fs::create_hard_link(old, directory.file("file"));
    auto file = FreshFile::create(directory.file("file"));
    ASSERT_TRUE(file.ok());
    ASSERT_TRUE(file.value().close().ok());
    EXPECT_EQ(support::readFile(old), "kept");
    EXPECT_EQ(support::readFile(directory.file("file")), "");
}

TEST(FreshFile, CannotTakeTheNameOfADirectory) {
    const support::TempDir directory;
    const auto file = FreshFile::create(directory.path());
    ASSERT_FALSE(file.ok());
    EXPECT_EQ(file.error().message, "Cannot remove " + directory.path() + ": Is a directory");
}

TEST(FreshFile, NamesThePathAndTheReasonWhenItCannotBeCreated) {
    const support::TempDir directory;
    const std::string path = directory.file("missing/file");
    const auto file = FreshFile::create(path);
    ASSERT_FALSE(file.ok());
    EXPECT_EQ(file.error().message, "Cannot create " + path + ": No such file or directory");
}

TEST(FreshFile, WritesWhatIsBufferedWhenItGoesAway) {
    const support::TempDir directory;
    {
        auto file = FreshFile::create(directory.file("file"));
        ASSERT_TRUE(file.ok());
        ASSERT_TRUE(file.value().write("buffered").ok());
    }
    EXPECT_EQ(support::readFile(directory.file("file")), "buffered");
}

TEST(Descriptor, ReportsAFullDevice) {
    const platform::Descriptor full(::open("/dev/full", O_WRONLY | O_CLOEXEC));
    ASSERT_TRUE(full.isOpen());
    const platform::Status written = full.write("text");
    ASSERT_FALSE(written.ok());
    EXPECT_EQ(written.error().message, "No space left on device");
}

/// Lowers the size that a file of this process may reach, for one test.
class FileSizeLimit {
public:
    explicit FileSizeLimit(rlim_t bytes) {
        ::getrlimit(RLIMIT_FSIZE, &m_previous);
        m_previousHandler = std::signal(SIGXFSZ, SIG_IGN);
        const rlimit lowered = {bytes, m_previous.rlim_max};
        ::setrlimit(RLIMIT_FSIZE, &lowered);
    }
    ~FileSizeLimit() {
        ::setrlimit(RLIMIT_FSIZE, &m_previous);
        std::signal(SIGXFSZ, m_previousHandler);
    }
    FileSizeLimit(const FileSizeLimit&) = delete;
    FileSizeLimit& operator=(const FileSizeLimit&) = delete;

private:
    rlimit m_previous = {};
    void (*m_previousHandler)(int) = nullptr;
};

TEST(FreshFile, ReturnsTheFirstFailureAtEveryLaterCall) {
    const support::TempDir directory;
    const std::string path = directory.file("file");
    const FileSizeLimit limit(100 * 1000);
    auto file = FreshFile::create(path);
    ASSERT_TRUE(file.ok());
    const std::string expected = "Cannot write " + path + ": File too large";
    const platform::Status failed = file.value().write(std::string(200 * 1000, 'x'));
    ASSERT_FALSE(failed.ok());
    EXPECT_EQ(failed.error().message, expected);
    ASSERT_FALSE(file.value().write("more").ok());
    ASSERT_FALSE(file.value().close().ok());
    EXPECT_EQ(file.value().close().error().message, expected);
}

TEST(AtomicFile, KeepsTheOldContentWhenTheDiskIsFull) {
    const support::TempDir directory;
    const std::string path = directory.write("file", "old");
    {
        const FileSizeLimit limit(1000);
        const platform::Status status = platform::writeFileAtomically(path, std::string(2000, 'x'));
        ASSERT_FALSE(status.ok());
        EXPECT_EQ(status.error().message, "Cannot write " + path + ": File too large");
    }
    EXPECT_EQ(support::readFile(path), "old");
    EXPECT_EQ(platform::namesInDirectory(directory.path()).value().size(), 1u);
}

} // namespace
