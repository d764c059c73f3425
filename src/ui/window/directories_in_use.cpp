// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include "ui/window/directories_in_use.h"

#include <utility>

#include "ui/window/document_files.h"

namespace ui {

DirectoriesInUse::Use::Use(std::shared_ptr<std::set<std::string>> directories,
                           std::string directory)
    : m_directories(std::move(directories)), m_directory(std::move(directory)) {
    m_directories->insert(m_directory);
}

std::unique_ptr<DirectoriesInUse::Use> DirectoriesInUse::use(const std::string& directory) {
    std::string resolved = withoutLinks(directory);
    if (m_directories->count(resolved) > 0) {
        return nullptr;
    }
    return std::unique_ptr<Use>(new Use(m_directories, std::move(resolved)));
}

} // namespace ui
