// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "platform/result.h"
#include "simulator/fragments.h"
#include "simulator/panel_table.h"

namespace simulator {

/// What was made of one entry in one sample.
struct EntryTruth {
    std::string domain;
    std::string mutation;
    std::uint64_t pairs = 0;
    /// Those without a base-call error in a core that must be read: what a count finds.
    std::uint64_t intactPairs = 0;
};

/// What was made of one sample.
struct SampleTruth {
    std::string file1;
    std::string file2;
    std::uint64_t totalPairs = 0;
    /// One for each molecule, in the catalogue's order.
    std::vector<EntryTruth> entries;
};

/// "NAME_S1_L001_R1_001.fastq" or ".fastq.gz", as sequencers name their files.
std::string fastqName(const Sample& sample, int readNumber);

/// Whether the catalogue holds all that the sample is to carry.
platform::Status checkSample(const std::vector<Molecule>& molecules, const Sample& sample);

/// Writes the two files of a sample into `directory`, its pairs in random order. The same
/// molecules, sample, chemistry and seed give the same reads. An error leaves neither file behind.
platform::Result<SampleTruth> writeSample(const std::vector<Molecule>& molecules,
                                          const Sample& sample, const Chemistry& chemistry,
                                          std::uint64_t seed, const std::string& directory);

} // namespace simulator
