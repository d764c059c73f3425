// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <string>

#include "simulator/fragments.h"
#include "simulator/random_bits.h"

namespace simulator {

/// The bases and qualities of a read pair, as they stand in the two files.
struct ReadPair {
    std::string read1;
    std::string read2;
    std::string quality1;
    std::string quality2;
    /// No base-call error lies in a core that the pair must show, so that it is to be counted.
    bool intact = false;
};

/// Makes read pairs, one after the other, from one seed. Read 1 begins at the fragment's first base
/// and reads the entry's own strand; read 2 is the reverse complement from its last base on.
///
/// Qualities are binned as sequencers bin them. They fall towards a read's end only, so that the
/// quality gate at the start of a read never decides whether a pair is counted.
class PairMaker {
public:
    PairMaker(const Chemistry& chemistry, std::uint64_t seed);

    /// Fills `pair` from one fragment of the molecule.
    void make(const Molecule& molecule, ReadPair& pair);
    /// Fills `pair` from a fragment of random bases.
    void makeBackground(ReadPair& pair);
    /// A number for a header, 0 to `bound` - 1.
    std::uint64_t below(std::uint64_t bound) { return m_random.below(bound); }

private:
    /// Both reads with their errors, read 2 still on the fragment's strand.
    void readBothEnds(ReadPair& pair);
    /// Substitutes bases at the error rate.
    void addErrors(std::string& bases);
    /// Qualities of one read.
    void fillQuality(std::string& quality);

    Chemistry m_chemistry;
    RandomBits m_random;
    /// The error rate in 2^-32.
    std::uint64_t m_errorThreshold;
    std::string m_fragment;
};

} // namespace simulator
