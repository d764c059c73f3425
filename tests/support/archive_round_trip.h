// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "archive/keyed_archiver.h"
#include "archive/keyed_unarchiver.h"

namespace support {

/// Decodes a graph's root. Throws when the graph is faulty.
template <class Value>
Value decoded(const archive::ArchiveGraph& graph) {
    archive::KeyedUnarchiver unarchiver(graph);
    Value value;
    unarchiver.decode(graph.root, value);
    if (!unarchiver.status()) {
        throw std::runtime_error(unarchiver.status().error().message);
    }
    return value;
}

/// A record, or a list of them, encoded and decoded at once.
template <class Value>
Value archivedAndBack(const Value& value) {
    archive::KeyedArchiver archiver;
    const archive::Uid root = archiver.encode(value);
    return decoded<Value>(archiver.takeGraph(root));
}

/// The same through an archive that lacks one key of the record.
template <class Record>
std::shared_ptr<Record> archivedWithoutKey(const std::shared_ptr<Record>& record,
                                           std::string_view missing) {
    archive::KeyedArchiver archiver;
    const archive::Uid root = archiver.encode(record);
    archive::ArchiveGraph graph = archiver.takeGraph(root);
    auto& fields = std::get<archive::ArchiveRecord>(graph.objects[root.index]).fields;
    if (std::erase_if(fields, [&](const auto& field) { return field.first == missing; }) != 1) {
        throw std::runtime_error("no key " + std::string(missing));
    }
    return decoded<std::shared_ptr<Record>>(graph);
}

} // namespace support
