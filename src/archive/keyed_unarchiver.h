// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

#include "archive/keyed_archive.h"
#include "archive/nullable.h"
#include "platform/result.h"

namespace archive {

/// Reads records back from an `ArchiveGraph`, by the schema that the record classes give
/// (keyed_archiver.h): at each place only the one class that belongs there is accepted.
///
/// Identity is kept: one object of the graph becomes one record. A missing key leaves null, 0 or
/// false; an unknown key is ignored. A wrong kind of value, another class, a reference beyond the
/// graph, a null element of a list and a cycle are errors; the first one found is kept, and what is
/// decoded after it is of no use.
class KeyedUnarchiver {
public:
    struct Options {
        /// How much may be made of a graph. Sharing is legal, so a small file can ask for very
        /// much; a graph of this process needs no limits.
        std::size_t listElements = static_cast<std::size_t>(-1);
        std::size_t textBytes = static_cast<std::size_t>(-1);
    };

    /// `graph` must outlive the unarchiver.
    explicit KeyedUnarchiver(const ArchiveGraph& graph) : KeyedUnarchiver(graph, Options{}) {}
    KeyedUnarchiver(const ArchiveGraph& graph, Options options);

    /// Ok until the first fault.
    const platform::Status& status() const noexcept { return m_status; }

    /// The reference under a text key of the dictionary `dictionary`; null when the key is missing.
    Uid dictionaryValue(Uid dictionary, std::string_view key);

    void decode(Uid uid, Text& text);
    /// A number object; a null reference reads as 0.
    void decode(Uid uid, std::int64_t& number);

    template <class Record>
    void decode(Uid uid, std::shared_ptr<Record>& record) {
        record.reset();
        Slot* slot = open(uid, Record::kClassName);
        if (!slot) {
            return;
        }
        if (!slot->record) {
            slot->state = Slot::State::open;
            auto fresh = Record::forDecoding();
            FieldReader read{*this, std::get<ArchiveRecord>(m_graph.objects[uid.index])};
            Record::visitFields(*fresh, read);
            slot->record = std::move(fresh);
            slot->state = Slot::State::closed;
        }
        record = std::static_pointer_cast<Record>(slot->record);
    }

    template <class Record>
    void decode(Uid uid, ListOf<Record>& list) {
        list.reset();
        const ArchiveList* encoded = openList(uid);
        if (!encoded) {
            return;
        }
        std::vector<std::shared_ptr<Record>> items;
        for (const Uid item : encoded->items) {
            std::shared_ptr<Record> record;
            decode(item, record);
            if (!record) {
                fail("null where a " + std::string(Record::kClassName) + " is due in a list");
            }
            if (!m_status.ok()) {
                return;
            }
            items.push_back(std::move(record));
        }
        list = RecordList<Record>::of(std::move(items), encoded->growable);
    }

private:
    struct Slot {
        enum class State { untouched, open, closed };
        State state = State::untouched;
        std::shared_ptr<void> record;
    };

    struct FieldReader {
        KeyedUnarchiver& unarchiver;
        const ArchiveRecord& record;

        template <class Field>
        void operator()(std::string_view key, Field& field) {
            const ArchiveValue* value = unarchiver.find(record, key);
            if constexpr (std::is_same_v<Field, bool> || std::is_same_v<Field, std::int64_t> ||
                          std::is_same_v<Field, double>) {
                field = Field{};
                if (value) {
                    unarchiver.read(key, *value, field);
                }
            } else {
                unarchiver.decode(value ? unarchiver.reference(key, *value) : Uid{}, field);
            }
        }
    };

    /// The value under `key`, or nullptr.
    static const ArchiveValue* find(const ArchiveRecord& record, std::string_view key);
    Uid reference(std::string_view key, const ArchiveValue& value);
    void read(std::string_view key, const ArchiveValue& value, bool& field);
    void read(std::string_view key, const ArchiveValue& value, std::int64_t& field);
    void read(std::string_view key, const ArchiveValue& value, double& field);
    /// The slot of a record of that class, or nullptr for null and after a fault.
    Slot* open(Uid uid, std::string_view className);
    const ArchiveList* openList(Uid uid);
    /// The object, or nullptr for null and for a reference beyond the graph (a fault).
    const ArchiveObject* object(Uid uid);
    void fail(std::string message);
    /// Takes `amount` of what is left; a fault when there is not enough.
    bool spend(std::size_t& left, std::size_t amount);

    const ArchiveGraph& m_graph;
    std::vector<Slot> m_slots;
    /// Of the limits, what is left.
    Options m_options;
    platform::Status m_status;
};

} // namespace archive
