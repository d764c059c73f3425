// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "document/input_discovery.h"

namespace document {

/// The sample's name in a read-1 name: what stands before the last "_S<digits>_"
/// ("pat_Suzuki" of "pat_Suzuki_S12_L001_R1_001.fastq"). Empty for a name without one.
std::string sampleNameOf(const std::string& readsName);

/// Whether the part "_S" stands in the name more than once, so that the patient number may not be
/// the sample's number.
bool patientNumberIsDoubtful(const std::string& readsName);

/// Whether a file holds reads, by the ending of its name: ".fastq", ".fq", also compressed.
bool looksLikeReads(const std::string& name);

/// A file of reads that a batch over its directory does not read.
struct UnusedReads {
    std::string name;
    /// Why not, to stand behind the name and a colon.
    std::string reason;
    /// Such files stand in every sequencer's directory and hold no sample's reads: index reads, and
    /// reads that no sample claimed (sample 0).
    bool isUsual = false;
    /// Whether a warning of its own tells of it.
    bool isTold = false;
};

/// Every file among `names` that looks like reads and is in no pair of `batch`, in the order of
/// their names.
std::vector<UnusedReads> unusedReads(const std::vector<std::string>& names,
                                     const std::vector<PatientSlot>& batch);
/// The same for any choice of files. The reasons are those of a batch.
std::vector<UnusedReads> unusedReads(const std::vector<std::string>& names,
                                     const std::set<std::string>& used);

/// Files of the same sample and of other lanes or parts than the one that a single run reads, with
/// the same reasons.
std::vector<UnusedReads> otherReadsOfSample(const std::vector<std::string>& names,
                                            const ReadPairFiles& pair);

/// Two files that stand for one patient's same read, or a pair whose names are not one but for the
/// read mark: reads of two persons may be mixed up.
struct DoubtfulPair {
    enum class Kind {
        namesDiffer, ///< read 1 and read 2 of a pair; their names differ in more than the mark
        sameRead,    ///< both are candidates for the same read
        noReads,     ///< the first is taken for reads by its name, although its ending is none
    };
    std::int64_t sampleNumber = 0;
    std::string one;
    std::string other; ///< empty for noReads
    Kind kind = Kind::namesDiffer;
};

/// By rising sample number. A file and its compressed twin are not doubtful.
std::vector<DoubtfulPair> doubtfulPairs(const std::vector<std::string>& names,
                                        const std::vector<PatientSlot>& batch);

} // namespace document
