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

/// "NAME (line N)", for a finding about another entry.
std::string nameAndLine(const MutationSource& source);

inline std::string_view coreOf(const MutationSource& source) {
    return archive::orEmpty(source.mutation->coreSeq);
}

/// Whether the first entry of the domain is the wild type of the others.
bool hasWildType(const CheckedDomain& domain);

/// Whether a mutant, or its core alone, is like its wild type only after one of the two is
/// reverse-complemented. checkStrands() reports it.
bool liesOnOtherStrand(const MutationSource& source, const MutationSource& wildType);

/// A sequence that stands for its place on the molecule: the wild type of a domain, and every entry
/// of a domain that has none.
struct Target {
    const MutationSource* source = nullptr;
    const CheckedDomain* domain = nullptr;

    std::string_view sequence() const { return archive::orEmpty(source->mutation->seq); }
};

/// In file order. They point into `domains`.
std::vector<Target> targetsOf(const std::vector<CheckedDomain>& domains);
/// Their sequences, in the same order.
std::vector<std::string_view> sequencesOf(const std::vector<Target>& targets);

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
/// Length and bases of the domain's cores.
void checkCoreBases(const CheckedDomain& domain, std::size_t readLength, Findings& findings);
/// A domain's wild type, and its mutants beside it.
void checkWildType(const CheckedDomain& domain, Findings& findings);
/// Mutants that are like the wild type of another domain.
void checkDomainsOfMutants(const std::vector<CheckedDomain>& domains, Findings& findings);
/// Sequences and strand words that do not agree with those beside them.
void checkStrands(const std::vector<CheckedDomain>& domains, Findings& findings);
/// Cores that lie in other cores, on either strand and but for one base.
void checkNearCores(const std::vector<CheckedDomain>& domains, Findings& findings);
/// Domains with the stop flag that overlap with later ones.
void checkStopFlags(const std::vector<CheckedDomain>& domains, std::size_t readLength,
                    Findings& findings);

} // namespace catalogue::rules
