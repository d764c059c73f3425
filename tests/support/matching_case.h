// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <algorithm>
#include <cstddef>
#include <functional>
#include <random>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "catalogue/mut_domain.h"
#include "matching/core_search.h"
#include "matching/reverse_complement.h"
#include "support/batch_of_pairs.h"
#include "support/catalogue_builder.h"

namespace support {

/// Makes catalogues and read pairs in which rare things are common: short and long cores, repeats,
/// neighbours, duplicates, ambiguity codes, lower case, odd bytes; reads that carry cores at their
/// start, their end and between, damaged now and then, with qualities too low or missing.
///
/// All choices come from one function, so that random numbers can make a case or a fuzzer.
class MatchingCaseMaker {
public:
    /// `below(limit)` gives a number below `limit`.
    explicit MatchingCaseMaker(std::function<std::size_t(std::size_t)> below)
        : m_below(std::move(below)) {}

    catalogue::MutDomains makeCatalogue(std::size_t mostDomains) {
        m_cores.clear();
        m_shortest = choose<std::size_t>({0, 1, 1, 8, 12, 20, 31});
        m_longest = m_shortest + choose<std::size_t>({0, 3, 10, 20, 20, 400});
        std::vector<std::shared_ptr<catalogue::MutDomain>> domains;
        for (std::size_t d = m_below(mostDomains + 1); d > 0; --d) {
            std::vector<Target> targets;
            for (std::size_t m = m_below(5); m > 0; --m) {
                targets.push_back(makeTarget());
            }
            domains.push_back(domainOf(targets, oneIn(3)));
        }
        return catalogueOf(std::move(domains));
    }

    /// Of the cores of the catalogue made last, before some were changed.
    std::size_t shortestCore() const noexcept { return m_shortest; }

    /// For the catalogue made last.
    PairTexts makePair() {
        PairTexts pair;
        const Target* carried = m_cores.empty() || oneIn(6) ? nullptr : &anyCore();
        pair.read1 = makeRead(carried);
        pair.read2 = makeRead(oneIn(4) ? nullptr : carried);
        if (!oneIn(20)) {
            matching::reverseComplement(pair.read2.data(), pair.read2.size());
        }
        spoil(pair.read1);
        spoil(pair.read2);
        pair.quality1 = makeQuality(pair.read1.size());
        pair.quality2 = makeQuality(pair.read2.size());
        return pair;
    }

private:
    static constexpr std::string_view kBases = "ACGT";
    static constexpr std::string_view kCodes = "BDHKMRSVWYN";

    bool oneIn(std::size_t count) { return m_below(count) == 0; }
    template <class T>
    T choose(std::initializer_list<T> list) {
        return list.begin()[m_below(list.size())];
    }
    char letter(std::string_view letters) { return letters[m_below(letters.size())]; }
    /// One choice stands for all of them: choices are dear to a fuzzer.
    std::string bases(std::size_t length) {
        std::minstd_rand random(static_cast<unsigned>(m_below(0x10000)) + 1);
        std::string made(length, 'A');
        for (char& base : made) {
            base = kBases[random() >> 16 & 3];
        }
        return made;
    }
    char oddByte() {
        return oneIn(3) ? static_cast<char>(1 + m_below(255)) : letter("acgtnrNRYBDKUZ-\r0");
    }
    const Target& anyCore() { return m_cores[m_below(m_cores.size())]; }

    Target makeTarget() {
        Target target;
        if (!m_cores.empty() && oneIn(3)) {
            target = neighbourOf(anyCore());
        } else {
            target.core = makeCore(m_shortest + m_below(m_longest - m_shortest + 1));
            target.wildCard = oneIn(4);
        }
        if (target.wildCard && !target.core.empty()) {
            for (std::size_t codes = oneIn(8) ? target.core.size() / 3 : m_below(4); codes > 0;
                 --codes) {
                anyOf(target.core) = letter(kCodes);
            }
        }
        if (oneIn(15) && !target.core.empty()) {
            anyOf(target.core) = oddByte();
        }
        target.strand =
            choose<const char*>({"R1", "R2", "R2", "R1R2", "R1R2", "R1R2", "r1", "R1R2 "});
        m_cores.push_back(target);
        return target;
    }

    char& anyOf(std::string& text) { return text[m_below(text.size())]; }

    std::string makeCore(std::size_t length) {
        if (!oneIn(5)) {
            return bases(length);
        }
        const std::string unit = bases(1 + m_below(5));
        std::string repeat;
        while (repeat.size() < length) {
            repeat += unit;
        }
        repeat.resize(length);
        return repeat;
    }

    /// The same core, or one that differs little, under another strand word or kind perhaps.
    Target neighbourOf(Target target) {
        switch (m_below(6)) {
        case 0:
            break;
        case 1:
            target.core = target.core.substr(m_below(target.core.size() + 1));
            break;
        case 2:
            target.core += bases(m_below(4));
            break;
        case 3:
            std::transform(
                target.core.begin(), target.core.end(), target.core.begin(), [](char base) {
                    return base >= 'A' && base <= 'Z' ? static_cast<char>(base - 'A' + 'a') : base;
                });
            break;
        default:
            if (!target.core.empty()) {
                anyOf(target.core) = letter(kBases);
            }
        }
        target.wildCard = oneIn(6) ? !target.wildCard : target.wildCard;
        return target;
    }

    /// A text that agrees with the core, if one does, of bases mostly.
    std::string agreeingWith(const Target& target) {
        std::string text = target.core;
        if (!target.wildCard) {
            return text;
        }
        for (char& base : text) {
            const std::string_view tried = oneIn(30) ? kCodes : kBases;
            for (std::size_t i = 0, start = m_below(tried.size()); i < tried.size(); ++i) {
                const char read = tried[(start + i) % tried.size()];
                if (matching::baseAgrees(read, base)) {
                    base = read;
                    break;
                }
            }
        }
        return text;
    }

    std::string makeRead(const Target* carried) {
        std::string read = oneIn(4) ? bases(m_below(510)) : bases(m_below(160));
        if (carried == nullptr) {
            return read;
        }
        for (std::size_t copies = 1 + m_below(oneIn(3) ? 3 : 1); copies > 0; --copies) {
            const std::string core = agreeingWith(oneIn(8) ? anyCore() : *carried);
            const std::size_t place =
                choose({std::size_t{0}, read.size(), m_below(read.size() + 1)});
            if (oneIn(2)) {
                read.insert(place, core);
            } else {
                read.replace(place, core.size(), core);
            }
        }
        read.resize(std::min<std::size_t>(read.size(), reads::kLineLimit - 1));
        return read;
    }

    void spoil(std::string& read) {
        if (read.empty()) {
            return;
        }
        if (oneIn(6)) {
            anyOf(read) = 'N';
        }
        if (oneIn(8)) {
            anyOf(read) = oddByte();
        }
        if (oneIn(12)) {
            const std::size_t from = m_below(read.size());
            const std::size_t length = m_below(read.size() - from) + 1;
            for (std::size_t i = from; i < from + length; ++i) {
                read[i] = static_cast<char>(read[i] | 0x20);
            }
        }
        if (oneIn(25)) {
            anyOf(read) = '\0';
        }
    }

    std::string makeQuality(std::size_t readLength) {
        const std::size_t length =
            choose({readLength, readLength, readLength, readLength, m_below(510), std::size_t{0}});
        std::string quality(length, 'I');
        if (oneIn(2) && length > 0) {
            for (std::size_t lows = m_below(6); lows > 0; --lows) {
                anyOf(quality) = letter("!?@\xc8\x7f");
            }
        }
        return quality;
    }

    std::function<std::size_t(std::size_t)> m_below;
    std::vector<Target> m_cores;
    std::size_t m_shortest = 0;
    std::size_t m_longest = 0;
};

} // namespace support
