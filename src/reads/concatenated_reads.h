// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <memory>
#include <vector>

#include "reads/read_source.h"

namespace reads {

/// Several sources as one, read one after the other: the lanes of a sample. The text is that of the
/// files put together by "cat": a last line without a line end goes on in the next file.
///
/// It fails where one of them fails, and reads nothing behind that. Sizes, positions and members
/// are sums.
class ConcatenatedReads final : public ReadSource {
public:
    /// REQUIRES: there is at least one part.
    explicit ConcatenatedReads(std::vector<std::unique_ptr<ReadSource>> parts);

    std::uint64_t fileSize() const noexcept override;
    std::uint64_t fileBytesTaken() const noexcept override;
    std::uint64_t gzipMembers() const noexcept override;
    platform::Status verifyRest() override;
    std::size_t partCount() const noexcept override { return m_parts.size(); }
    const ReadSource& part(std::size_t index) const noexcept override { return *m_parts[index]; }

private:
    bool nextBlock() override;
    std::size_t readPastBlock(char* to, std::size_t size) override;
    bool goOnWithNextPart();

    std::vector<std::unique_ptr<ReadSource>> m_parts;
    std::size_t m_current = 0;
};

} // namespace reads
