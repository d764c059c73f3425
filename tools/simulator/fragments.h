// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "catalogue/definition_file.h"
#include "catalogue/domain_words.h"
#include "platform/result.h"

namespace simulator {

/// What the reads look like.
struct Chemistry {
    /// Bases of each read.
    std::size_t readLength = 150;
    /// Bases of a fragment; 0: a fifth longer than a read, so that the mates overlap widely.
    std::size_t fragmentLength = 0;
    /// A fragment begins up to this many bases before or after its usual place; 0, as between
    /// primers, gives every pair of an entry the same place.
    std::size_t jitter = 0;
    /// Substitutions per base, fraction 0 to 1.
    double errorRate = 0.0;

    std::size_t fragmentBases() const {
        return fragmentLength != 0 ? fragmentLength : readLength + readLength / 5;
    }
};

/// A catalogue entry as the molecule that a library holds: its sequence between made-up bases that
/// all entries of a domain have in common. `jitter` bases more stand at either end.
struct Molecule {
    std::string domain;
    std::string name;
    /// The reads that must hold the core; nullopt where no pair is ever counted.
    std::optional<catalogue::Strand> strand;
    std::string bases;
    std::size_t coreBegin = 0;
    std::size_t coreEnd = 0;
    /// Bases hold an ambiguity code, which each molecule resolves in its own way.
    bool hasCode = false;
};

/// Whether read 1, or read 2, must hold the core for a pair to be counted.
bool needsRead1(const Molecule& molecule);
bool needsRead2(const Molecule& molecule);

/// One molecule for each mutation of the catalogue, in its order, with the core in the middle.
/// An error names the entry whose core would not lie inside the reads that must hold it.
platform::Result<std::vector<Molecule>> makeMolecules(const catalogue::Catalogue& catalogue,
                                                      const Chemistry& chemistry,
                                                      std::uint64_t seed);

} // namespace simulator
