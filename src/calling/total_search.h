// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cmath>
#include <cstdint>

#include "calling/statistics.h"

/// At which total numbers of reads the threshold searches of statistics.h change their ways. For
/// the questions of the catalogue check, which ask about every total at once.
namespace calling {

/// More read pairs than a patient's run holds. Also bounds the time of the searches, which grows
/// with the square root of the total.
inline constexpr std::int64_t kMostReads = 1'000'000'000;

inline bool usesNormalApproximation(std::int64_t total, double frequency) {
    return NormalApproximation(total, frequency).applies();
}

/// Whether the distribution function at 0 reads is 0.5 by underflow.
inline bool startsInUnderflow(std::int64_t total, double frequency) {
    const NormalApproximation normal(total, frequency);
    const double x = normal.standardised(0);
    return normal.applies() && std::exp(-0.5 * (x * x)) == 0.0;
}

/// The first total from `begin` on where `holds(total)` is true, `end` if there is none. REQUIRES:
/// it stays true from there to the end.
template <class Predicate>
std::int64_t firstTotalWhere(std::int64_t begin, std::int64_t end, Predicate holds) {
    while (begin < end) {
        const std::int64_t middle = begin + (end - begin) / 2;
        if (holds(middle)) {
            end = middle;
        } else {
            begin = middle + 1;
        }
    }
    return begin;
}

/// The first total from which on the predicate is true for the frequency, at most kMostReads.
inline std::int64_t firstTotalWhere(bool (*holds)(std::int64_t, double), double frequency) {
    return firstTotalWhere(1, kMostReads,
                           [&](std::int64_t total) { return holds(total, frequency); });
}

} // namespace calling
