// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <stdexcept>

#include "platform/keyed_archiver.h"
#include "platform/keyed_unarchiver.h"

namespace platform {

/// A copy of a whole list that shares no record with it, made by an archive round trip: encode,
/// then decode at once. Records that are one in the source are one in the copy. Every list of the
/// copy is growable, also where it was fixed. A null list gives null.
///
/// This is the one deep copy of the system: every archived value arrives as it was, whatever the
/// records' own copy operations do. Throws std::logic_error for a list that holds a null record.
template <class Record>
ListOf<Record> deepCopy(const ListOf<Record>& list) {
    KeyedArchiver archiver;
    const Uid root = archiver.encode(list);
    const ArchiveGraph graph = archiver.takeGraph(root);
    KeyedUnarchiver::Options options;
    options.everyListGrowable = true;
    KeyedUnarchiver unarchiver(graph, options);
    ListOf<Record> copy;
    unarchiver.decode(graph.root, copy);
    if (!unarchiver.status().ok()) {
        throw std::logic_error("deep copy: " + unarchiver.status().error().message);
    }
    return copy;
}

} // namespace platform
