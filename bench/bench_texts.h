// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <string>

#include "bench_run.h"
#include "platform/byte_stream.h"
#include "support/temp_dir.h"

namespace bench {

inline constexpr std::uint64_t kPairs = 50'000;

/// The reads that a benchmark measures on: made at its first use, removed at its end.
inline const BenchRun& data() {
    static const BenchRun run(kPairs);
    return run;
}

/// The plain text of read 1 or read 2.
inline const std::string& textOf(int read) {
    static const std::string texts[] = {support::readFile(data().plainPath(1)),
                                        support::readFile(data().plainPath(2))};
    return texts[read - 1];
}

/// A text in memory, which it does not copy, as a stream of one block.
class TextStream final : public platform::ByteStream {
public:
    explicit TextStream(const std::string& text) : m_text(text) {}

private:
    bool nextBlock() override {
        setBlock(m_text.data(), m_given ? 0 : m_text.size());
        m_given = true;
        return true;
    }
    const std::string& m_text;
    bool m_given = false;
};

} // namespace bench
