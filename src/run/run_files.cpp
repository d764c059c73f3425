// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
//
// Opening a run's files, a patient's lanes as one source for each read. The file of failed reads is
// made anew, so it must not take the place of an input, nor of a link that leads to one:
// openFiles() refuses that. Tested by pair_matching_test.cpp.
#include "run/run_files.h"

#include <utility>

#include <sys/stat.h>

#include "platform/file_identity.h"
#include "platform/program_end.h"
#include "reads/concatenated_reads.h"

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
    for (const auto& inputs : {read1PathsOf(reads), read2PathsOf(reads)}) {
        for (const std::string& input : inputs) {
            if (wouldReplace(path, input)) {
                return platform::Error{"It would replace the input " + input};
            }
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

using OpenedReads = platform::Result<std::unique_ptr<reads::ReadSource>>;

/// The files one after the other. `first` is the file that must stand under the first path.
OpenedReads openOneAfterTheOther(const std::vector<std::string>& paths,
                                 reads::ReadsEncoding encoding,
                                 const std::optional<platform::FileIdentity>& first) {
    std::vector<std::unique_ptr<reads::ReadSource>> parts;
    for (const std::string& path : paths) {
        auto part = parts.empty() ? reads::openReads(path, encoding, first)
                                  : reads::openReads(path, encoding);
        if (!part) {
            return part.error();
        }
        parts.push_back(std::move(part).value());
    }
    if (parts.size() == 1) {
        return std::move(parts.front());
    }
    return std::unique_ptr<reads::ReadSource>(
        std::make_unique<reads::ConcatenatedReads>(std::move(parts)));
}

} // namespace

std::vector<std::string> read1PathsOf(const PairedReads& reads) {
    std::vector<std::string> paths = {reads.read1Path};
    for (const LaneFiles& lane : reads.furtherLanes) {
        paths.push_back(lane.read1Path);
    }
    return paths;
}

std::vector<std::string> read2PathsOf(const PairedReads& reads) {
    std::vector<std::string> paths = {reads.read2Path};
    for (const LaneFiles& lane : reads.furtherLanes) {
        paths.push_back(lane.read2Path);
    }
    return paths;
}

OpenedReads openRead1(const PairedReads& reads) {
    return openOneAfterTheOther(read1PathsOf(reads), reads.encoding, reads.read1File);
}

OpenedReads openRead2(const PairedReads& reads) {
    return openOneAfterTheOther(read2PathsOf(reads), reads.encoding, reads.read2File);
}

std::string failedReadsPathFor(const std::string& read1Path) {
    return platform::splitAt(read1Path, "_R1_").front() + ".failedToBeAssignedReads";
}

platform::Result<RunFiles> openFiles(const PairedReads& reads) {
    RunFiles files;
    const std::string why1 = takeOrTellWhyNot(openRead1(reads), files.read1);
    const std::string why2 = takeOrTellWhyNot(openRead2(reads), files.read2);
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
