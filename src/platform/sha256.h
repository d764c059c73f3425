// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <memory>
#include <string>
#include <string_view>

namespace platform {

/// SHA-256 (FIPS 180-4) of bytes that come in pieces.
class Sha256 {
public:
    Sha256();
    ~Sha256();
    Sha256(const Sha256&) = delete;
    Sha256& operator=(const Sha256&) = delete;

    void add(std::string_view bytes);
    /// 64 lower-case hexadecimal digits. REQUIRES: called once, after the last add().
    std::string hex();

private:
    struct State;
    std::unique_ptr<State> m_state;
};

/// SHA-256 of one text, as 64 lower-case hexadecimal digits.
std::string sha256(std::string_view bytes);

} // namespace platform
