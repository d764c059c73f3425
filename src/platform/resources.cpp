// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
//
// A program is run from a build tree, from an installation, or from a folder that was copied with
// it. The first directory that holds the resource counts; what lies beside the program comes before
// what was installed. Tested by resources_test.cpp.
#include "platform/resources.h"

#include <cstdlib>
#include <filesystem>
#include <system_error>
#include <vector>

#include "platform/files.h"

namespace platform {
namespace {

std::vector<std::string> resourceDirectories() {
    if (const char* chosen = std::getenv("VEXTA_RESOURCES"); chosen != nullptr && *chosen != 0) {
        // A named directory counts alone: what is missing there must not come, unnoticed, from
        // elsewhere.
        return {chosen};
    }
    std::vector<std::string> directories;
    std::error_code failure;
    const std::string program = std::filesystem::read_symlink("/proc/self/exe", failure).string();
    if (!failure) {
        const std::string beside = directoryOf(program);
        directories.push_back(beside + "/resources");
        directories.push_back(beside + "/../share/vexta");
    }
    directories.emplace_back(VEXTA_INSTALLED_RESOURCES);
    directories.emplace_back(VEXTA_SOURCE_RESOURCES);
    return directories;
}

} // namespace

std::optional<std::string> resourcePath(std::string_view name, std::string_view type) {
    std::string fileName = "/";
    fileName.append(name).append(".").append(type);
    for (const std::string& directory : resourceDirectories()) {
        std::string path = directory + fileName;
        if (fileExists(path)) {
            return path;
        }
    }
    return std::nullopt;
}

} // namespace platform
