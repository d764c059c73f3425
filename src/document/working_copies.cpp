// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include "document/working_copies.h"

#include "platform/child_process.h"
#include "platform/files.h"
#include "platform/result.h"

namespace document {

namespace {

constexpr int kGzipWarning = 2;

platform::Status expand(const std::string& directory, const std::string& name,
                        const std::string& copy,
                        const std::function<void(const std::string&)>& log) {
    const std::string input = directory + "/" + name;
    const auto exit = platform::runShellCommand(expansionCommand(directory, name));
    if (!exit) {
        return exit.error();
    }
    if (exit.value().signal != 0) {
        return platform::Error{"Cannot expand " + input + ": gunzip was ended by signal " +
                               std::to_string(exit.value().signal)};
    }
    const int code = exit.value().exitCode;
    if (code == kGzipWarning && platform::fileExists(copy)) {
        log("Expanding " + input +
            " gave a warning: what follows its last gzip member was ignored.\n");
        return {};
    }
    if (code != 0) {
        return platform::Error{"Cannot expand " + input + ": gunzip failed with exit status " +
                               std::to_string(code)};
    }
    return {};
}

platform::Status makeCopy(const std::string& directory, const std::string& name,
                          const std::string& copy,
                          const std::function<void(const std::string&)>& log) {
    const std::string input = directory + "/" + name;
    // First, whatever becomes of the input: a copy that an earlier run left would pass for this
    // one.
    if (const auto removed = platform::unlinkIfThere(copy); !removed) {
        return removed;
    }
    if (const auto size = platform::regularFileSize(input); !size) {
        return size.error();
    }
    if (platform::pathExtension(name) != "gz") {
        return platform::copyFileAtomically(input, copy);
    }
    const platform::Status expanded = expand(directory, name, copy, log);
    if (!expanded) {
        // A part of the text would pass for the whole of it.
        platform::removeSilently(copy);
    }
    return expanded;
}

/// Makes the copy or logs why not; false when something else still stands under its name.
bool makeCopyOrLog(const std::string& directory, const std::string& name, const std::string& copy,
                   const std::function<void(const std::string&)>& log) {
    const platform::Status made = makeCopy(directory, name, copy, log);
    if (made) {
        return true;
    }
    log(made.error().message + "\n");
    return !platform::fileExists(copy);
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
                                     const std::string& file2,
                                     const std::function<void(const std::string&)>& log) {
    const std::string absolute = platform::absolutePath(directory);
    run::WorkingCopies copies;
    copies.read1Path = workingCopyPath(absolute, file1);
    copies.read2Path = workingCopyPath(absolute, file2);
    const bool clear1 = makeCopyOrLog(absolute, file1, copies.read1Path, log);
    const bool clear2 = makeCopyOrLog(absolute, file2, copies.read2Path, log);
    copies.obstructed = !clear1 || !clear2;
    return copies;
}

} // namespace document
