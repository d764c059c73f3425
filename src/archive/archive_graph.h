// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

namespace archive {

/// A reference to an object of an archive: its index in `ArchiveGraph::objects`. 0 is null.
struct Uid {
    std::uint32_t index = 0;
    bool operator==(const Uid&) const = default;
};

/// Something of a file that no record here can use. It does no harm until a place refers to it.
struct ArchiveForeign {
    /// For messages ("a date"); lives as long as the program.
    std::string_view what;
};

/// What stands in a record under a key: a boolean, an integer, a double, or a reference to an
/// object.
using ArchiveValue = std::variant<bool, std::int64_t, double, Uid, ArchiveForeign>;

/// A record: the name of its class and its keyed values in writing order. Names and keys live as
/// long as the program (the literals of a class's listing) or as the graph
/// (ArchiveGraph::internKey).
struct ArchiveRecord {
    std::string_view className;
    std::vector<std::pair<std::string_view, ArchiveValue>> fields;
};

struct ArchiveList {
    bool growable = true;
    std::vector<Uid> items;
};

/// Entries in writing order; keys are references to texts.
struct ArchiveDictionary {
    std::vector<std::pair<Uid, Uid>> entries;
};

struct ArchiveNull {};

/// One object: null, a text, a number object, a record, a list or a dictionary.
using ArchiveObject = std::variant<ArchiveNull, std::string, std::int64_t, ArchiveRecord,
                                   ArchiveList, ArchiveDictionary, ArchiveForeign>;

/// The objects of one keyed archive, each stored once however often it is referred to.
/// Index 0 is null. The byte form of an archive is made from this and read back to it.
struct ArchiveGraph {
    ArchiveGraph() : objects{ArchiveNull{}} {}
    ArchiveGraph(ArchiveGraph&&) = default;
    ArchiveGraph& operator=(ArchiveGraph&&) = default;

    /// The key as a view that lives as long as the graph, also when it is moved.
    std::string_view internKey(std::string_view key) {
        const auto known = m_keys.find(key);
        return known != m_keys.end() ? *known : *m_keys.emplace(key).first;
    }

    std::vector<ArchiveObject> objects;
    Uid root;

private:
    // A node-based set: its texts stay where they are.
    std::set<std::string, std::less<>> m_keys;
};

} // namespace archive
