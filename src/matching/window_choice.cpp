// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include "matching/window_choice.h"

#include <algorithm>
#include <array>
#include <bit>
#include <limits>
#include <numeric>
#include <string_view>

namespace matching {
namespace {

/// Letters that tell the windows of a panel apart.
constexpr std::size_t kUsualLength = 16;
/// With a longer stride, cores that differ in one letter would have to be known by many windows
/// that do not show it, and share them with all their neighbours.
constexpr std::size_t kLongestStride = 20;
/// What searching a read for one core costs, in looks at a window; and windows' worth of letters in
/// a read. Both are rough: they only weigh a few short cores against the stride.
constexpr std::size_t kLooksPerSearch = 30;
constexpr std::size_t kLettersPerRead = 150;
/// Texts that a window of a wildcard core may stand for: those of four letters of two bases.
constexpr std::size_t kMostTexts = 16;
/// The weight of a window that stands for more, above that of any stretch that stands for fewer.
constexpr std::size_t kTooMuch = std::size_t{1} << 40;
constexpr std::size_t kMostCounted = std::numeric_limits<std::uint16_t>::max();
/// An offset fits 16 bits.
constexpr std::size_t kMostWindows = std::numeric_limits<std::uint16_t>::max();

/// The longest stride for cores of `shortest` letters and more. Half the letters are left to the
/// stride, and more letters are looked at where there are too many windows for fewer.
WindowShape shapeFor(std::size_t shortest, std::size_t cores) {
    WindowShape shape;
    shape.length = std::clamp(shortest / 2, WindowShape::kShortest, kUsualLength);
    const auto stride = [&] { return shortest - shape.length + 1; };
    while (shape.length < WindowShape::kLongest && stride() > shape.length / 2 &&
           (std::size_t{1} << (2 * shape.length)) / 64 < cores * stride()) {
        ++shape.length;
    }
    shape.stride = std::min(stride(), kLongestStride);
    return shape;
}

/// A power of two, large enough that few windows fall together.
std::size_t countsFor(std::size_t cores) {
    return std::bit_ceil(std::max<std::size_t>(64, cores * 128));
}

} // namespace

WindowShape chooseShape(std::vector<std::size_t> coreLengths) {
    std::sort(coreLengths.begin(), coreLengths.end());
    WindowShape best;
    std::size_t leastCost = std::numeric_limits<std::size_t>::max();
    std::size_t tried = 0;
    for (std::size_t shorter = 0; shorter < coreLengths.size(); ++shorter) {
        const std::size_t length = coreLengths[shorter];
        if (length == tried || length < WindowShape::kShortest) {
            continue;
        }
        tried = length;
        const WindowShape shape = shapeFor(length, coreLengths.size());
        const std::size_t cost = shorter * kLooksPerSearch + kLettersPerRead / shape.stride;
        if (cost < leastCost) {
            leastCost = cost;
            best = shape;
        }
    }
    return best;
}

WindowChoice::WindowChoice(WindowShape shape, std::size_t cores)
    : m_shape(shape), m_announced(countsFor(cores)), m_chosen(countsFor(cores)),
      m_announcedShift(32u - static_cast<unsigned>(std::countr_zero(countsFor(cores)))) {}

std::size_t WindowChoice::windowsIn(const OrientedCore& core) const noexcept {
    return core.size() < m_shape.length ? 0
                                        : std::min(core.size() - m_shape.length + 1, kMostWindows);
}

/// 0 if there are too many.
std::size_t WindowChoice::textsAt(const OrientedCore& core, std::size_t offset) const {
    std::size_t texts = 1;
    for (std::size_t i = offset; i < offset + m_shape.length && !core.isUnambiguous(); ++i) {
        texts *= core.choices(i).size();
        if (texts > kMostTexts) {
            return 0;
        }
    }
    return texts;
}

/// Calls `use` with the hash of each text that may stand where the window is.
template <class Use>
void WindowChoice::forEachText(const OrientedCore& core, std::size_t offset, Use use) const {
    if (core.isUnambiguous()) {
        static_assert(WindowShape::kLongest - WindowShape::kShortest <=
                      OrientedCore::kReadableBeyond);
        use(hashOfCode(windowCode(core.bases().data() + offset, m_shape.length)));
        return;
    }
    std::array<char, WindowShape::kLongest> text{};
    const std::size_t texts = textsAt(core, offset);
    for (std::size_t number = 0; number < texts; ++number) {
        std::size_t rest = number;
        for (std::size_t i = 0; i < m_shape.length; ++i) {
            const std::string_view choices = core.choices(offset + i);
            text[i] = choices[rest % choices.size()];
            rest /= choices.size();
        }
        use(hashOfCode(windowCode(text.data(), m_shape.length)));
    }
}

bool WindowChoice::canIndex(const OrientedCore& core) const {
    std::size_t inARow = 0;
    for (std::size_t offset = 0; offset < windowsIn(core); ++offset) {
        inARow = textsAt(core, offset) > 0 ? inARow + 1 : 0;
        if (inARow == m_shape.stride) {
            return true;
        }
    }
    return false;
}

void WindowChoice::announce(const OrientedCore& core) {
    for (std::size_t offset = 0; offset < windowsIn(core); ++offset) {
        forEachText(core, offset,
                    [&](std::uint32_t hash) { m_announced.increase(hash >> m_announcedShift); });
    }
}

/// Notes how often the texts at each offset were announced; a great number where there are too
/// many.
void WindowChoice::weigh(const OrientedCore& core) {
    m_weights.resize(windowsIn(core));
    for (std::size_t offset = 0; offset < m_weights.size(); ++offset) {
        std::size_t& weight = m_weights[offset];
        weight = textsAt(core, offset) == 0 ? kTooMuch : 0;
        forEachText(core, offset, [&](std::uint32_t hash) {
            weight += std::min(m_announced[hash >> m_announcedShift], kMostCounted);
        });
    }
}

std::size_t WindowChoice::leastSharedStretch(const OrientedCore& core) {
    weigh(core);
    const auto begin = m_weights.begin();
    const auto stride = static_cast<std::ptrdiff_t>(m_shape.stride);
    std::size_t sum = std::accumulate(begin, begin + stride, std::size_t{0});
    std::size_t least = sum;
    std::size_t first = 0;
    for (std::size_t next = 1; next + m_shape.stride <= m_weights.size(); ++next) {
        sum += m_weights[next + m_shape.stride - 1] - m_weights[next - 1];
        if (sum < least) {
            least = sum;
            first = next;
        }
    }
    return first;
}

void WindowChoice::hashStretch(const OrientedCore& core, std::size_t first) {
    m_hashes.clear();
    for (std::size_t offset = first; offset < first + m_shape.stride; ++offset) {
        forEachText(core, offset, [&](std::uint32_t hash) { m_hashes.push_back(hash); });
    }
}

/// Whether no text repeats itself nor is known by enough cores. Sorts them.
bool WindowChoice::canTakeHashes() {
    const auto isTaken = [&](std::uint32_t hash) {
        return m_chosen[hash >> m_announcedShift] >= kMostAlike;
    };
    std::sort(m_hashes.begin(), m_hashes.end());
    return std::none_of(m_hashes.begin(), m_hashes.end(), isTaken) &&
           std::adjacent_find(m_hashes.begin(), m_hashes.end()) == m_hashes.end();
}

std::optional<std::size_t> WindowChoice::choose(const OrientedCore& core) {
    const std::size_t first = leastSharedStretch(core);
    hashStretch(core, first);
    if (!canTakeHashes()) {
        return std::nullopt;
    }
    for (const std::uint32_t hash : m_hashes) {
        m_chosen.increase(hash >> m_announcedShift);
    }
    return first;
}

void WindowChoice::addWindows(const OrientedCore& core, std::size_t first, std::uint32_t record,
                              std::vector<CoreWindow>& windows) const {
    for (std::size_t offset = first; offset < first + m_shape.stride; ++offset) {
        forEachText(core, offset, [&](std::uint32_t hash) {
            windows.push_back({hash, record, static_cast<std::uint16_t>(offset)});
        });
    }
}

} // namespace matching
