// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
//
// Working copies lie beside the inputs under names that anybody can guess, in a folder where others
// may be able to write. Three rules keep them from harm:
//
// - What stands under a copy's name is removed, never written through. Where an input is a link
//   that leads there, nothing is made (leadsThrough()).
// - The shell's redirection opens a name that exists. So gunzip writes only where nobody else can
//   make one; elsewhere our own decoder writes to a file that it created itself.
// - The identity of each file made goes with the copies, so the run reads those very files.
//
// gunzip and our decoder must give the same text. gunzip keeps silent about zero bytes after the
// last member and drops a member behind them; checkPadding() finds out what it left out. Copying
// costs one pass over each file, and a second one over a .gz file whose last byte is zero.
//
// Tested by working_copies_test.cpp and, against somebody who works in the same folder,
// working_copies_attack_test.cpp. docs/working-copies.md tells users of it.
#include "document/working_copies.h"

#include <algorithm>
#include <filesystem>
#include <memory>
#include <optional>
#include <system_error>
#include <utility>

#include <sys/stat.h>

#include "platform/child_process.h"
#include "platform/file_identity.h"
#include "platform/files.h"
#include "platform/program_end.h"
#include "platform/result.h"
#include "reads/read_source.h"
#include "run/pair_matching.h"

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

/// An input and its copy, by full paths.
struct CopyPaths {
    std::string input;
    std::string copy;
};

platform::Error cannotExpand(const CopyPaths& paths, const std::string& reason) {
    return {"Cannot expand " + paths.input + ": " + reason};
}

void warnOf(const reads::ReadSource& source, const CopyPaths& paths,
            const PreparationReports& reports) {
    if (const std::string warning = source.warning(); !warning.empty()) {
        reports.warn({run::Warning::Kind::padding, paths.input + ": " + warning});
    }
}

using MadeFile = platform::Result<platform::FileIdentity>;

/// Our own decoder writes the copy to a file that it makes.
MadeFile expandOurselves(const CopyPaths& paths, const PreparationReports& reports) {
    const auto source = reads::openReads(paths.input, reads::ReadsEncoding::byFileName);
    if (!source) {
        return cannotExpand(paths, source.error().message);
    }
    auto file = platform::FreshFile::create(paths.copy);
    if (!file) {
        return cannotExpand(paths, file.error().message);
    }
    MadeFile made = file.value().identity();
    reads::ReadSource& text = *source.value();
    platform::Status written;
    while (written && text.available() > 0) {
        const std::size_t size = text.available();
        written = file.value().write({text.next(), size});
        text.skip(size);
    }
    if (!text.status()) {
        return cannotExpand(paths, text.status().error().message);
    }
    if (const platform::Status closed = file.value().close(); !closed) {
        return cannotExpand(paths, closed.error().message);
    }
    warnOf(text, paths, reports);
    return made;
}

/// gunzip says nothing of zero bytes after the last member, and drops a member that stands behind
/// them. Our decoder tells of both. A file whose last byte is not zero has no such bytes; a sound
/// file may end in a zero byte, too, since the last byte of a member's length is zero below 16 MiB
/// of text.
platform::Status checkPadding(const CopyPaths& paths, const PreparationReports& reports) {
    const platform::Result<char> last = platform::lastByteOf(paths.input);
    if (!last || last.value() != '\0') {
        return last ? platform::Status() : cannotExpand(paths, last.error().message);
    }
    const auto source = reads::openReads(paths.input, reads::ReadsEncoding::byFileName);
    const platform::Status sound = source ? source.value()->verifyRest() : source.error();
    if (!sound) {
        return cannotExpand(paths, sound.error().message);
    }
    warnOf(*source.value(), paths, reports);
    return {};
}

/// The shell and gunzip write the copy. REQUIRES: nobody else can write in the directory.
MadeFile expandByCommand(const CopyPaths& paths, const std::string& command,
                         const PreparationReports& reports) {
    // The copy cannot be born before this probe, by the file system's clock.
    MadeFile earlier = platform::FileIdentity();
    if (auto probe = platform::FreshFile::create(paths.copy); probe) {
        earlier = probe.value().identity();
    } else {
        return cannotExpand(paths, probe.error().message);
    }
    if (const auto removed = platform::unlinkIfThere(paths.copy); !removed || !earlier) {
        return cannotExpand(paths, earlier ? removed.error().message : earlier.error().message);
    }
    const platform::Result<platform::ChildExit> exit = platform::runShellCommand(command);
    if (!exit) {
        return exit.error();
    }
    const std::string said = lastWords(exit.value().standardError);
    if (exit.value().signal != 0) {
        return cannotExpand(paths, "gunzip was ended by signal " +
                                       std::to_string(exit.value().signal) + said);
    }
    const MadeFile made = platform::identityOfOwnNewFile(paths.copy, earlier.value());
    const int code = exit.value().exitCode;
    if (code == kGzipWarning && made) {
        // The shell ends with the same status when it cannot make the copy, but then there is none.
        return expandOurselves(paths, reports);
    }
    if (code != 0) {
        return cannotExpand(paths, "gunzip failed with exit status " + std::to_string(code) + said);
    }
    if (!made) {
        return cannotExpand(paths, made.error().message);
    }
    const platform::Status padding = checkPadding(paths, reports);
    return padding ? made : MadeFile(padding.error());
}

MadeFile copyPlain(const CopyPaths& paths) {
    return platform::copyFileAtomically(paths.input, paths.copy);
}

MadeFile makeCopy(const std::string& directory, const std::string& name, const std::string& copy,
                  const PreparationReports& reports, platform::UnfinishedFiles& unfinished) {
    const CopyPaths paths = {directory + "/" + name, copy};
    // First, whatever becomes of the input: a copy that an earlier run left would pass for this
    // run's.
    if (auto removed = platform::unlinkIfThere(copy); !removed) {
        return removed.error();
    }
    if (const auto size = platform::regularFileSize(paths.input); !size) {
        return size.error();
    }
    // From here on, what stands there was made for this run.
    unfinished.add(copy);
    reports.begins({name, copy});
    if (platform::pathExtension(name) != "gz") {
        return copyPlain(paths);
    }
    MadeFile expanded = platform::onlyWeCanWriteIn(directory)
                            ? expandByCommand(paths, expansionCommand(directory, name), reports)
                            : expandOurselves(paths, reports);
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

bool couldBeRemoved(const std::string& path) {
    struct stat facts = {};
    return ::lstat(path.c_str(), &facts) == 0 && !S_ISDIR(facts.st_mode);
}

/// Whether `input` is a link that leads through the entry under `copy`'s name: removing that entry
/// would remove the data, or the way to them.
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
        if (links > 0 && platform::areOneEntry(entry, there)) {
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

/// Makes the copy or logs why not, and notes which file it is; false when something else still
/// stands under its name.
bool makeCopyOrLog(const std::string& directory, const std::string& name, const std::string& copy,
                   std::optional<platform::FileIdentity>& file, const PreparationReports& reports,
                   platform::UnfinishedFiles& unfinished) {
    platform::UnfinishedFiles one;
    const MadeFile made = makeCopy(directory, name, copy, reports, one);
    file = made ? made.value() : platform::FileIdentity();
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
    const bool clear1 =
        makeCopyOrLog(absolute, file1, copies.read1Path, copies.read1File, reports, unfinished);
    const bool clear2 =
        makeCopyOrLog(absolute, file2, copies.read2Path, copies.read2File, reports, unfinished);
    copies.obstructed = !clear1 || !clear2;
    return copies;
}

std::vector<std::string> bystandersOfCleanup(const std::string& directory,
                                             const settings::SettingsStore& settings) {
    const std::string inDirectory = platform::absolutePath(directory) + "/";
    if (inDirectory.find("_R1") == std::string::npos) {
        return {};
    }
    std::vector<std::string> files = run::filesOfCleanup(inDirectory, settings);
    if (inDirectory.find("_R1_") != std::string::npos) {
        // The file of unassigned pairs is made anew there.
        const std::string failedReads = run::failedReadsPathFor(inDirectory);
        if (std::find(files.begin(), files.end(), failedReads) == files.end()) {
            files.push_back(failedReads);
        }
    }
    files.erase(std::remove_if(files.begin(), files.end(),
                               [](const std::string& file) { return !couldBeRemoved(file); }),
                files.end());
    return files;
}

std::string bystandersWarning(const std::vector<std::string>& files) {
    std::string line = "A folder's name holds \"_R1\", so a run with working copies removes files "
                       "that are not its own: ";
    for (const std::string& file : files) {
        line += (&file == &files.front() ? "" : ", ") + file;
    }
    return line + ". Reading the inputs directly leaves them alone.";
}

} // namespace document
