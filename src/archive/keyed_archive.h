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

#include "platform/result.h"

namespace archive {

/// A reference to an object of an archive: its index in `ArchiveGraph::objects`. 0 is null.
struct Uid {
    std::uint32_t index = 0;
    bool operator==(const Uid&) const = default;
};

/// A part of a file that no record here can use. It does no harm until a place refers to it.
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

/// The bytes of a keyed archive: a binary property list with "$archiver", "$version", "$top" and
/// "$objects", as the platforms' standard unarchivers read it. The same graph gives the same bytes.
/// Texts leave as valid UTF-8 does (an invalid sequence becomes U+FFFD). Fails for a graph that
/// holds a number that is not finite: it has no use in a document.
platform::Result<std::string> writeKeyedArchive(const ArchiveGraph& graph);

/// Reads a keyed archive, binary or XML, that any standard keyed archiver wrote: lists,
/// dictionaries and texts in their growable and fixed forms, unknown keys, any order of objects.
/// Damaged and foreign input is an error whose message says what is wrong, without the file's name.
/// Never crashes; memory stays within a small multiple of the input.
platform::Result<ArchiveGraph> readKeyedArchive(std::string_view bytes);

} // namespace archive
