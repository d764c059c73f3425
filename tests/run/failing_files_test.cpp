// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
// Whole runs on files that cannot be read to their end or written.
#include <atomic>
#include <csignal>
#include <filesystem>
#include <stdexcept>
#include <utility>

#include <gtest/gtest.h>
#include <sys/resource.h>

#include "run/match_read_pairs.h"
#include "support/gzip.h"

namespace run {
namespace {

using support::gzipMember;
using support::storedGzipMember;

/// While it lives, no file of this process grows beyond `bytes`: writing fails with EFBIG.
class FileSizeLimit {
public:
    explicit FileSizeLimit(rlim_t bytes) : m_handler(std::signal(SIGXFSZ, SIG_IGN)) {
        if (::getrlimit(RLIMIT_FSIZE, &m_before) != 0) {
            throw std::runtime_error("cannot ask for the limit of file sizes");
        }
        set({bytes, m_before.rlim_max});
    }
    ~FileSizeLimit() {
        ::setrlimit(RLIMIT_FSIZE, &m_before);
        std::signal(SIGXFSZ, m_handler);
    }
    FileSizeLimit(const FileSizeLimit&) = delete;
    FileSizeLimit& operator=(const FileSizeLimit&) = delete;

private:
    static void set(const rlimit& limit) {
        if (::setrlimit(RLIMIT_FSIZE, &limit) != 0) {
            throw std::runtime_error("cannot limit file sizes");
        }
    }

    rlimit m_before{};
    void (*m_handler)(int);
};

class FailingFiles : public MatchReadPairs {
protected:
    /// Runs on files already written, where none may grow beyond `bytes`.
    bool runWithin(rlim_t bytes, int pairs) {
        const std::string read1 = directory.write("r1", records(pairs, "TTTT"));
        const std::string read2 = directory.write("r2", records(pairs, "AAA"));
        const FileSizeLimit limit(bytes);
        return run(read1, read2);
    }
    std::string writeError() const {
        return "error Cannot write " + *failedReads + ": File too large.\n";
    }
};

TEST_F(FailingFiles, FailTheRunWhenTheLastUnassignedPairsCannotBeWritten) {
    ASSERT_TRUE(runWithin(9, 1));
    EXPECT_FALSE(runWithin(8, 1));
    EXPECT_EQ(display.shown.back(), writeError());
    EXPECT_EQ(counters.totalNumberOfReads, 1);
    EXPECT_EQ(counters.readsMapped, 0);
}

TEST_F(FailingFiles, StopTheRunWhenUnassignedPairsCannotBeWritten) {
    // Eight batches of unassigned pairs are more than the file buffers.
    EXPECT_FALSE(runWithin(1000, 20000));
    EXPECT_EQ(display.shown.back(), writeError());
    EXPECT_EQ(counters.totalNumberOfReads, 8000);
}

TEST_F(FailingFiles, NameTheFileAndTheReasonOnceWhenTheSystemCannotRead) {
    // Opens like any file, and fails with EIO when its unmapped first page is read.
    const std::string broken = "/proc/self/mem";
    const std::string expected = "error Cannot read " + broken + ": Input/output error.\n";
    const std::string whole = directory.write("r", records(3, "A"));
    EXPECT_FALSE(run(broken, whole));
    EXPECT_EQ(display.shown.back(), expected);
    EXPECT_FALSE(run(whole, broken));
    EXPECT_EQ(display.shown.back(), expected);
}

/// The lines of a record are then missing as well, but the damage is what has to be told.
TEST_F(FailingFiles, TellOfTheDamageWhereverGzipDataAreCut) {
    const std::string text = records(4, "TACGTGGCC");
    const std::string bytes = gzipMember(text);
    const std::string whole = directory.write("whole.gz", bytes);
    for (std::size_t length = 0; length < bytes.size(); ++length) {
        SCOPED_TRACE("cut at " + std::to_string(length));
        const std::string cut = directory.write("cut.gz", bytes.substr(0, length));
        const std::string reason =
            length < 2 ? "" : "gzip data end before the member is complete (at byte ";
        const std::string expected = "error Cannot read " + cut + ": " + reason;
        EXPECT_FALSE(run(cut, whole));
        EXPECT_EQ(display.shown.back().rfind(expected, 0), 0u) << display.shown.back();
        EXPECT_FALSE(run(whole, cut));
        EXPECT_EQ(display.shown.back().rfind(expected, 0), 0u) << display.shown.back();
    }
}

/// Stored text keeps its form when a byte of it is damaged, so the reads show it first.
TEST_F(FailingFiles, TellOfDamageRatherThanOfTheReadsThatItSpoiled) {
    // More than a block of text: the checksum lies beyond the block that holds the damage.
    std::string bytes = storedGzipMember(records(40000, "TACGT"));
    const std::string whole = directory.write("whole.gz", bytes);
    ASSERT_TRUE(run(whole, whole));
    bytes[bytes.find("@1\n") + 1] = '7';
    const std::string damaged = directory.write("damaged.gz", bytes);
    const std::string expected = "error Cannot read " + damaged +
                                 ": damaged gzip data: the checksum differs (at byte " +
                                 std::to_string(bytes.size()) + ").\n";
    EXPECT_FALSE(run(damaged, whole));
    EXPECT_EQ(display.shown.back(), expected);
    EXPECT_FALSE(run(whole, damaged));
    EXPECT_EQ(display.shown.back(), expected);
}

TEST_F(FailingFiles, TellOfDamageBehindAnEmptyFirstLine) {
    std::string bytes = gzipMember("\n") + gzipMember(records(3, "A"));
    const std::string read2 = directory.write("r2", records(3, "A"));
    ASSERT_TRUE(run(directory.write("sound.gz", bytes), read2));
    bytes[bytes.size() - 8] ^= 1;
    const std::string damaged = directory.write("damaged.gz", bytes);
    EXPECT_FALSE(run(damaged, read2));
    EXPECT_EQ(display.shown.back(), "error Cannot read " + damaged +
                                        ": damaged gzip data: the checksum differs (at byte " +
                                        std::to_string(bytes.size()) + ").\n");
}

TEST_F(FailingFiles, TellOfDamageInTheSurplusOfEitherFile) {
    std::string bytes = gzipMember(records(2, "A")) + gzipMember(records(5000, "A"));
    const std::string shorter = directory.write("shorter", records(2, "A"));
    const std::string sound = directory.write("sound.gz", bytes);
    ASSERT_TRUE(run(sound, shorter));
    ASSERT_TRUE(run(shorter, sound));
    bytes[bytes.size() - 8] ^= 1;
    const std::string damaged = directory.write("damaged.gz", bytes);
    const std::string expected = "error Cannot read " + damaged +
                                 ": damaged gzip data: the checksum differs (at byte " +
                                 std::to_string(bytes.size()) + ").\n";
    EXPECT_FALSE(run(damaged, shorter));
    EXPECT_EQ(display.shown.back(), expected);
    EXPECT_FALSE(run(shorter, damaged));
    EXPECT_EQ(display.shown.back(), expected);
}

/// Another worker may have been there in file 1 already, or not.
TEST_F(FailingFiles, TellOfDamageInFile1EvenIfThatInFile2IsMetFirst) {
    // A batch is longer than a piece, so the end of file 1's first member is not met by chance.
    const std::string bases(200, 'A');
    // The second member's header is damaged: the text before it ends with a whole record.
    std::string bytes2 = gzipMember(records(1500, bases));
    const std::size_t flags = bytes2.size() + 3;
    bytes2 += gzipMember("@1500\n");
    bytes2[flags] = '\xff';
    std::string bytes1 = gzipMember(records(2500, bases));
    bytes1[bytes1.size() - 8] ^= 1;
    const std::string read1 = directory.write("r1.gz", bytes1 + gzipMember("@2500\n"));
    const std::string read2 = directory.write("r2.gz", bytes2);
    for (const std::size_t threads : {1u, 8u}) {
        EXPECT_FALSE(run(read1, read2, threads));
        EXPECT_EQ(display.shown.back(), "error Cannot read " + read1 +
                                            ": damaged gzip data: the checksum differs (at byte " +
                                            std::to_string(bytes1.size()) + ").\n");
        EXPECT_EQ(counters.totalNumberOfReads, 1000);
    }
}

/// Shortens a file as soon as a batch was matched.
class ShorteningDisplay : public Display {
public:
    ShorteningDisplay(std::string path, std::size_t size) : m_path(std::move(path)), m_size(size) {}
    void showText(RunField field, const std::string& text) override {
        Display::showText(field, text);
        // The first is shown before any file is opened.
        if (field == RunField::totalNumberOfReads && ++m_totals == 2) {
            std::filesystem::resize_file(m_path, m_size);
        }
    }

private:
    std::string m_path;
    std::size_t m_size;
    std::atomic<int> m_totals{0};
};

TEST_F(FailingFiles, EndAtTheirNewEndWhenTheyShrinkWhileTheyAreRead) {
    const std::string text = records(60000, "TACGT");
    const std::string read2 = directory.write("r2", text);
    const std::size_t record = text.find("@40000\n");
    for (const std::size_t threads : {1u, 2u, 8u}) {
        const std::string read1 = directory.write("r1", text);
        ShorteningDisplay shortening(read1, record + 9); // inside the sequence
        platform::WorkerPool workers(threads);
        const platform::Status finished =
            matchReadPairs({read1, read2, reads::ReadsEncoding::plain, failedReads}, domains,
                           counters, shortening, progress, workers);
        ASSERT_FALSE(finished);
        EXPECT_EQ(finished.error().message, read1 + " or " + read1 + " are trimcated/\n");
        EXPECT_EQ(counters.totalNumberOfReads, 40000);
    }
}

TEST_F(FailingFiles, AreNotWhatSurplusLinesAreHoweverMany) {
    std::string surplus;
    for (int line = 0; line < 2'000'000; ++line) {
        surplus += "x\n";
    }
    ASSERT_TRUE(runTexts(records(3, "TACGT") + surplus, records(3, "A")));
    EXPECT_EQ(counters.totalNumberOfReads, 3);
    EXPECT_EQ(counters.readsMapped, 3);
    EXPECT_EQ(progress.bytesTaken, progress.bytesTotal);
    // Not once for each of the lines.
    EXPECT_LT(display.shown.size(), 100u);
}

} // namespace
} // namespace run
