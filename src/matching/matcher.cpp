// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include "matching/matcher.h"

namespace matching {

std::size_t mutationCount(const catalogue::MutDomains& domains) {
    std::size_t count = 0;
    for (const auto& domain : platform::orEmpty(domains)) {
        count += platform::orEmpty(domain->mutationMutAr).size();
    }
    return count;
}

} // namespace matching
