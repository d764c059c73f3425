// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>
#include <system_error>

namespace support {

/// A directory of a test's own, removed with all it holds when the test ends.
class TempDir {
public:
    TempDir() {
        std::string name = (std::filesystem::temp_directory_path() / "vexta-test-XXXXXX").string();
        if (::mkdtemp(name.data()) == nullptr) {
            throw std::runtime_error("cannot make a temporary directory like " + name);
        }
        m_path = name;
    }
    ~TempDir() {
        std::error_code ignored;
        std::filesystem::remove_all(m_path, ignored);
    }
    TempDir(const TempDir&) = delete;
    TempDir& operator=(const TempDir&) = delete;

    const std::string& path() const noexcept { return m_path; }

    /// The full path of a name in the directory; nothing is made.
    std::string file(const std::string& name) const { return m_path + "/" + name; }

    /// Writes a file and returns its full path.
    std::string write(const std::string& name, const std::string& bytes) const {
        std::ofstream out(file(name), std::ios::binary);
        out << bytes;
        out.close();
        if (!out) {
            throw std::runtime_error("cannot write " + file(name));
        }
        return file(name);
    }

private:
    std::string m_path;
};

/// The whole content of a file. Throws when it cannot be opened.
inline std::string readFile(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    if (!in) {
        throw std::runtime_error("cannot open " + path);
    }
    return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

} // namespace support
