// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
// A file may have many paths: relative ones, links, either file of its pair. A document is
// therefore known by one key, the resolved path of the result document or of the read-1 file. Only
// the directory of a pair is resolved, since its file names are data: the pairing rule reads them.
// A file is looked up once, key and mate together, and whoever opens it is given what was found: on
// a slow server each look takes its time. A key costs a look at every directory on its path. The
// directories in use are compared in the same way. Tested by document_files_test.cpp;
// app_delegate_test.cpp covers the directories in use.
#include "ui/window/document_files.h"

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <optional>
#include <system_error>
#include <utility>
#include <vector>

#include "document/result_document.h"
#include "platform/files.h"

namespace ui {

namespace {

namespace fs = std::filesystem;

std::string lowerCase(std::string text) {
    std::transform(text.begin(), text.end(), text.begin(),
                   [](unsigned char byte) { return static_cast<char>(std::tolower(byte)); });
    return text;
}

/// Resolves the directory alone: to the rule that pairs files, a link is a name like any other.
std::string keyOfPair(const document::ReadPairFiles& files) {
    return files.paired ? withoutLinks(files.directory) + "/" + *files.file1 : std::string();
}

bool isHidden(const std::string& name) {
    return name.empty() || name.front() == '_' || name.front() == '.';
}

std::optional<std::string> firstOfBatch(const std::vector<std::string>& names) {
    for (const document::PatientSlot& slot : document::planBatch(names)) {
        if (!slot.file1.empty() && !slot.file2.empty()) {
            return slot.file1;
        }
    }
    return std::nullopt;
}

/// The first pair by name, for directories whose pairs no batch takes.
std::optional<std::string> firstByName(const std::string& directory,
                                       std::vector<std::string> names) {
    std::sort(names.begin(), names.end());
    const auto found = std::find_if(names.begin(), names.end(), [&](const std::string& name) {
        const auto files = document::findMate(directory + "/" + name);
        return !isHidden(name) && files.paired && files.file1 == name;
    });
    return found == names.end() ? std::nullopt : std::optional(*found);
}

} // namespace

std::string withoutLinks(const std::string& path) {
    std::error_code failure;
    const fs::path resolved = fs::weakly_canonical(path, failure);
    return failure ? platform::absolutePath(path) : resolved.string();
}

std::string documentTypeOf(const std::string& path) {
    const std::string extension = lowerCase(platform::pathExtension(path));
    return std::string(extension == document::kResultDocumentExtension
                           ? document::kResultDocumentType
                           : document::kReadsDocumentType);
}

DocumentFile documentFileAt(const std::string& path) {
    DocumentFile file{platform::absolutePath(path), documentTypeOf(path), {}, {}};
    if (file.type == document::kResultDocumentType) {
        file.key = withoutLinks(path);
    } else {
        file.reads = document::findMate(file.path);
        file.key = keyOfPair(file.reads);
    }
    return file;
}

std::string fileStandingFor(const std::string& path) {
    std::error_code failure;
    const std::string directory = platform::absolutePath(path);
    const auto names = platform::namesInDirectory(directory);
    if (!fs::is_directory(path, failure) || !names) {
        return path;
    }
    auto found = firstOfBatch(names.value());
    if (!found) {
        found = firstByName(directory, names.value());
    }
    return found ? directory + "/" + *found : path;
}

// --- Directories in use

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
