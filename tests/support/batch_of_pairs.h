// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstring>
#include <string>
#include <vector>

#include "matching/read_pair_batch.h"

namespace support {

/// A read pair as it lies in the files: read 2 is not turned.
struct PairTexts {
    std::string read1;
    std::string read2;
    std::string quality1;
    std::string quality2;
};

/// The pairs as a batch, as if read from files. A text is what stands before its first NUL, and is
/// shorter than matching::kLineLimit.
inline matching::ReadPairBatch batchOf(const std::vector<PairTexts>& pairs) {
    using matching::ReadPairBatch;
    ReadPairBatch batch;
    const auto keep = [&](ReadPairBatch::Line line, const std::string& text) {
        std::strcpy(batch.lineBuffer(), text.c_str());
        batch.keepLine(line);
    };
    for (const PairTexts& pair : pairs) {
        keep(ReadPairBatch::kName, "@X");
        keep(ReadPairBatch::kRead1, pair.read1);
        keep(ReadPairBatch::kRead2, pair.read2);
        keep(ReadPairBatch::kQuality1, pair.quality1);
        keep(ReadPairBatch::kQuality2, pair.quality2);
        batch.completePair();
    }
    return batch;
}

} // namespace support
