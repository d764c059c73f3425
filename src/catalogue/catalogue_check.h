// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <vector>

#include "catalogue/definition_file.h"
#include "catalogue/finding.h"

namespace catalogue {

/// The checker's question to the statistics, which lie above this room: can the mutation be called
/// positive with no mutant read, at any number of reads that is not below the read threshold?
using PositiveWithoutMutantReads = std::function<bool(const Mutation&)>;
/// Another one: the least number of informative reads, `from` or more, with which the mutation is
/// called negative if none of them is mutant; nullopt if there is none.
using ReadsForNegative =
    std::function<std::optional<std::int64_t>(const Mutation& mutation, std::int64_t from)>;

/// Reads are read in lines of at most this many characters.
inline constexpr std::size_t kLongestRead = 509;
inline constexpr std::size_t kUsualReadLength = 150;

/// What the check has to be told. A rule that asks for something that is left out finds nothing.
struct CheckOptions {
    PositiveWithoutMutantReads positiveWithoutMutantReads = nullptr;
    ReadsForNegative readsForNegative = nullptr;
    /// Informative reads below which nothing is called.
    std::int64_t readThreshold = 0;
    /// The share of mutant reads that a real mutation is taken to have at least.
    std::optional<double> frequencyOfTrulyMutantReads = std::nullopt;
    /// Bases of a read.
    std::size_t readLength = kUsualReadLength;
};

/// Checks a loaded catalogue against every rule of docs/formats/definition-file.md. Findings come
/// in line order. The time grows with the square of the entries of a domain, not of the file.
std::vector<Finding> checkCatalogue(const Catalogue& catalogue, const CheckOptions& options);

/// Whether every read pair that holds the core of `later`, in the reads that its strand word names,
/// holds the core of `earlier` too. If `earlier` stands before `later` in a domain, it then takes
/// the pair: within a domain the first match counts.
///
/// That is so if `earlier` asks for no read that `later` does not ask for, and if at some offset in
/// the later core the earlier one accepts every base that the later one accepts. Reads hold A, C,
/// G, T and N here.
///
/// No catalogue can exclude one exception. The quality gate looks at the leftmost place only: it
/// can turn `earlier` down where its core stands at the start of a read with low qualities,
/// although the core stands inside `later` as well. Two equal cores with the same strand word have
/// no exception.
bool shadows(const Mutation& earlier, const Mutation& later);

} // namespace catalogue
