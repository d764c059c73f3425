// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include "reads/read_pair_batch.h"

namespace reads {

void ReadPairBatch::clear() noexcept {
    m_text1.clear();
    m_text2.clear();
    m_pairCount = 0;
}

} // namespace reads
