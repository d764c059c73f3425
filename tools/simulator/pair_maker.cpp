// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include "simulator/pair_maker.h"

#include <algorithm>
#include <string_view>

#include "catalogue/iupac.h"

namespace simulator {

namespace {

char complement(char base) {
    switch (base) {
    case 'A':
        return 'T';
    case 'C':
        return 'G';
    case 'G':
        return 'C';
    default:
        return 'A';
    }
}

bool isBase(char letter) {
    return std::string_view("ACGT").find(letter) != std::string_view::npos;
}

/// The bases that a fragment may have where its target has this code: those with which it is found.
/// Where there are none (N), any.
std::string_view choiceFor(char code) {
    const std::string_view bases = catalogue::readBasesForCoreCode(code);
    return bases.empty() ? "ACGT" : bases;
}

/// Whether the read, which begins at base `readAt` of the molecule, holds the core in full.
bool showsCore(const std::string& read, std::size_t readAt, const Molecule& molecule) {
    for (std::size_t at = molecule.coreBegin; at < molecule.coreEnd; ++at) {
        if (at < readAt || at >= readAt + read.size()) {
            return false;
        }
        const char expected = molecule.bases[at];
        const char met = read[at - readAt];
        if (met != expected && (isBase(expected) || catalogue::readBasesForCoreCode(expected).find(
                                                        met) == std::string_view::npos)) {
            return false;
        }
    }
    return true;
}

void reverseComplement(std::string& bases) {
    std::reverse(bases.begin(), bases.end());
    std::transform(bases.begin(), bases.end(), bases.begin(), complement);
}

} // namespace

PairMaker::PairMaker(const Chemistry& chemistry, std::uint64_t seed)
    : m_chemistry(chemistry), m_random(seed),
      m_errorThreshold(static_cast<std::uint64_t>(chemistry.errorRate * 4294967296.0)) {}

void PairMaker::make(const Molecule& molecule, ReadPair& pair) {
    const std::size_t jitter = m_chemistry.jitter;
    const std::size_t begin = jitter == 0 ? 0 : m_random.below(2 * jitter + 1);
    m_fragment.assign(molecule.bases, begin, m_chemistry.fragmentBases());
    if (molecule.hasCode) {
        for (char& base : m_fragment) {
            if (!isBase(base)) {
                const std::string_view choice = choiceFor(base);
                base = choice[m_random.below(choice.size())];
            }
        }
    }
    readBothEnds(pair);
    const std::size_t read2At = m_fragment.size() - m_chemistry.readLength;
    const bool read1Intact = showsCore(pair.read1, begin, molecule);
    const bool read2Intact = showsCore(pair.read2, begin + read2At, molecule);
    pair.intact = molecule.strand && (read1Intact || !needsRead1(molecule)) &&
                  (read2Intact || !needsRead2(molecule));
    reverseComplement(pair.read2);
}

void PairMaker::makeBackground(ReadPair& pair) {
    m_fragment.resize(m_chemistry.fragmentBases());
    for (char& base : m_fragment) {
        base = "ACGT"[m_random.below(4)];
    }
    readBothEnds(pair);
    pair.intact = false;
    reverseComplement(pair.read2);
}

void PairMaker::readBothEnds(ReadPair& pair) {
    const std::size_t length = m_chemistry.readLength;
    pair.read1.assign(m_fragment, 0, length);
    pair.read2.assign(m_fragment, m_fragment.size() - length, length);
    addErrors(pair.read1);
    addErrors(pair.read2);
    fillQuality(pair.quality1);
    fillQuality(pair.quality2);
}

void PairMaker::addErrors(std::string& bases) {
    if (m_errorThreshold == 0) {
        return;
    }
    std::uint64_t bits = 0;
    for (std::size_t at = 0; at < bases.size(); ++at) {
        // One draw serves two bases.
        bits = at % 2 == 0 ? m_random.next() : bits >> 32;
        if ((bits & 0xFFFFFFFFU) < m_errorThreshold) {
            constexpr std::string_view kBasesTwice = "ACGTACGT";
            bases[at] = kBasesTwice[kBasesTwice.find(bases[at]) + 1 + m_random.below(3)];
        }
    }
}

void PairMaker::fillQuality(std::string& quality) {
    const std::size_t length = m_chemistry.readLength;
    quality.assign(length, 'F');
    const std::uint64_t kind = m_random.below(8);
    if (kind != 0) {
        return;
    }
    // One read in eight fades over its last two fifths.
    const std::size_t fadeFrom = length - m_random.below(2 * length / 5 + 1);
    const std::size_t lowFrom = fadeFrom + (length - fadeFrom) / 2;
    std::fill(quality.begin() + static_cast<std::ptrdiff_t>(fadeFrom), quality.end(), ':');
    std::fill(quality.begin() + static_cast<std::ptrdiff_t>(lowFrom), quality.end(), ',');
}

} // namespace simulator
