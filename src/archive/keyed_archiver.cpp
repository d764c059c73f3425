// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
//
// An object gets its number when it is first met, before the objects that it refers to: the order
// that standard archivers write. Texts and number objects are numbered once for each value, records
// once for each address. Tested by keyed_archiver_test.cpp.
#include "archive/keyed_archiver.h"

#include <limits>
#include <stdexcept>

namespace archive {

Uid KeyedArchiver::reserve() {
    if (m_graph.objects.size() > std::numeric_limits<std::uint32_t>::max()) {
        throw std::length_error("more objects than an archive can number");
    }
    m_graph.objects.emplace_back();
    return Uid{static_cast<std::uint32_t>(m_graph.objects.size() - 1)};
}

Uid KeyedArchiver::encodeText(std::string_view text) {
    const auto [known, isNew] = m_texts.try_emplace(std::string(text), Uid{});
    if (isNew) {
        known->second = reserve();
        m_graph.objects[known->second.index] = std::string(text);
    }
    return known->second;
}

Uid KeyedArchiver::encodeNumber(std::int64_t number) {
    const auto [known, isNew] = m_numbers.try_emplace(number, Uid{});
    if (isNew) {
        known->second = reserve();
        m_graph.objects[known->second.index] = number;
    }
    return known->second;
}

} // namespace archive
