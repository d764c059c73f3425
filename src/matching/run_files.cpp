// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include "matching/run_files.h"

#include <utility>

#include <sys/stat.h>

namespace matching {
namespace {

bool sameFile(const struct stat& a, const struct stat& b) noexcept {
    return a.st_dev == b.st_dev && a.st_ino == b.st_ino;
}

/// Whether making a file anew under `path` would remove `input`, or the link that leads to it.
bool wouldReplace(const std::string& path, const std::string& input) {
    struct stat there = {};
    struct stat entry = {};
    struct stat target = {};
    if (::lstat(path.c_str(), &there) != 0 || ::lstat(input.c_str(), &entry) != 0) {
        return false;
    }
    return sameFile(there, entry) ||
           (::stat(input.c_str(), &target) == 0 && sameFile(there, target));
}

std::unique_ptr<ReadSource> openOrTellWhyNot(const std::string& path, ReadsEncoding encoding,
                                             const std::optional<platform::FileIdentity>& expected,
                                             MatchingDisplay& display) {
    auto source = openReads(path, encoding, expected);
    if (!source) {
        // The line for the error log has no place for the reason.
        display.displayWarning(source.error().message + ".\n");
        return nullptr;
    }
    return std::move(source).value();
}

std::optional<platform::FreshFile> createFailedReads(const PairedReads& reads) {
    const std::string& path = *reads.failedReadsPath;
    if (wouldReplace(path, reads.read1Path) || wouldReplace(path, reads.read2Path)) {
        return std::nullopt;
    }
    auto file = platform::FreshFile::create(path);
    return file ? std::optional(std::move(file).value()) : std::nullopt;
}

} // namespace

std::string openFiles(const PairedReads& reads, RunFiles& files, MatchingDisplay& display) {
    files.read1 = openOrTellWhyNot(reads.read1Path, reads.encoding, reads.read1File, display);
    files.read2 = openOrTellWhyNot(reads.read2Path, reads.encoding, reads.read2File, display);
    if (reads.failedReadsPath) {
        files.failedReads = createFailedReads(reads);
        if (!files.failedReads) {
            return "Cannot open1 " + *reads.failedReadsPath + ".\n";
        }
    }
    if (!files.read1) {
        return "Cannot open3 " + reads.read1Path + ".\n";
    }
    if (!files.read2) {
        return "Cannot open4 " + reads.read2Path + ".\n";
    }
    return {};
}

} // namespace matching
