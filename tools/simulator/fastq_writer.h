// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "platform/result.h"

namespace simulator {

/// Writes one FASTQ file, plain or as a single .gz member without a time stamp, so that the same
/// reads give the same bytes whenever they are made.
class FastqWriter {
public:
    /// Replaces a file of that name.
    static platform::Result<FastqWriter> create(const std::string& path, bool gzip);
    FastqWriter(FastqWriter&&) noexcept;
    FastqWriter& operator=(FastqWriter&&) noexcept;
    ~FastqWriter();

    /// Buffered. A failure is reported by close().
    void writeRecord(std::string_view header, std::string_view bases, std::string_view quality);
    platform::Status close();

private:
    struct State;
    explicit FastqWriter(std::unique_ptr<State> state);
    std::unique_ptr<State> m_state;
};

} // namespace simulator
