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
    if (const auto size = platform::regularFileSize(input); !size) {
        return size.error();
    }
    if (const auto removed = platform::unlinkIfThere(copy); !removed) {
        return removed;
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

std::string workingCopy(const std::string& directory, const std::string& name,
                        const std::function<void(const std::string&)>& log) {
    const std::string copy = workingCopyPath(directory, name);
    if (const platform::Status made = makeCopy(directory, name, copy, log); !made) {
        log(made.error().message + "\n");
    }
    return copy;
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
    copies.read1Path = workingCopy(absolute, file1, log);
    copies.read2Path = workingCopy(absolute, file2, log);
    return copies;
}

} // namespace document
