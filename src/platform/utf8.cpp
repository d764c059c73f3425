// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include "platform/utf8.h"

namespace platform {
namespace {

constexpr std::string_view kReplacementBytes = "\xEF\xBF\xBD";

/// What may follow a first byte: how many bytes, and the range of the first of them. The narrower
/// ranges keep out overlong forms, surrogates and what lies above U+10FFFF.
struct Sequence {
    std::size_t following;
    unsigned char lowestSecond;
    unsigned char highestSecond;
};

constexpr Sequence kNoSequence = {0, 0, 0};

Sequence sequenceOf(unsigned char first) {
    if (first >= 0xC2 && first <= 0xDF) {
        return {1, 0x80, 0xBF};
    }
    if (first >= 0xE0 && first <= 0xEF) {
        const unsigned char lowest = first == 0xE0 ? 0xA0 : 0x80;
        const unsigned char highest = first == 0xED ? 0x9F : 0xBF;
        return {2, lowest, highest};
    }
    if (first >= 0xF0 && first <= 0xF4) {
        const unsigned char lowest = first == 0xF0 ? 0x90 : 0x80;
        const unsigned char highest = first == 0xF4 ? 0x8F : 0xBF;
        return {3, lowest, highest};
    }
    return kNoSequence;
}

} // namespace

Utf8Part utf8PartAtFront(std::string_view bytes) {
    const auto first = static_cast<unsigned char>(bytes.front());
    if (first < 0x80) {
        return {1, true};
    }
    const Sequence sequence = sequenceOf(first);
    std::size_t size = 1;
    while (size <= sequence.following && size < bytes.size()) {
        const auto next = static_cast<unsigned char>(bytes[size]);
        const unsigned char lowest = size == 1 ? sequence.lowestSecond : 0x80;
        const unsigned char highest = size == 1 ? sequence.highestSecond : 0xBF;
        if (next < lowest || next > highest) {
            break;
        }
        ++size;
    }
    return {size, sequence.following > 0 && size == sequence.following + 1};
}

std::string toValidUtf8(std::string_view bytes) {
    std::string text;
    text.reserve(bytes.size());
    while (!bytes.empty()) {
        const Utf8Part part = utf8PartAtFront(bytes);
        text.append(part.isWhole ? bytes.substr(0, part.size) : kReplacementBytes);
        bytes.remove_prefix(part.size);
    }
    return text;
}

} // namespace platform
