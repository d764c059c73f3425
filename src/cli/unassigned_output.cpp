// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include "cli/unassigned_output.h"

#include <array>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <string_view>
#include <system_error>
#include <utility>

#include <unistd.h>

#include "cli/outputs.h"
#include "platform/files.h"

namespace cli {
namespace {

using platform::Error;
using platform::Status;

constexpr const char* kOption = "--unassigned";
constexpr std::size_t kPieceSize = 65536;

/// A stream gets its text from the directory for temporary files; a file is made beside its place,
/// so that it can be moved there in one step.
std::string temporaryPattern(const std::string& target) {
    if (!isStreamed(target)) {
        return resolvedOutputPath(target) + ".XXXXXX";
    }
    std::error_code failure;
    const auto directory = std::filesystem::temp_directory_path(failure);
    return (failure ? std::string("/tmp") : directory.string()) + "/vexta-unassigned.XXXXXX";
}

Status copyFile(const std::string& path, const TextSink& sink) {
    std::ifstream file(path, std::ios::binary);
    std::array<char, kPieceSize> piece{};
    while (file) {
        file.read(piece.data(), piece.size());
        const auto count = static_cast<std::size_t>(file.gcount());
        Status status = sink(std::string_view(piece.data(), count));
        if (!status) {
            return status;
        }
    }
    return file.eof() ? Status() : Status(Error{"cannot read " + path});
}

} // namespace

UnassignedOutput::UnassignedOutput(std::string target, std::string temporaryPath)
    : m_target(std::move(target)), m_temporaryPath(std::move(temporaryPath)) {}

UnassignedOutput::UnassignedOutput(UnassignedOutput&& other) noexcept
    : m_target(std::move(other.m_target)),
      m_temporaryPath(std::exchange(other.m_temporaryPath, {})) {}

UnassignedOutput::~UnassignedOutput() {
    discard();
}

platform::Result<UnassignedOutput> UnassignedOutput::create(const std::string& target) {
    std::string path = temporaryPattern(target);
    const int descriptor = mkstemp(path.data());
    if (descriptor < 0) {
        return Error{std::string(kOption) + " " + target + ": cannot make " + path + ": " +
                     std::strerror(errno)};
    }
    close(descriptor);
    return UnassignedOutput(target, path);
}

Status UnassignedOutput::deliver(std::ostream& out) {
    if (isStreamed(m_target)) {
        const auto write = [this](const TextSink& sink) { return copyFile(m_temporaryPath, sink); };
        return writeStreamed({kOption, m_target, write}, out);
    }
    const std::string target = resolvedOutputPath(m_target);
    if (std::rename(m_temporaryPath.c_str(), target.c_str()) != 0) {
        return Error{std::string(kOption) + ": cannot write " + target + ": " +
                     std::strerror(errno)};
    }
    m_temporaryPath.clear();
    return {};
}

void UnassignedOutput::discard() const noexcept {
    if (!m_temporaryPath.empty()) {
        platform::removeSilently(m_temporaryPath);
    }
}

} // namespace cli
