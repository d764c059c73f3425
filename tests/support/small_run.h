// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>

namespace support {

/// A catalogue of one somatic domain, wild type and mutant.
inline const std::string kSmallCatalogue = "*EGFR SomaticDNA\n"
                                           ">EGFR_wt GATTACA CCGTTGA R1 0.001 0.0001 0.05 1000\n"
                                           "TTTTGATTACAGGGGCCGTTGATTTT\n"
                                           ">EGFR_mut GATTACA CCGTTGA R1 0.001 0.0001 0.05 1000\n"
                                           "TTTTGATTACAGTGGCCGTTGATTTT\n"
                                           "//EntryEnds\n";

/// A catalogue with which no run may start: a flank of its mutation is not in the sequence.
inline const std::string kFaultyCatalogue = "*EGFR SomaticDNA\n"
                                            ">EGFR_bad AAAAAAA CCGTTGA R1 0.001 0.0001 0.05 1000\n"
                                            "TTTTGATTACAGGGGCCGTTGATTTT\n"
                                            "//EntryEnds\n";

/// The text of a FASTQ file of `pairs` reads: each holds the wild type of kSmallCatalogue, away
/// from the start of the read, where base qualities take no part. Serves as read 1 and as read 2.
inline std::string reads(int pairs) {
    const std::string bases = "ACACGATTACAGGGGCCGTTGAACAC";
    std::string text;
    for (int pair = 1; pair <= pairs; ++pair) {
        text += "@read" + std::to_string(pair) + "\n" + bases + "\n+\n" +
                std::string(bases.size(), 'I') + "\n";
    }
    return text;
}

} // namespace support
