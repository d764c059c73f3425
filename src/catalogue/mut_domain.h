// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <memory>
#include <string_view>

#include "archive/nullable.h"

namespace catalogue {

/// One target sequence with its calling parameters and, after a run, its count and result texts.
///
/// Records are shared through std::shared_ptr and never moved, so that the byte strings stay valid
/// as long as the texts they view. One run fills a record at a time; workers only read it.
class Mutation {
public:
    static constexpr std::string_view kClassName = "Mutation";

    /// Result texts are "", every other value is zero, false or null.
    Mutation();
    Mutation(const Mutation&) = delete;
    Mutation& operator=(const Mutation&) = delete;

    /// A new record filled from this one, which shares nothing with it.
    ///
    /// Deliberate: the copy's `referenceFrequencyOfTheMutantReads` is this record's
    /// `minimumRequiredNumberOfInformativeReads` as a double, not its frequency. A deep copy that
    /// keeps every value is archive::deepCopy().
    std::shared_ptr<Mutation> copyWithZone() const;

    archive::Text name;
    /// Background (falsely mutant) read frequency, fraction 0 to 1.
    double referenceFrequencyOfTheMutantReads = 0.0;
    /// Rates in (0, 1).
    double allowableFalsePositiveRate = 0.0;
    double allowableFalseNegativeRate = 0.0;
    /// Read pairs.
    std::int64_t minimumRequiredNumberOfInformativeReads = 0;
    /// The whole target sequence as written in the definition file.
    archive::Text seq;
    /// NUL-terminated bytes of the current `seq`; nullptr while it is null.
    const char* seqC() const noexcept { return seq ? seq->c_str() : nullptr; }
    /// Whether `seq` holds a character other than A, G, C, T in either case, as found when loaded.
    bool seqContainsWildCard = false;
    /// The stretch of `seq` that is searched for in reads, flanks included.
    archive::Text coreSeq;
    /// NUL-terminated bytes of the current `coreSeq`; nullptr while it is null.
    const char* coreSeqC() const noexcept { return coreSeq ? coreSeq->c_str() : nullptr; }
    bool coreSeqContainsWildCard = false;
    /// The flanks that mark where the core begins and ends.
    archive::Text before10bp;
    archive::Text after10bp;
    /// "R1", "R2" or "R1R2"; any other word never matches.
    archive::Text strandRequiredToRead;
    /// Read pairs counted for this mutation.
    std::int64_t match = 0;
    archive::Text posNegDetectedOrAlleleType;
    archive::Text mutantCellRatio;
    archive::Text comment;

    /// Names every archived field once, in archive order.
    template <class Self, class Visitor>
    static void visitFields(Self& self, Visitor& visit) {
        visit("name", self.name);
        visit("referenceFrequencyOfTheMutantReads", self.referenceFrequencyOfTheMutantReads);
        visit("allowableFalsePositiveRate", self.allowableFalsePositiveRate);
        visit("allowableFalseNegativeRate", self.allowableFalseNegativeRate);
        visit("minimumRequiredNumberOfInformativeReads",
              self.minimumRequiredNumberOfInformativeReads);
        visit("seq", self.seq);
        visit("seqContainsWildCard", self.seqContainsWildCard);
        visit("coreSeq", self.coreSeq);
        visit("coreSeqContainsWildCard", self.coreSeqContainsWildCard);
        visit("before10bp", self.before10bp);
        visit("after10bp", self.after10bp);
        visit("strandRequiredToRead", self.strandRequiredToRead);
        visit("match", self.match);
        visit("posNegDetectedOrAlleleType", self.posNegDetectedOrAlleleType);
        visit("mutantCellRatio", self.mutantCellRatio);
        visit("comment", self.comment);
    }

    /// A record without the defaults above: every value comes from the archive, a missing text as
    /// null.
    static std::shared_ptr<Mutation> forDecoding();
};

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
