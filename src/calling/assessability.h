// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "catalogue/domain_words.h"
#include "catalogue/mut_domain.h"

namespace calling {

/// Targets of one kind of a patient of which none had reads enough to be called.
struct NotAssessable {
    std::string kind;         ///< "somatic DNA", "allele typing"
    std::int64_t targets = 0; ///< of that kind
    std::string call;         ///< the word that all of them got, e.g. "ND *1"
    catalogue::DomainType type = catalogue::DomainType::unknown;

    /// "not assessable (15 of 15 targets ND *1)".
    std::string reason() const;
    /// "somatic DNA: not assessable (15 of 15 targets ND *1)".
    std::string text() const;
};

/// How many of a patient's targets had too few informative reads: somatic domains of which every
/// mutation is called "ND *1", and an allele typing that is "Not Determined".
struct Assessability {
    std::int64_t targets = 0;
    std::int64_t notAssessable = 0;
    /// The kinds without any target that could be assessed.
    std::vector<NotAssessable> kinds;
};

/// REQUIRES: the domains are called. A saved document may lack domains and mutations: these count
/// as none.
Assessability assess(const catalogue::MutDomains& domains);

} // namespace calling
