// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include "platform/files.h"

#include <cstdlib>
#include <filesystem>
#include <system_error>

namespace platform {
namespace {

/// Where the last component's extension begins, its dot included; npos when there is none.
std::size_t extensionDot(const std::string& path) {
    const std::size_t slash = path.rfind('/');
    const std::size_t first = slash == std::string::npos ? 0 : slash + 1;
    const std::size_t dot = path.rfind('.');
    // A dot that begins a name makes it a hidden one; a dot that ends it has nothing behind it.
    const bool separates = dot != std::string::npos && dot > first && dot + 1 < path.size();
    return separates ? dot : std::string::npos;
}

} // namespace

std::string lastPathComponent(const std::string& path) {
    const std::size_t last = path.find_last_not_of('/');
    if (last == std::string::npos) {
        return {};
    }
    const std::size_t slash = path.rfind('/', last);
    const std::size_t first = slash == std::string::npos ? 0 : slash + 1;
    return path.substr(first, last + 1 - first);
}

std::string directoryOf(const std::string& path) {
    const std::size_t slash = path.rfind('/');
    if (slash == std::string::npos) {
        return ".";
    }
    return slash == 0 ? "/" : path.substr(0, slash);
}

std::string pathExtension(const std::string& name) {
    const std::size_t dot = extensionDot(name);
    return dot == std::string::npos ? std::string() : name.substr(dot + 1);
}

std::string withoutPathExtension(const std::string& name) {
    return name.substr(0, extensionDot(name));
}

std::string absolutePath(const std::string& path) {
    if (path.empty() || path.front() == '/') {
        return path;
    }
    std::error_code failure;
    std::string here = std::filesystem::current_path(failure).string();
    if (failure) {
        // The current directory is gone: the relative path then fails where it is opened.
        return path;
    }
    if (path == "." || path == "./") {
        return here;
    }
    return (here == "/" ? here : here + "/") + (path.rfind("./", 0) == 0 ? path.substr(2) : path);
}

std::vector<std::string> splitAt(std::string_view text, std::string_view separator) {
    std::vector<std::string> pieces;
    std::size_t begin = 0;
    while (!separator.empty()) {
        const std::size_t end = text.find(separator, begin);
        if (end == std::string_view::npos) {
            break;
        }
        pieces.emplace_back(text.substr(begin, end - begin));
        begin = end + separator.size();
    }
    pieces.emplace_back(text.substr(begin));
    return pieces;
}

} // namespace platform
