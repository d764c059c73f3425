// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <type_traits>
#include <unordered_map>
#include <utility>

#include "archive/keyed_archive.h"
#include "archive/nullable.h"

namespace archive {

/// Builds an `ArchiveGraph` from records.
///
/// A record class takes part by two static members:
///
///     static constexpr std::string_view kClassName = "Mutation";
///     template <class Self, class Visitor> static void visitFields(Self& self, Visitor& visit) {
///         visit("name", self.name);   // once for each archived field, in writing order
///     }
///
/// The keys are literals: the graph keeps views of them. A field is a Text, bool, std::int64_t,
/// double, std::shared_ptr to a record, or ListOf a record. Identity is kept: a record that is
/// reached twice is stored once, and equal texts share one object. A record that leads back to
/// itself can be written, but reading it back is refused.
class KeyedArchiver {
public:
    ArchiveGraph takeGraph(Uid root) {
        m_graph.root = root;
        return std::move(m_graph);
    }

    Uid encode(const Text& text) { return text ? encodeText(*text) : Uid{}; }
    Uid encodeText(std::string_view text);
    Uid encodeNumber(std::int64_t number);
    /// `fill` receives the dictionary and adds its entries.
    template <class Fill>
    Uid encodeDictionary(Fill fill) {
        const Uid uid = reserve();
        ArchiveDictionary dictionary;
        fill(dictionary);
        m_graph.objects[uid.index] = std::move(dictionary);
        return uid;
    }

    template <class Record>
    Uid encode(const std::shared_ptr<Record>& record) {
        if (!record) {
            return {};
        }
        const auto [known, isNew] = m_records.try_emplace(record.get(), Uid{});
        if (!isNew) {
            return known->second;
        }
        const Uid uid = reserve();
        known->second = uid;
        ArchiveRecord encoded{Record::kClassName, {}};
        FieldWriter write{*this, encoded};
        Record::visitFields(std::as_const(*record), write);
        m_graph.objects[uid.index] = std::move(encoded);
        return uid;
    }

    template <class Record>
    Uid encode(const ListOf<Record>& list) {
        if (!list) {
            return {};
        }
        const Uid uid = reserve();
        ArchiveList encoded{list->isGrowable(), {}};
        encoded.items.reserve(list->size());
        for (const auto& item : *list) {
            encoded.items.push_back(encode(item));
        }
        m_graph.objects[uid.index] = std::move(encoded);
        return uid;
    }

private:
    struct FieldWriter {
        KeyedArchiver& archiver;
        ArchiveRecord& record;

        template <class Field>
        void operator()(std::string_view key, const Field& field) {
            if constexpr (std::is_same_v<Field, bool> || std::is_same_v<Field, std::int64_t> ||
                          std::is_same_v<Field, double>) {
                record.fields.emplace_back(key, ArchiveValue(field));
            } else {
                record.fields.emplace_back(key, ArchiveValue(archiver.encode(field)));
            }
        }
    };

    /// An object gets its index when first met, before the objects it refers to.
    Uid reserve();

    ArchiveGraph m_graph;
    std::unordered_map<const void*, Uid> m_records;
    std::unordered_map<std::string, Uid> m_texts;
    std::unordered_map<std::int64_t, Uid> m_numbers;
};

} // namespace archive
