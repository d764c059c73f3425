// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

#include "catalogue/definition_file.h"

namespace catalogue {

/// A finding about a definition file. An error keeps the file from meaning what it says; a warning
/// marks what a laboratory may intend.
struct Finding {
    enum class Severity { warning, error };
    Severity severity = Severity::error;
    /// 1-based; 0 for a finding about the file as a whole.
    std::size_t line = 0;
    std::string message;
};

/// What the checker asks of the statistics, which lie above this room: whether some number of reads
/// at or above the read threshold exists at which the mutation is called positive with no mutant
/// read.
using PositiveWithoutMutantReads = std::function<bool(const Mutation&)>;

/// Checks a loaded catalogue against every rule of docs/formats/definition-file.md. Findings come
/// in line order. Costs time that grows with the square of the entries of a domain, not of the
/// file.
std::vector<Finding> checkCatalogue(const Catalogue& catalogue,
                                    const PositiveWithoutMutantReads& positiveWithoutMutantReads);

/// Whether in every read pair that holds the core of `later`, in the reads that its strand word
/// names, the core of `earlier` is found too. Standing before `later` in a domain, `earlier` then
/// takes the pair: within a domain the first match counts.
///
/// That is so when `earlier` asks for no read that `later` does not ask for, and there is a place
/// in the later core at which every base that agrees with it agrees with the earlier core as well;
/// reads of A, C, G, T and N are looked at. One way past `earlier` remains, and no catalogue can
/// exclude it: the quality gate looks at the leftmost place only and turns an entry down where its
/// core stands at the start of a read with low qualities, although it stands inside `later` as
/// well. Two equal cores with the same strand word do not even leave that.
bool shadows(const Mutation& earlier, const Mutation& later);

} // namespace catalogue
