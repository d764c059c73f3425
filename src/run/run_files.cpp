// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
//
// Opening a run's files. The file of failed reads is made anew, so it must not take the place of an
// input, nor of a link that leads to one: openFiles() refuses that. Tested by
// pair_matching_test.cpp.
#include "run/run_files.h"

#include <utility>

#include <sys/stat.h>

#include "platform/file_identity.h"
#include "platform/program_end.h"

namespace run {
namespace {

/// Whether making a file anew under `path` would remove `input`, or the link that leads to it.
bool wouldReplace(const std::string& path, const std::string& input) {
    struct stat there = {};
    struct stat entry = {};
    struct stat target = {};
    if (::lstat(path.c_str(), &there) != 0 || ::lstat(input.c_str(), &entry) != 0) {
        return false;
    }
    return platform::areOneEntry(there, entry) ||
           (::stat(input.c_str(), &target) == 0 && platform::areOneEntry(there, target));
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

/// Takes what was opened. Where that failed it gives the reason, as a line of its own that stands
/// under another one in the error log.
template <class Opened, class File>
std::string takeOrTellWhyNot(platform::Result<Opened> opened, File& file) {
    if (opened) {
        file = std::move(opened).value();
        return {};
    }
    return "  " + opened.error().message + ".\n";
}

} // namespace

std::string failedReadsPathFor(const std::string& read1Path) {
    return platform::splitAt(read1Path, "_R1_").front() + ".failedToBeAssignedReads";
}

platform::Result<RunFiles> openFiles(const PairedReads& reads) {
    RunFiles files;
    const std::string why1 = takeOrTellWhyNot(
        reads::openReads(reads.read1Path, reads.encoding, reads.read1File), files.read1);
    const std::string why2 = takeOrTellWhyNot(
        reads::openReads(reads.read2Path, reads.encoding, reads.read2File), files.read2);
    std::string whyFailedReads;
    if (reads.failedReadsPath) {
        whyFailedReads = takeOrTellWhyNot(createFailedReads(reads), files.failedReads);
    }
    std::string lines;
    const auto tell = [&lines](const std::string& why, const char* says, const std::string& path) {
        if (!why.empty()) {
            lines += (lines.empty() ? says + path + ".\n" : std::string()) + why;
        }
    };
    tell(whyFailedReads, "Cannot open1 ", reads.failedReadsPath.value_or(std::string()));
    tell(why1, "Cannot open3 ", reads.read1Path);
    tell(why2, "Cannot open4 ", reads.read2Path);
    if (!lines.empty()) {
        return platform::Error{std::move(lines)};
    }
    return files;
}

} // namespace run
