// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include "simulator/fragments.h"

#include <string_view>

#include "archive/nullable.h"
#include "simulator/random_bits.h"

namespace simulator {

namespace {

/// A number from a name that is the same on every machine (FNV-1a); std::hash is not.
std::uint64_t numberOf(std::string_view name) {
    std::uint64_t number = 0xCBF29CE484222325U;
    for (const char c : name) {
        number = (number ^ static_cast<unsigned char>(c)) * 0x100000001B3U;
    }
    return number;
}

std::string randomBases(RandomBits& random, std::size_t count) {
    std::string bases(count, 'N');
    for (char& base : bases) {
        base = "ACGT"[random.below(4)];
    }
    return bases;
}

/// Cuts or fills the sequence to the molecule's length around its core, which comes to its middle.
void fitAroundCore(Molecule& molecule, const std::string& seq, std::size_t coreAt,
                   std::size_t coreLength, std::size_t length, std::uint64_t seed) {
    RandomBits random(seed);
    const std::string left = randomBases(random, length);
    const std::string right = randomBases(random, length);
    const std::size_t before = (length - coreLength) / 2;
    const std::string padded = left + seq + right;
    molecule.bases = padded.substr(left.size() + coreAt - before, length);
    molecule.coreBegin = before;
    molecule.coreEnd = before + coreLength;
}

/// Whether the core lies inside every read that must hold it, wherever the fragment begins (at base
/// 0 to 2 * jitter of the molecule).
bool coreFits(const Molecule& molecule, const Chemistry& chemistry) {
    const std::size_t fragment = chemistry.fragmentBases();
    const std::size_t latestBegin = 2 * chemistry.jitter;
    const bool inRead1 =
        molecule.coreBegin >= latestBegin && molecule.coreEnd <= chemistry.readLength;
    const bool inRead2 = molecule.coreBegin >= latestBegin + fragment - chemistry.readLength &&
                         molecule.coreEnd <= fragment;
    return (inRead1 || !needsRead1(molecule)) && (inRead2 || !needsRead2(molecule));
}

} // namespace

bool needsRead1(const Molecule& molecule) {
    return molecule.strand == catalogue::Strand::read1 ||
           molecule.strand == catalogue::Strand::both;
}

bool needsRead2(const Molecule& molecule) {
    return molecule.strand == catalogue::Strand::read2 ||
           molecule.strand == catalogue::Strand::both;
}

platform::Result<std::vector<Molecule>> makeMolecules(const catalogue::Catalogue& catalogue,
                                                      const Chemistry& chemistry,
                                                      std::uint64_t seed) {
    const std::size_t length = chemistry.fragmentBases() + 2 * chemistry.jitter;
    std::vector<Molecule> molecules;
    for (const auto& source : catalogue.mutationSources) {
        if (!source.domain) {
            continue;
        }
        const std::string seq = archive::stringOrEmpty(source.mutation->seq);
        const std::string core = archive::stringOrEmpty(source.mutation->coreSeq);
        Molecule molecule;
        molecule.domain = archive::stringOrEmpty(source.domain->name);
        molecule.name = archive::stringOrEmpty(source.mutation->name);
        molecule.strand = catalogue::strandOf(*source.mutation);
        const std::size_t coreAt = seq.find(core);
        if (coreAt == std::string::npos || core.size() + 2 * chemistry.jitter >= length) {
            return platform::Error{"entry " + molecule.name + ": its core of " +
                                   std::to_string(core.size()) +
                                   " bases does not fit into the fragment"};
        }
        fitAroundCore(molecule, seq, coreAt, core.size(), length, seed ^ numberOf(molecule.domain));
        molecule.hasCode = molecule.bases.find_first_not_of("ACGT") != std::string::npos;
        if (!coreFits(molecule, chemistry)) {
            return platform::Error{"entry " + molecule.name +
                                   ": its core does not lie inside the reads that must hold it; "
                                   "make the fragments shorter or the reads longer"};
        }
        molecules.push_back(std::move(molecule));
    }
    return molecules;
}

} // namespace simulator
