// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
//
// A seed is a k-mer that a core and a read share: where there is one, the core may occur. This file
// says how a k-mer becomes a number. Two bits a base make a code of at most 32 bits; a
// multiplicative hash spreads it, so that its upper bits can choose a bucket (Knuth, The Art of
// Computer Programming, vol. 3, section 6.4: multiplication by about 2^32 divided by the golden
// ratio). Packing eight bases takes six operations and no table.
#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>

namespace matching {

/// How cores and reads are sampled: k-mers of `k` bases, and in a read one at every `stride`-th
/// position.
struct SeedShape {
    static constexpr std::size_t kMinK = 8;
    static constexpr std::size_t kMaxK = 16;

    std::size_t k = kMinK;
    std::size_t stride = 1;

    /// The shortest core that contains a sampled k-mer wherever it occurs in a read
    /// (seed_selection.cpp says why).
    std::size_t minCoreLength() const noexcept { return k + stride - 1; }
};

/// Eight bytes of a text as one number, the first one lowest.
inline std::uint64_t loadEightBytes(const char* text) noexcept {
    std::uint64_t bytes;
    std::memcpy(&bytes, text, sizeof bytes);
    return std::endian::native == std::endian::big ? __builtin_bswap64(bytes) : bytes;
}

/// Two bits of each of eight bases, the first one's lowest. They differ for A, C, G and T and are
/// the same for either case. Other bytes get the code of some base: a seed hit is verified anyway.
inline std::uint32_t packEightBases(const char* bases) noexcept {
    std::uint64_t code = loadEightBytes(bases) >> 1 & 0x0303030303030303u;
    code = (code | code >> 6) & 0x000F000F000F000Fu;
    code = (code | code >> 12) & 0x000000FF000000FFu;
    return static_cast<std::uint32_t>(code | code >> 24) & 0xFFFFu;
}

/// The bits of a code that belong to a k-mer's own bases.
constexpr std::uint32_t seedCodeMask(std::size_t k) noexcept {
    return 0xFFFFFFFFu >> (2 * (SeedShape::kMaxK - k));
}

/// The code of a k-mer. Reads 16 bytes, whatever k is.
inline std::uint32_t seedCode(const char* bases, std::size_t k) noexcept {
    return (packEightBases(bases) | packEightBases(bases + 8) << 16) & seedCodeMask(k);
}

/// Spreads a code over all bits, above all the upper ones. Both steps can be undone, so different
/// codes have different hashes.
inline constexpr std::uint32_t kHashFactor = 0x9E3779B1u;
inline constexpr int kHashShift = 15;
constexpr std::uint32_t hashOfSeedCode(std::uint32_t code) noexcept {
    const std::uint32_t product = code * kHashFactor;
    return product ^ product >> kHashShift;
}

/// A k-mer of a core, which begins `offset` bases into it. `record` is where the core is kept.
struct CoreSeed {
    std::uint32_t hash;
    std::uint32_t record;
    std::uint16_t offset;
};

/// A sampled k-mer of a read. `read` is the read's number in its group.
struct ReadSeed {
    const char* bases;
    std::uint16_t read;
    std::uint16_t position;
};

} // namespace matching
