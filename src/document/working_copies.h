// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "document/document_window.h"
#include "run/main_routine.h"
#include "settings/settings_store.h"

namespace document {

/// The shell command that expands a compressed input to its working copy: directories and names
/// stand between double quotes, with the characters that a shell would expand there escaped.
std::string expansionCommand(const std::string& directory, const std::string& name);

/// Path of the working copy: "_" and the name, without the extension "gz", in the same directory.
std::string workingCopyPath(const std::string& directory, const std::string& name);

/// Who hears how the making of working copies goes. Called on the thread that makes them.
struct PreparationReports {
    /// One finished line for the error log.
    std::function<void(const std::string&)> log;
    /// A copy is begun; nothing stands under its name any more.
    std::function<void(const Preparation&)> begins;
    /// What does not mean a failure.
    std::function<void(const run::Warning&)> warn;
};

/// Makes the working copies of a pair, read 1 first. Gives their paths in any case: after a failure
/// the run cannot open them, or refuses what obstructs them, and says so again.
///
/// First it removes whatever stands under a copy's name, unless an input is a link that leads
/// there: then it makes nothing. A copy that could not be made gives one line to `reports.log` that
/// names the file; its remains are removed. `directory` is made absolute. Blocks while files are
/// copied.
///
/// expansionCommand() expands a compressed input where nobody but us and root can write in the
/// directory. Elsewhere somebody could put a link under the copy's name just before the shell opens
/// it, and have another file of ours overwritten: there our own decoder writes to a file that it
/// made itself. Either way the text is whole. Zero bytes may follow the last gzip member, and give
/// one warning to `reports.warn`; anything else is a failure.
run::WorkingCopies makeWorkingCopies(const std::string& directory, const std::string& file1,
                                     const std::string& file2, const PreparationReports& reports);

/// The files that a run with working copies in `directory` would remove or replace although they
/// are not its own, as far as they exist. There are such files only where a directory's name holds
/// "_R1": the run takes the first "_R1" of the path for that of the file's name.
std::vector<std::string> bystandersOfCleanup(const std::string& directory,
                                             const settings::SettingsStore& settings);

/// One line that names them and says how to keep them. REQUIRES: there are some.
std::string bystandersWarning(const std::vector<std::string>& files);

} // namespace document
