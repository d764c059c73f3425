// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace archive {

// What records are made of. A text or a list can be absent (null) or empty. These are different
// values, and an archive keeps them apart; rules mostly read an absent one as empty.

// --- Texts

/// A text of a record. The bytes are kept as they came; only a way out of the process makes them
/// valid UTF-8 (platform/unicode.h).
using Text = std::optional<std::string>;

/// The text, an absent one read as empty. The view lives as long as `text`.
inline std::string_view orEmpty(const Text& text) noexcept {
    return text ? std::string_view(*text) : std::string_view();
}

/// A copy of the text, an absent one read as empty.
inline std::string stringOrEmpty(const Text& text) {
    return text.value_or(std::string());
}

// --- Lists of records

/// An ordered list of shared records. A growable list takes further records; a fixed one, as the
/// copy of a list is, does not. An archive keeps the difference.
template <class Record>
class RecordList {
public:
    using Item = std::shared_ptr<Record>;
    using const_iterator = typename std::vector<Item>::const_iterator;

    /// An empty growable list.
    RecordList() = default;

    /// An empty growable list with room for `capacity` records.
    static RecordList withCapacity(std::size_t capacity) {
        RecordList list;
        list.m_items.reserve(capacity);
        return list;
    }

    /// A list of the given records, which stay shared with their other owners.
    static RecordList of(std::vector<Item> items, bool growable = true) {
        RecordList list;
        list.m_items = std::move(items);
        list.m_growable = growable;
        return list;
    }

    /// A fixed list that holds the very same records as `source`.
    static RecordList fixedCopyOf(const RecordList& source) { return of(source.m_items, false); }

    bool isGrowable() const noexcept { return m_growable; }
    std::size_t size() const noexcept { return m_items.size(); }
    bool empty() const noexcept { return m_items.empty(); }
    const Item& operator[](std::size_t index) const { return m_items[index]; }
    const Item& back() const { return m_items.back(); }
    const_iterator begin() const noexcept { return m_items.begin(); }
    const_iterator end() const noexcept { return m_items.end(); }

    /// Adds a record at the end. Throws std::logic_error on a fixed list.
    void append(Item item) {
        if (!m_growable) {
            throw std::logic_error("append to a fixed list");
        }
        m_items.push_back(std::move(item));
    }

private:
    std::vector<Item> m_items;
    bool m_growable = true;
};

/// A list of a record.
template <class Record>
using ListOf = std::optional<RecordList<Record>>;

/// The list, an absent one read as empty. The reference lives as long as `list`.
template <class Record>
const RecordList<Record>& orEmpty(const ListOf<Record>& list) {
    static const RecordList<Record> empty;
    return list ? *list : empty;
}

} // namespace archive
