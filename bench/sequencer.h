// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <algorithm>
#include <string>
#include <string_view>

#include "simulator/random_bits.h"

namespace bench {

/// What a sequencer adds to bases: headers, base-call errors and qualities in four bins.
class Sequencer {
public:
    explicit Sequencer(std::uint64_t seed) : m_random(seed) {}

    /// Goes on to the next place of the flow cell, as both headers of a pair tell it.
    void advance() {
        m_x += 1 + m_random.below(16);
        if (m_x > kWidth) {
            m_x = kMargin + m_random.below(16);
            ++m_y;
        }
        if (m_y > kHeight) {
            m_y = kMargin;
            ++m_tile;
        }
        m_place = "@A01234:77:HV7KTDSX5:1:" + std::to_string(m_tile) + ":" + std::to_string(m_x) +
                  ":" + std::to_string(m_y);
    }

    /// Appends the record of one read of the pair, with its errors. Bases are A, C, G and T.
    void appendRecord(std::string& text, char readNumber, std::string_view bases) {
        text.append(m_place).append(1, ' ').append(1, readNumber);
        text.append(":N:0:ATTACTCG+TATAGCCT\n").append(bases).append("\n+\n");
        const std::size_t qualityAt = text.size();
        text.append(bases.size(), 'F').append(1, '\n');
        lowerQualities(text.data() + qualityAt, bases.size());
        const std::size_t basesAt = qualityAt - 3 - bases.size();
        addErrors(text.data() + basesAt, text.data() + qualityAt, bases.size());
    }

private:
    static constexpr std::uint64_t kMargin = 1000;
    static constexpr std::uint64_t kWidth = 32'000;
    static constexpr std::uint64_t kHeight = 37'000;
    /// One base in a thousand is wrong, and one in twenty of these is not called at all.
    static constexpr std::uint64_t kBasesPerError = 1000;
    static constexpr std::uint64_t kErrorsPerN = 20;
    static constexpr std::uint64_t kBasesPerLowQuality = 50;

    /// Steps between events that come once in `mean` bases.
    std::size_t gap(std::uint64_t mean) { return 1 + m_random.below(2 * mean - 1); }

    /// Single low bases anywhere; one read in eight fades over its last two fifths.
    void lowerQualities(char* quality, std::size_t length) {
        for (std::size_t at = gap(kBasesPerLowQuality) - 1; at < length;
             at += gap(kBasesPerLowQuality)) {
            quality[at] = m_random.below(3) == 0 ? ',' : ':';
        }
        if (m_random.below(8) == 0) {
            const std::size_t fading = m_random.below(2 * length / 5 + 1);
            std::fill(quality + length - fading, quality + length - fading / 2, ':');
            std::fill(quality + length - fading / 2, quality + length, ',');
        }
    }

    void addErrors(char* bases, char* quality, std::size_t length) {
        for (; m_untilError < length; m_untilError += gap(kBasesPerError)) {
            if (m_random.below(kErrorsPerN) == 0) {
                bases[m_untilError] = 'N';
                quality[m_untilError] = '#';
                continue;
            }
            constexpr std::string_view kBasesTwice = "ACGTACGT";
            const std::size_t right = kBasesTwice.find(bases[m_untilError]);
            bases[m_untilError] = kBasesTwice[right + 1 + m_random.below(3)];
        }
        m_untilError -= length;
    }

    simulator::RandomBits m_random;
    std::string m_place;
    std::uint64_t m_tile = 1101;
    std::uint64_t m_x = kMargin;
    std::uint64_t m_y = kMargin;
    std::size_t m_untilError = 0;
};

} // namespace bench
