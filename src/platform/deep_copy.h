// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/keyed_archiver.h"
#include "platform/keyed_unarchiver.h"

namespace platform {

/// A copy of a whole list that shares no record with it, made by an archive round trip: encode,
/// then decode at once. Records that are one in the source are one in the copy. The copy of a list
/// is growable, also of a fixed one. A null list gives null.
///
/// This is the one deep copy of the system: every archived value arrives as it was, whatever the
/// records' own copy operations do.
template <class Record>
ListOf<Record> deepCopy(const ListOf<Record>& list) {
    KeyedArchiver archiver;
    const Uid root = archiver.encode(list);
    const ArchiveGraph graph = archiver.takeGraph(root);
    KeyedUnarchiver unarchiver(graph);
    ListOf<Record> copy;
    unarchiver.decode(graph.root, copy);
    return copy ? ListOf<Record>(RecordList<Record>::of({copy->begin(), copy->end()})) : copy;
}

} // namespace platform
