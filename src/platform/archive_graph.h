// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <string>
#include <utility>
#include <variant>
#include <vector>

namespace platform {

/// A reference to an object of an archive: its index in `ArchiveGraph::objects`. 0 is null.
struct Uid {
    std::uint32_t index = 0;
    bool operator==(const Uid&) const = default;
};

/// What stands in a record under a key: a boolean, an integer, a double, or a reference to an
/// object.
using ArchiveValue = std::variant<bool, std::int64_t, double, Uid>;

/// A record: the name of its class and its keyed values in writing order.
struct ArchiveRecord {
    std::string className;
    std::vector<std::pair<std::string, ArchiveValue>> fields;
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
                                   ArchiveList, ArchiveDictionary>;

/// The objects of one keyed archive, each stored once however often it is referred to.
/// Index 0 is null. The byte form of an archive is made from this and read back to it.
struct ArchiveGraph {
    std::vector<ArchiveObject> objects{ArchiveNull{}};
    Uid root;
};

} // namespace platform
