// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
//
// A result without the record of its run cannot be traced, and a record beside other results
// misleads. So both are on the disk before either gets its name, and the names follow each other in
// a moment that no ending program cuts in two. The record comes first: if its place is taken, by a
// folder for example, the document stays as it was. Tested by result_files_test.cpp.
#include "ui/window/result_files.h"

#include <utility>
#include <vector>

#include "platform/files.h"
#include "platform/program_end.h"
#include "report/run_record.h"

namespace ui {
namespace {

using platform::AtomicFile;
using platform::Status;

Status forEach(std::vector<AtomicFile>& files, Status (AtomicFile::*step)()) {
    for (AtomicFile& file : files) {
        if (Status done = (file.*step)(); !done) {
            return done;
        }
    }
    return {};
}

Status add(std::vector<AtomicFile>& files, const std::string& path, const std::string& bytes) {
    auto file = AtomicFile::create(path);
    if (!file) {
        return file.error();
    }
    if (Status written = file.value().write(bytes); !written) {
        return written;
    }
    files.push_back(std::move(file).value());
    return {};
}

} // namespace

Status writeResultFiles(const std::string& path, const ResultFiles& files) {
    std::vector<AtomicFile> written;
    if (!files.record.empty()) {
        if (Status added = add(written, report::recordPathOf(path), files.record); !added) {
            return added;
        }
    }
    if (Status added = add(written, path, files.document); !added) {
        return added;
    }
    if (Status flushed = forEach(written, &AtomicFile::flush); !flushed) {
        return flushed;
    }
    {
        const platform::EndPutOff untilBothAreInPlace;
        if (Status inPlace = forEach(written, &AtomicFile::commitUnflushed); !inPlace) {
            return inPlace;
        }
    }
    return forEach(written, &AtomicFile::flushName);
}

} // namespace ui
