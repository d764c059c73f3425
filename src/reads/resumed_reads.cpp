// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include "reads/resumed_reads.h"

#include <utility>

namespace reads {

ResumedReads::ResumedReads(std::string givenBack, ReadSource& source)
    : m_givenBack(std::move(givenBack)), m_source(source) {}

bool ResumedReads::verifyRest() {
    if (!m_source.verifyRest()) {
        setError(m_source.error());
    }
    return !failed();
}

bool ResumedReads::nextBlock() {
    if (!m_isInSource) {
        m_isInSource = true;
        if (!m_givenBack.empty()) {
            setBlock(m_givenBack.data(), m_givenBack.size());
            return true;
        }
    }
    const std::size_t size = m_source.available();
    if (size == 0) {
        setError(m_source.error());
        return false;
    }
    setBlock(m_source.next(), size);
    m_source.skip(size);
    return true;
}

} // namespace reads
