// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <algorithm>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "catalogue/catalogue_check.h"
#include "catalogue/load_text.h"

namespace catalogue {

/// Random bases without runs, which are like nothing else.
inline std::string randomBases(std::size_t count, unsigned seed) {
    std::mt19937 random(seed);
    std::string bases;
    while (bases.size() < count) {
        const char base = "ACGT"[random() % 4];
        if (bases.empty() || bases.back() != base) {
            bases += base;
        }
    }
    return bases;
}

/// The text with another base at `place`.
inline std::string withChange(std::string text, std::size_t place) {
    text[place] = text[place] == 'A' ? 'C' : 'A';
    return text;
}

/// An entry whose core reaches from `begin` to `end` of the sequence, with flanks of ten bases.
inline std::string entryText(const std::string& name, const std::string& sequence,
                             std::size_t begin, std::size_t end, const std::string& strand = "R1") {
    return ">" + name + " " + sequence.substr(begin, 10) + " " + sequence.substr(end - 10, 10) +
           " " + strand + " 0.001 0.0001 0.05 1000\n" + sequence + "\n";
}

/// The same with all of the sequence for its core.
inline std::string entryText(const std::string& name, const std::string& sequence,
                             const std::string& strand = "R1") {
    return entryText(name, sequence, 0, sequence.size(), strand);
}

/// What is found in the text, "LINE IDENTIFIER" each, without the two warnings about the file as a
/// whole that every text here would have.
inline std::vector<std::string> rulesFoundIn(const std::string& text,
                                             const CheckOptions& options = {}) {
    std::vector<std::string> found;
    for (const Finding& finding : checkCatalogue(loadText(text), options)) {
        if (finding.rule != Rule::endMarkerMissing && finding.rule != Rule::noRNAQualityControl) {
            found.push_back(std::to_string(finding.line) + " " +
                            std::string(textOf(finding.rule).identifier));
        }
    }
    return found;
}

} // namespace catalogue
