// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <memory>
#include <utility>
#include <vector>

#include "catalogue/mut_domain.h"

namespace calling {

using MutationRef = std::shared_ptr<catalogue::Mutation>;
using DomainRef = std::shared_ptr<catalogue::MutDomain>;

/// A counted mutation with plausible rates: 0.1 % background, 0.1 % false-positive and 5 %
/// false-negative rate.
inline MutationRef mutation(const char* name, std::int64_t match) {
    auto result = std::make_shared<catalogue::Mutation>();
    result->name = name;
    result->match = match;
    result->referenceFrequencyOfTheMutantReads = 0.001;
    result->allowableFalsePositiveRate = 0.001;
    result->allowableFalseNegativeRate = 0.05;
    return result;
}

inline DomainRef domain(const char* type, const char* name, std::vector<MutationRef> mutations) {
    auto result = std::make_shared<catalogue::MutDomain>();
    result->type = type;
    result->name = name;
    result->mutationMutAr = archive::RecordList<catalogue::Mutation>::of(std::move(mutations));
    return result;
}

} // namespace calling
