// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace matching {

/// One of the reads of a pair. Each is searched as it lies in its file: for read 2, which is not
/// turned, the cores are reversed and complemented instead.
enum class Side : std::uint32_t { read1, read2 };

/// The bits that count in eight letters of a read: all in read 1; in read 2, whose turning heeds no
/// case, all but those of the case.
constexpr std::uint64_t letterBits(Side side) noexcept {
    return side == Side::read2 ? 0xDFDFDFDFDFDFDFDFu : 0xFFFFFFFFFFFFFFFFu;
}

/// Letters of a read that agree with several letters of a wildcard core.
inline constexpr std::string_view kReadCodes = "BDHKMRSVWY";

/// The letters that agree with a core's letter in a read of this side, by the bits that count.
/// Without kReadCodes: a read that holds one is searched for wildcard cores by other means.
std::string_view lettersAgreeingWith(char coreLetter, bool wildCard, Side side);

/// A core as it lies in the reads of one side.
class LyingCore {
public:
    LyingCore(std::string_view core, bool wildCard, Side side);

    std::size_t size() const noexcept { return m_size; }
    /// Whether any read can hold it.
    bool canBeFound() const noexcept { return m_fewest > 0; }
    /// Whether one letter agrees at each place; letters() holds them.
    bool isPlain() const noexcept { return m_fewest == 1 && m_most == 1; }
    /// So many more bytes can be read behind them.
    std::string_view letters() const noexcept { return {m_letters.data(), m_size}; }
    static constexpr std::size_t kReadableBehind = 8;
    /// What agrees at a place.
    std::string_view choices(std::size_t place) const {
        return isPlain() ? letters().substr(place, 1) : m_choices[place];
    }

private:
    void keepChoices(std::string_view core, bool wildCard, Side side);

    std::size_t m_size;
    /// With what can be read behind them. Nothing of use unless the core is plain.
    std::string m_letters;
    /// Nothing of a plain core.
    std::vector<std::string_view> m_choices;
    std::size_t m_fewest = 1;
    std::size_t m_most = 1;
};

} // namespace matching
