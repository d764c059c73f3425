// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "catalogue/catalogue_check.h"

/// The groups of rules behind checkCatalogue(). Each adds its findings, in any order.
namespace catalogue::rules {

/// What separates fields, besides the end of the line.
inline constexpr std::string_view kBlanks = " \t\v\f";

class Findings {
public:
    void add(Rule rule, std::size_t line, std::string message) {
        m_found.push_back({textOf(rule).severity, line, std::move(message), rule});
    }
    /// Everything found, by line; the findings of one line stay in the order in which they came.
    std::vector<Finding> inLineOrder() &&;

private:
    std::vector<Finding> m_found;
};

/// A domain with where it and its mutations come from.
struct CheckedDomain {
    const DomainSource* source = nullptr;
    std::vector<const MutationSource*> mutations;

    const MutDomain& record() const noexcept { return *source->domain; }
};

/// "mutation NAME: ", the beginning of a finding.
std::string about(const Mutation& mutation);
/// "domain NAME: ".
std::string about(const MutDomain& domain);

/// What a mutation's two lines say: fields, sequence line, strand word, place in the file.
void checkLines(const MutationSource& source, Findings& findings);
/// A line that was probably meant as a header.
void checkIgnoredHeader(const IgnoredHeader& ignored, Findings& findings);
/// Header, type word and number of entries of a domain.
void checkDomain(const CheckedDomain& domain, Findings& findings);
/// Names that stand twice.
void checkNames(const std::vector<CheckedDomain>& domains, Findings& findings);
/// Letters and length of a core.
void checkCore(const MutationSource& source, Findings& findings);
/// Cores that stand twice, and entries that an earlier one of their domain shadows.
void checkCoresAgainstEachOther(const std::vector<CheckedDomain>& domains, Findings& findings);
/// The three rates of every mutation of the domain.
void checkRates(const CheckedDomain& domain, const CheckOptions& options, Findings& findings);
/// The entries that the RNA results rest on.
void checkControls(const std::vector<CheckedDomain>& domains, Findings& findings);

} // namespace catalogue::rules
