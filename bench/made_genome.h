// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <algorithm>
#include <string>

#include "simulator/random_bits.h"

namespace bench {

/// Random bases with what makes human DNA harder to search and easier to compress than even ones:
/// two bases in five are G or C, CG is rare, one tenth are diverged copies of one repeat with their
/// poly-A tails, and short tandem repeats stand between.
class MadeGenome {
public:
    MadeGenome(std::size_t length, std::uint64_t seed) : m_random(seed) {
        m_bases.reserve(length + kLongestPart);
        addUniqueBases(kRepeatBases);
        const std::string repeat = m_bases;
        while (m_bases.size() < length) {
            addUniqueBases(1000 + m_random.below(2000));
            addDivergedCopy(repeat);
            addUniqueBases(200 + m_random.below(500));
            addTandemRepeat();
        }
        m_bases.resize(length);
    }

    const std::string& bases() const { return m_bases; }

private:
    static constexpr std::size_t kRepeatBases = 300;
    static constexpr std::size_t kLongestPart = 5000;

    char drawBase() {
        const std::uint64_t draw = m_random.below(1000);
        return draw < 295 ? 'A' : draw < 590 ? 'T' : draw < 795 ? 'C' : 'G';
    }

    void addUniqueBases(std::size_t count) {
        for (std::size_t i = 0; i < count; ++i) {
            char base = drawBase();
            if (base == 'G' && !m_bases.empty() && m_bases.back() == 'C' &&
                m_random.below(4) != 0) {
                base = 'A';
            }
            m_bases += base;
        }
    }

    void addDivergedCopy(const std::string& repeat) {
        for (const char base : repeat) {
            m_bases += m_random.below(8) == 0 ? drawBase() : base;
        }
        m_bases.append(10 + m_random.below(20), 'A');
    }

    void addTandemRepeat() {
        std::string unit(1 + m_random.below(4), 'A');
        std::generate(unit.begin(), unit.end(), [this] { return drawBase(); });
        for (std::uint64_t copies = 10 + m_random.below(20); copies > 0; --copies) {
            m_bases += unit;
        }
    }

    simulator::RandomBits m_random;
    std::string m_bases;
};

} // namespace bench
