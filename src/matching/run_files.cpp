// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include "matching/run_files.h"

#include <utility>

#include <sys/stat.h>

#include "platform/end_put_off.h"

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

platform::Result<platform::FreshFile> createFailedReads(const PairedReads& reads) {
    const std::string& path = *reads.failedReadsPath;
    for (const std::string& input : {reads.read1Path, reads.read2Path}) {
        if (wouldReplace(path, input)) {
            return platform::Error{"It would replace the input " + input};
        }
    }
    const platform::EndPutOff untilNoted;
    auto file = platform::FreshFile::create(path);
    if (file && reads.unfinished != nullptr) {
        reads.unfinished->add(path);
    }
    return file;
}

/// Takes what was opened, or keeps the reason why not, which follows a line of the error log.
template <class Opened, class File>
void takeOrKeepReason(platform::Result<Opened> opened, File& file,
                      std::vector<std::string>& reasons) {
    if (opened) {
        file = std::move(opened).value();
    } else {
        reasons.push_back("  " + opened.error().message + ".\n");
    }
}

} // namespace

std::optional<OpeningFailure> openFiles(const PairedReads& reads, RunFiles& files) {
    OpeningFailure failure;
    takeOrKeepReason(openReads(reads.read1Path, reads.encoding), files.read1, failure.reasons);
    takeOrKeepReason(openReads(reads.read2Path, reads.encoding), files.read2, failure.reasons);
    if (reads.failedReadsPath) {
        takeOrKeepReason(createFailedReads(reads), files.failedReads, failure.reasons);
    }
    if (failure.reasons.empty()) {
        return std::nullopt;
    }
    if (reads.failedReadsPath && !files.failedReads) {
        failure.line = "Cannot open1 " + *reads.failedReadsPath + ".\n";
    } else if (!files.read1) {
        failure.line = "Cannot open3 " + reads.read1Path + ".\n";
    } else {
        failure.line = "Cannot open4 " + reads.read2Path + ".\n";
    }
    return failure;
}

} // namespace matching
