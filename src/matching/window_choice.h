// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include "matching/oriented_core.h"
#include "matching/small_counts.h"
#include "matching/window.h"

namespace matching {

/// The shape for cores of these lengths, which is a compromise: long strides need long cores, and a
/// few short ones among them had better be searched for one by one. Those are the ones shorter than
/// lettersThatShow().
WindowShape chooseShape(std::vector<std::size_t> coreLengths);

/// Chooses the windows by which cores are known: of each core the stretch that it shares with the
/// fewest others. First all cores are announced, then each is asked for its stretch.
class WindowChoice {
public:
    /// No window is chosen for more cores than this, so that no look at a read leads to more. All
    /// one-base neighbours of a long core share a window with 68 others: near its ends.
    static constexpr std::size_t kMostAlike = 80;

    /// `cores` is how many will come, roughly.
    WindowChoice(WindowShape shape, std::size_t cores);

    /// Whether the core is long enough and has a stretch that is not too ambiguous.
    bool canIndex(const OrientedCore& core) const;
    /// REQUIRES: canIndex().
    void announce(const OrientedCore& core);
    /// Where the core's stretch begins. Nothing for a core that cannot be known by its windows: the
    /// stretch repeats itself, or enough cores are known by one of them already.
    /// REQUIRES: all cores were announced.
    std::optional<std::size_t> choose(const OrientedCore& core);
    /// Appends the windows of the stretch that was chosen.
    void addWindows(const OrientedCore& core, std::size_t first, std::uint32_t record,
                    std::vector<CoreWindow>& windows) const;

private:
    std::size_t windowsIn(const OrientedCore& core) const noexcept;
    std::size_t textsAt(const OrientedCore& core, std::size_t offset) const;
    void weigh(const OrientedCore& core);
    std::size_t leastSharedStretch(const OrientedCore& core);
    void hashStretch(const OrientedCore& core, std::size_t first);
    bool canTakeHashes();
    template <class Use>
    void forEachText(const OrientedCore& core, std::size_t offset, Use use) const;

    WindowShape m_shape;
    /// How often windows were announced, by a part of their hash.
    SmallCounts m_announced;
    /// How often they were chosen; what falls together counts as one.
    SmallCounts m_chosen;
    unsigned m_announcedShift = 0;
    // Of the core that is asked for its stretch.
    std::vector<std::size_t> m_weights;
    std::vector<std::uint32_t> m_hashes;
};

} // namespace matching
