// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include "matching/lying_core.h"

#include <algorithm>
#include <array>

#include "matching/core_search.h"
#include "matching/reverse_complement.h"

namespace matching {
namespace {

/// By core letter.
using Choices = std::array<std::string, 256>;

bool agrees(char readLetter, char coreLetter, bool wildCard, Side side) {
    const char letter = side == Side::read2 ? complement(readLetter) : readLetter;
    return wildCard ? baseAgrees(letter, coreLetter) : letter == coreLetter;
}

/// Asks the rules themselves, letter by letter, so that there is nothing to keep in step with them.
Choices choicesOf(bool wildCard, Side side) {
    const bool withoutCodes = wildCard && side == Side::read1;
    Choices choices;
    for (std::size_t core = 0; core < 256; ++core) {
        std::string& chosen = choices[core];
        for (int byte = 0; byte < 256; ++byte) {
            const char read = static_cast<char>(byte);
            const char letter = static_cast<char>(side == Side::read2 ? byte & 0xDF : byte);
            const bool skip = withoutCodes && kReadCodes.find(read) != std::string_view::npos;
            if (!skip && chosen.find(letter) == std::string::npos &&
                agrees(read, static_cast<char>(core), wildCard, side)) {
                chosen += letter;
            }
        }
    }
    return choices;
}

} // namespace

std::string_view lettersAgreeingWith(char coreLetter, bool wildCard, Side side) {
    static const Choices tables[] = {choicesOf(false, Side::read1), choicesOf(true, Side::read1),
                                     choicesOf(false, Side::read2), choicesOf(true, Side::read2)};
    const std::size_t table = (side == Side::read2 ? 2u : 0u) + (wildCard ? 1u : 0u);
    return tables[table][static_cast<unsigned char>(coreLetter)];
}

LyingCore::LyingCore(std::string_view core, bool wildCard, Side side) : m_size(core.size()) {
    m_letters.reserve(core.size() + kReadableBehind);
    for (const char letter : core) {
        const std::string_view choices = lettersAgreeingWith(letter, wildCard, side);
        m_fewest = std::min(m_fewest, choices.size());
        m_most = std::max(m_most, choices.size());
        m_letters += choices.substr(0, 1);
    }
    if (side == Side::read2) {
        std::reverse(m_letters.begin(), m_letters.end());
    }
    m_letters.resize(core.size() + kReadableBehind);
    if (!isPlain()) {
        keepChoices(core, wildCard, side);
    }
}

void LyingCore::keepChoices(std::string_view core, bool wildCard, Side side) {
    m_choices.reserve(core.size());
    for (const char letter : core) {
        m_choices.push_back(lettersAgreeingWith(letter, wildCard, side));
    }
    if (side == Side::read2) {
        std::reverse(m_choices.begin(), m_choices.end());
    }
}

} // namespace matching
