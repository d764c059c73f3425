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

} // namespace catalogue
