// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
//
// A run writes the pairs that nothing claimed while it reads, long before anybody knows whether it
// will succeed. They go to a directory that mkdtemp() makes: only the user enters it, and nobody
// can foretell its name. It lies beside the output's place, so the last step is a rename and no
// second copy of gigabytes. A stream has no such place and gets the bytes from the directory for
// temporary files.
//
// File and directory are noted as unfinished, so a program that is ended leaves neither. Tested by
// outputs_test.cpp, analyze_program_test.cpp and, for the program's end, held_run_program_test.cpp.
#include "cli/unassigned_output.h"

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <string_view>
#include <system_error>
#include <utility>

#include <unistd.h>

#include "platform/files.h"
#include "platform/program_end.h"

namespace cli {
namespace {

using platform::Error;
using platform::Status;

constexpr const char* kOption = "--unassigned";

/// A stream gets its text from the directory for temporary files; a file is made near its place, so
/// that it can be moved there in one step.
std::string directoryPattern(const std::string& target) {
    if (!isStreamed(target)) {
        return resolvedOutputPath(target) + ".XXXXXX";
    }
    std::error_code failure;
    const auto directory = std::filesystem::temp_directory_path(failure);
    return (failure ? std::string("/tmp") : directory.string()) + "/vexta-unassigned.XXXXXX";
}

Status copyFile(const std::string& path, const TextSink& sink) {
    const auto file = platform::openRegularFile(path);
    if (!file) {
        return file.error();
    }
    platform::ByteStream& bytes = *file.value();
    while (const std::size_t size = bytes.available()) {
        Status status = sink(std::string_view(bytes.next(), size));
        if (!status) {
            return status;
        }
        bytes.skip(size);
    }
    return bytes.status() ? Status()
                          : Error{"cannot read " + path + ": " + bytes.status().error().message};
}

} // namespace

UnassignedOutput::UnassignedOutput(std::string target, std::string directory)
    : m_target(std::move(target)), m_directory(std::move(directory)),
      m_temporaryPath(m_directory + "/pairs") {
    m_unfinished.addDirectory(m_directory);
    m_unfinished.add(m_temporaryPath);
}

UnassignedOutput::~UnassignedOutput() {
    discard();
}

platform::Result<std::unique_ptr<UnassignedOutput>>
UnassignedOutput::create(const std::string& target) {
    // A directory, since the run makes the file anew and so with the rights of any other.
    std::string directory = directoryPattern(target);
    const platform::EndPutOff untilNoted;
    if (mkdtemp(directory.data()) == nullptr) {
        return Error{std::string(kOption) + " " + target + ": cannot make " + directory + ": " +
                     std::strerror(errno)};
    }
    return std::unique_ptr<UnassignedOutput>(new UnassignedOutput(target, directory));
}

Output UnassignedOutput::output() const {
    const auto write = [this](const TextSink& sink) { return copyFile(m_temporaryPath, sink); };
    return {kOption, m_target, write, m_temporaryPath};
}

void UnassignedOutput::discard() const noexcept {
    platform::removeSilently(m_temporaryPath);
    rmdir(m_directory.c_str());
}

} // namespace cli
