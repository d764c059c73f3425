// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
//
// The core of a mutation: the stretch between its flanks, both included, which is all that reads
// are searched for. A flank is found by its leftmost match, whatever the other flank does. A
// mutation whose flanks do not mark a core in this way keeps runs from starting; guessing one would
// count the wrong reads.
//
// The search compares letter by letter with a table of the pairs that match: asking the rules for
// each letter took most of the time that a large catalogue needs to load. Tested by
// core_sequence_test.cpp and definition_faults_test.cpp.
#include "catalogue/core_sequence.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <optional>
#include <string>

#include "catalogue/iupac.h"

namespace catalogue {
namespace {

/// By one byte, then by the other.
using Matches = std::array<std::array<bool, 256>, 256>;

Matches tableOfMatches() {
    Matches matches{};
    for (std::size_t character = 0; character < matches.size(); ++character) {
        matches[character][character] = true;
        for (const char base : basesOfCode(static_cast<char>(character))) {
            const auto baseNumber = static_cast<unsigned char>(base);
            matches[character][baseNumber] = true;
            matches[baseNumber][character] = true;
        }
    }
    return matches;
}

void addReason(std::string& reasons, const std::string& reason) {
    reasons += reasons.empty() ? reason : "; " + reason;
}

std::string flankNotFound(const char* side, std::string_view flank) {
    return "the " + std::string(side) + " flank " + std::string(flank) +
           " is not found in its sequence";
}

/// Sets the core, or leaves it empty and adds the reason.
void placeCore(Mutation& mutation, std::string& reasons) {
    const std::string_view seq = archive::orEmpty(mutation.seq);
    const std::string_view left = archive::orEmpty(mutation.before10bp);
    const std::string_view right = archive::orEmpty(mutation.after10bp);
    const std::optional<std::size_t> leftPlace = findFlank(seq, left);
    const std::optional<std::size_t> rightPlace = findFlank(seq, right);
    if (!leftPlace) {
        addReason(reasons, flankNotFound("left", left));
    }
    if (!rightPlace) {
        addReason(reasons, flankNotFound("right", right));
    }
    if (!leftPlace || !rightPlace) {
        return;
    }
    const std::size_t end = *rightPlace + right.size();
    const bool bothEmpty = left.empty() && right.empty();
    if (end <= *leftPlace && !bothEmpty) {
        addReason(reasons, "the right flank " + std::string(right) +
                               " ends before the left flank " + std::string(left) + " begins");
        return;
    }
    mutation.coreSeq = std::string(seq.substr(*leftPlace, end - *leftPlace));
}

bool isBase(char character) noexcept {
    switch (character) {
    case 'A':
    case 'G':
    case 'C':
    case 'T':
    case 'a':
    case 'g':
    case 'c':
    case 't':
        return true;
    default:
        return false;
    }
}

void checkFinite(const char* what, double value, std::string& reasons) {
    if (!std::isfinite(value)) {
        addReason(reasons, "its " + std::string(what) + " is not a finite number");
    }
}

} // namespace

std::optional<std::size_t> findFlank(std::string_view text, std::string_view pattern) {
    static const Matches matches = tableOfMatches();
    const auto place =
        std::search(text.begin(), text.end(), pattern.begin(), pattern.end(), [](char a, char b) {
            return matches[static_cast<unsigned char>(a)][static_cast<unsigned char>(b)];
        });
    // An empty pattern is found at the beginning, also of an empty text.
    if (place == text.end() && !pattern.empty()) {
        return std::nullopt;
    }
    return static_cast<std::size_t>(place - text.begin());
}

bool containsWildCard(std::string_view sequence) noexcept {
    return !std::all_of(sequence.begin(), sequence.end(), isBase);
}

platform::Status deriveCore(Mutation& mutation) {
    std::string reasons;
    mutation.coreSeq = "";
    placeCore(mutation, reasons);
    mutation.seqContainsWildCard = containsWildCard(archive::orEmpty(mutation.seq));
    mutation.coreSeqContainsWildCard = containsWildCard(archive::orEmpty(mutation.coreSeq));
    checkFinite("reference frequency", mutation.referenceFrequencyOfTheMutantReads, reasons);
    checkFinite("false-positive rate", mutation.allowableFalsePositiveRate, reasons);
    checkFinite("false-negative rate", mutation.allowableFalseNegativeRate, reasons);
    return reasons.empty() ? platform::Status() : platform::Error{reasons};
}

bool coreIsDefined(const Mutation& mutation) noexcept {
    // A placed core holds at least one character, unless both flanks are empty.
    return !archive::orEmpty(mutation.coreSeq).empty() ||
           (archive::orEmpty(mutation.before10bp).empty() &&
            archive::orEmpty(mutation.after10bp).empty());
}

} // namespace catalogue
