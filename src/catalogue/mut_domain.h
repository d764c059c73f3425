// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <memory>
#include <string_view>

#include "archive/nullable.h"
#include "catalogue/mutation.h"

namespace catalogue {

/// An ordered group of mutations of one type, with the read totals of the whole group.
/// The first mutation of a domain is its normal (wild-type) or control entry.
class MutDomain {
public:
    static constexpr std::string_view kClassName = "MutDomain";

    MutDomain() = default;
    MutDomain(const MutDomain&) = delete;
    MutDomain& operator=(const MutDomain&) = delete;

    /// A new record with a fixed list of the very same mutations. A null list stays null.
    std::shared_ptr<MutDomain> copyWithZone() const;

    archive::Text name;
    /// The type word that later stages branch on, compared exactly ("Germline", "SomaticDNA",
    /// "germline_mRNA", "fusion_RNA", "control").
    archive::Text type;
    /// The mutations in file order.
    archive::ListOf<Mutation> mutationMutAr;
    /// A pair that matched in this domain is not tried in later ones.
    bool canStopSearchIfMatched = false;
    /// Read pairs.
    std::int64_t totalNumberOfNormalReads = 0;
    std::int64_t totalNumberOfMutantReads = 0;

    /// Names every archived field once, in archive order.
    template <class Self, class Visitor>
    static void visitFields(Self& self, Visitor& visit) {
        visit("name", self.name);
        visit("type", self.type);
        visit("mutationMutAr", self.mutationMutAr);
        visit("canStopSearchIfMatched", self.canStopSearchIfMatched);
        visit("totalNumberOfNormalReads", self.totalNumberOfNormalReads);
        visit("totalNumberOfMutantReads", self.totalNumberOfMutantReads);
    }

    static std::shared_ptr<MutDomain> forDecoding() { return std::make_shared<MutDomain>(); }
};

/// A catalogue: domains in file order, kept by every later stage.
using MutDomains = archive::ListOf<MutDomain>;

} // namespace catalogue
