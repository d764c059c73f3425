// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include "document/working_copies.h"

#include <filesystem>
#include <memory>
#include <system_error>
#include <utility>

#include <sys/stat.h>

#include "platform/child_process.h"
#include "platform/files.h"
#include "platform/result.h"
#include "platform/unfinished_files.h"

namespace document {

namespace {

constexpr int kGzipWarning = 2;

/// The last line of what gunzip said, in brackets after a space; empty when it said nothing.
std::string lastWords(const std::string& standardError) {
    const std::size_t end = standardError.find_last_not_of('\n');
    if (end == std::string::npos) {
        return {};
    }
    const std::size_t before = standardError.rfind('\n', end);
    const std::size_t start = before == std::string::npos ? 0 : before + 1;
    return " (" + standardError.substr(start, end + 1 - start) + ")";
}

platform::Status expand(const std::string& directory, const std::string& name,
                        const std::string& copy,
                        const std::function<void(const std::string&)>& log) {
    const std::string input = directory + "/" + name;
    const platform::Result<platform::ChildExit> exit =
        platform::runShellCommand(expansionCommand(directory, name));
    if (!exit) {
        return exit.error();
    }
    const std::string said = lastWords(exit.value().standardError);
    if (exit.value().signal != 0) {
        return platform::Error{"Cannot expand " + input + ": gunzip was ended by signal " +
                               std::to_string(exit.value().signal) + said};
    }
    const int code = exit.value().exitCode;
    if (code == kGzipWarning && platform::fileExists(copy)) {
        log("Expanding " + input +
            " gave a warning: what follows its last gzip member was ignored" + said + ".\n");
        return {};
    }
    if (code != 0) {
        return platform::Error{"Cannot expand " + input + ": gunzip failed with exit status " +
                               std::to_string(code) + said};
    }
    return {};
}

platform::Status makeCopy(const std::string& directory, const std::string& name,
                          const std::string& copy, const PreparationReports& reports,
                          platform::UnfinishedFiles& unfinished) {
    const std::string input = directory + "/" + name;
    // First, whatever becomes of the input: a copy that an earlier run left would pass for this
    // one.
    if (auto removed = platform::unlinkIfThere(copy); !removed) {
        return removed;
    }
    if (const auto size = platform::regularFileSize(input); !size) {
        return size.error();
    }
    // Nothing stands there now that was not made for this run.
    unfinished.add(copy);
    reports.begins({name, copy});
    if (platform::pathExtension(name) != "gz") {
        return platform::copyFileAtomically(input, copy);
    }
    platform::Status expanded = expand(directory, name, copy, reports.log);
    if (!expanded) {
        // A part of the text would pass for the whole of it.
        platform::removeSilently(copy);
    }
    return expanded;
}

bool entryExists(const std::string& path) {
    struct stat facts = {};
    return ::lstat(path.c_str(), &facts) == 0;
}

/// Whether `input` is a link that leads through the very entry under `copy`'s name, which holds, or
/// leads to, the only data there are.
bool leadsThrough(const std::string& input, const std::string& copy) {
    constexpr int kMostLinks = 40; // as many as the system follows
    struct stat there = {};
    if (::lstat(copy.c_str(), &there) != 0) {
        return false;
    }
    std::filesystem::path place = input;
    for (int links = 0; links < kMostLinks; ++links) {
        struct stat entry = {};
        if (::lstat(place.c_str(), &entry) != 0) {
            return false;
        }
        if (links > 0 && entry.st_dev == there.st_dev && entry.st_ino == there.st_ino) {
            return true;
        }
        std::error_code noLink;
        const std::filesystem::path target = std::filesystem::read_symlink(place, noLink);
        if (noLink) {
            return false;
        }
        place = place.parent_path() / target;
    }
    return false;
}

/// Makes the copy or logs why not; false when something else still stands under its name.
bool makeCopyOrLog(const std::string& directory, const std::string& name, const std::string& copy,
                   const PreparationReports& reports, platform::UnfinishedFiles& unfinished) {
    platform::UnfinishedFiles one;
    const platform::Status made = makeCopy(directory, name, copy, reports, one);
    if (made) {
        unfinished.join(std::move(one));
        return true;
    }
    reports.log(made.error().message + "\n");
    return !entryExists(copy);
}

std::string expandedName(const std::string& name) {
    return platform::pathExtension(name) == "gz" ? platform::withoutPathExtension(name) : name;
}

} // namespace

std::string expansionCommand(const std::string& directory, const std::string& name) {
    const std::string dir = platform::escapedForDoubleQuotes(directory);
    return "gunzip -c \"" + dir + "/" + platform::escapedForDoubleQuotes(name) + "\" > \"" + dir +
           "/_" + platform::escapedForDoubleQuotes(expandedName(name)) + "\"";
}

std::string workingCopyPath(const std::string& directory, const std::string& name) {
    return directory + "/_" + expandedName(name);
}

run::WorkingCopies makeWorkingCopies(const std::string& directory, const std::string& file1,
                                     const std::string& file2, const PreparationReports& reports) {
    const std::string absolute = platform::absolutePath(directory);
    run::WorkingCopies copies;
    copies.read1Path = workingCopyPath(absolute, file1);
    copies.read2Path = workingCopyPath(absolute, file2);
    for (const auto& name : {file1, file2}) {
        for (const auto& copy : {copies.read1Path, copies.read2Path}) {
            if (leadsThrough(absolute + "/" + name, copy)) {
                reports.log("Cannot replace " + copy + ": the input " + absolute + "/" + name +
                            " is a link that leads there\n");
                copies.obstructed = true;
            }
        }
    }
    if (copies.obstructed) {
        return copies;
    }
    copies.unfinished = std::make_shared<platform::UnfinishedFiles>();
    platform::UnfinishedFiles& unfinished = *copies.unfinished;
    const bool clear1 = makeCopyOrLog(absolute, file1, copies.read1Path, reports, unfinished);
    const bool clear2 = makeCopyOrLog(absolute, file2, copies.read2Path, reports, unfinished);
    copies.obstructed = !clear1 || !clear2;
    return copies;
}

} // namespace document
