// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace document {

/// The two names of a pair and the directory that holds them. Names are null where the rule gives
/// none.
struct ReadPairFiles {
    std::optional<std::string> file1;
    std::optional<std::string> file2;
    std::string directory;
    /// Whether the mate is there.
    bool paired = false;
};

/// What an alert says where there is no mate. Scripts rely on these words.
inline constexpr const char* kNotPaired = "Files are not paired or incompatible.";

/// Finds the mate of the chosen file in its directory by "_R1_" and "_R2_" and by its extension
/// ("fastq" or "gz"); a plain file may pair with a compressed one. A name that holds both is
/// read 1.
ReadPairFiles findMate(const std::string& chosenPath);

/// The patient number of a read-1 name: the text between the first "_S" and the second, up to its
/// first "_" ("12" of "P_S12_L001_R1_001.fastq"). nullopt for a name without "_S".
std::optional<std::string> patientNumberOf(const std::string& read1Name);

/// One sample of a batch.
struct PatientSlot {
    std::string file1;
    std::string file2;
    std::int64_t sampleNumber = 0;
};

/// The batch that a directory holds: samples 1 to 1000 with at least one file, in rising number.
/// `names` in listing order; those that begin with "_" or "." are left out, a later candidate
/// overwrites an earlier one. The cost is one look at each name.
std::vector<PatientSlot> planBatch(const std::vector<std::string>& names);

} // namespace document
