// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include "platform/files.h"

#include <filesystem>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include "support/temp_dir.h"

namespace {

namespace fs = std::filesystem;
using testing::HasSubstr;
using testing::UnorderedElementsAre;

std::string allBytes(platform::ByteStream& stream) {
    std::string bytes;
    while (const std::size_t count = stream.available()) {
        bytes.append(stream.next(), count);
        stream.skip(count);
    }
    return bytes;
}

TEST(RegularFile, IsReadToItsEndAcrossBlocks) {
    const support::TempDir directory;
    std::string bytes;
    for (int number = 0; bytes.size() < 600 * 1000; ++number) {
        bytes += std::to_string(number) + '\n';
    }
    const auto stream = platform::openRegularFile(directory.write("file", bytes));
    ASSERT_TRUE(stream.ok());
    EXPECT_TRUE(allBytes(*stream.value()) == bytes);
    EXPECT_EQ(stream.value()->get(), platform::ByteStream::kEnd);
    EXPECT_TRUE(stream.value()->status());
}

TEST(RegularFile, IsReadToAPlaceInPiecesOfAnySize) {
    const support::TempDir directory;
    std::string bytes;
    for (int i = 0; bytes.size() < 700'000; ++i) {
        bytes += std::to_string(i);
    }
    const std::string path = directory.write("file", bytes);
    for (const std::size_t pieceSize : {1000u, 65536u, 1u << 20U}) {
        const auto stream = platform::openRegularFile(path);
        ASSERT_TRUE(stream.ok());
        std::string read;
        std::string piece(pieceSize, '#');
        // The first byte leaves a block behind, of which the first pieces come.
        read.push_back(static_cast<char>(stream.value()->get()));
        while (const std::size_t size = stream.value()->read(piece.data(), piece.size())) {
            ASSERT_LE(size, piece.size());
            read.append(piece, 0, size);
        }
        EXPECT_TRUE(read == bytes) << pieceSize;
        EXPECT_TRUE(stream.value()->status());
        EXPECT_EQ(stream.value()->read(piece.data(), 0), 0u);
    }
}

TEST(RegularFile, MayBeEmpty) {
    const support::TempDir directory;
    const auto stream = platform::openRegularFile(directory.write("file", ""));
    ASSERT_TRUE(stream.ok());
    EXPECT_EQ(stream.value()->peek(), platform::ByteStream::kEnd);
    EXPECT_TRUE(stream.value()->status());
}

TEST(RegularFile, IsReadThroughALink) {
    const support::TempDir directory;
    fs::create_symlink(directory.write("file", "text"), directory.file("link"));
    const auto stream = platform::openRegularFile(directory.file("link"));
    ASSERT_TRUE(stream.ok());
    EXPECT_EQ(allBytes(*stream.value()), "text");
}

TEST(RegularFile, IsNoFifoDirectoryOrDeviceAndNeverHangs) {
    const support::TempDir directory;
    const std::string fifo = directory.file("x_S1_L001_R1_001.fastq");
    ASSERT_EQ(::mkfifo(fifo.c_str(), 0600), 0);
    for (const std::string& path : {fifo, directory.path(), std::string("/dev/zero")}) {
        const auto stream = platform::openRegularFile(path);
        ASSERT_FALSE(stream.ok()) << path;
        EXPECT_EQ(stream.error().message, path + " is not a regular file");
        EXPECT_FALSE(platform::openRegularFileDescriptor(path).ok()) << path;
        EXPECT_FALSE(platform::regularFileSize(path).ok()) << path;
    }
}

TEST(RegularFile, NamesThePathAndTheReasonWhenMissing) {
    const support::TempDir directory;
    const std::string path = directory.file("missing");
    const auto stream = platform::openRegularFile(path);
    ASSERT_FALSE(stream.ok());
    EXPECT_EQ(stream.error().message, "Cannot open " + path + ": No such file or directory");
}

TEST(RegularFile, TurnsAFailedReadIntoTheStreamsError) {
    // Opens like any file, and fails with EIO when its unmapped first page is read.
    const auto stream = platform::openRegularFile("/proc/self/mem");
    ASSERT_TRUE(stream.ok()) << stream.error().message;
    EXPECT_EQ(stream.value()->get(), platform::ByteStream::kEnd);
    EXPECT_EQ(stream.value()->status().error().message, "Input/output error");
    EXPECT_EQ(stream.value()->get(), platform::ByteStream::kEnd);
}

TEST(RegularFile, GivesItsSizeInBytes) {
    const support::TempDir directory;
    EXPECT_EQ(platform::regularFileSize(directory.write("file", "12345")).value(), 5u);
}

TEST(RegularFile, GivesADescriptorAtItsBeginning) {
    const support::TempDir directory;
    const auto descriptor = platform::openRegularFileDescriptor(directory.write("file", "a"));
    ASSERT_TRUE(descriptor.ok());
    char byte = 0;
    EXPECT_EQ(::read(descriptor.value().number(), &byte, 1), 1);
    EXPECT_EQ(byte, 'a');
}

TEST(FileExists, SeesFilesAndDirectoriesButNoDanglingLink) {
    const support::TempDir directory;
    fs::create_symlink("nowhere", directory.file("dangling"));
    EXPECT_TRUE(platform::fileExists(directory.write("file", "")));
    EXPECT_TRUE(platform::fileExists(directory.path()));
    EXPECT_FALSE(platform::fileExists(directory.file("dangling")));
    EXPECT_FALSE(platform::fileExists(directory.file("missing")));
}

TEST(NamesInDirectory, AreThoseOfOneLevel) {
    const support::TempDir directory;
    directory.write("b", "");
    directory.write(".hidden", "");
    fs::create_directory(directory.file("inner"));
    directory.write("inner/deep", "");
    const auto names = platform::namesInDirectory(directory.path());
    ASSERT_TRUE(names.ok());
    EXPECT_THAT(names.value(), UnorderedElementsAre("b", ".hidden", "inner"));
}

TEST(NamesInDirectory, FailWithPathAndReasonForAFileOrNothing) {
    const support::TempDir directory;
    const std::string file = directory.write("file", "");
    for (const std::string& path : {file, directory.file("missing")}) {
        const auto names = platform::namesInDirectory(path);
        ASSERT_FALSE(names.ok());
        EXPECT_THAT(names.error().message, HasSubstr("Cannot open directory " + path + ": "));
    }
}

TEST(UnlinkIfThere, RemovesAFileAndAcceptsAMissingOne) {
    const support::TempDir directory;
    const std::string path = directory.write("file", "");
    EXPECT_TRUE(platform::unlinkIfThere(path).ok());
    EXPECT_FALSE(platform::fileExists(path));
    EXPECT_TRUE(platform::unlinkIfThere(path).ok());
}

TEST(UnlinkIfThere, RemovesALinkAndNeverItsTarget) {
    const support::TempDir directory;
    const std::string target = directory.write("target", "kept");
    fs::create_symlink(target, directory.file("link"));
    EXPECT_TRUE(platform::unlinkIfThere(directory.file("link")).ok());
    EXPECT_FALSE(fs::is_symlink(directory.file("link")));
    EXPECT_EQ(support::readFile(target), "kept");
}

TEST(UnlinkIfThere, FailsWithAMessageOnADirectory) {
    const support::TempDir directory;
    fs::create_directory(directory.file("inner"));
    const platform::Status status = platform::unlinkIfThere(directory.file("inner"));
    ASSERT_FALSE(status.ok());
    EXPECT_EQ(status.error().message,
              "Cannot remove " + directory.file("inner") + ": Is a directory");
    EXPECT_TRUE(platform::fileExists(directory.file("inner")));
}

TEST(RemoveSilently, RemovesAFileAndSaysNothingOfTheRest) {
    const support::TempDir directory;
    const std::string path = directory.write("file", "");
    platform::removeSilently(path);
    EXPECT_FALSE(platform::fileExists(path));
    platform::removeSilently(path);
    platform::removeSilently(directory.path());
    EXPECT_TRUE(platform::fileExists(directory.path()));
}

} // namespace
