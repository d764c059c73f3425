// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <vector>

#include "reads/read_pair_batch.h"

namespace support {

/// A read pair as in its files: read 2 is not reverse-complemented.
struct PairTexts {
    std::string read1;
    std::string read2;
    std::string quality1;
    std::string quality2;
};

/// The pairs as a batch, as if read from files. A text is what stands before its first NUL, and is
/// shorter than matching::kLineLimit.
inline reads::ReadPairBatch batchOf(const std::vector<PairTexts>& pairs) {
    const auto add = [](reads::RecordText& text, const std::string& sequence,
                        const std::string& quality) {
        for (const char* line : {"@X", sequence.c_str(), "+", quality.c_str()}) {
            text.addLine(line);
        }
    };
    reads::ReadPairBatch batch;
    for (const PairTexts& pair : pairs) {
        add(batch.text1(), pair.read1, pair.quality1);
        add(batch.text2(), pair.read2, pair.quality2);
        batch.completePairs(1);
    }
    return batch;
}

} // namespace support
