// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <memory>
#include <optional>
#include <stdexcept>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "archive/nullable.h"

namespace archive {

/// Makes of records what an archive round trip makes of them: goes by the same listing of archived
/// fields (keyed_archiver.h), yet hands each value over at once. The archive of a large catalogue
/// would take several times the memory and the time of its copy.
class DeepCopier {
public:
    template <class Record>
    std::shared_ptr<Record> copyOf(const std::shared_ptr<Record>& source) {
        if (!source) {
            return nullptr;
        }
        const auto [known, isNew] = m_copies.try_emplace(source.get());
        std::shared_ptr<void>& kept = known->second;
        if (isNew) {
            auto copy = Record::forDecoding();
            copyFields(*source, *copy);
            kept = std::move(copy);
        } else if (!kept) {
            throw std::logic_error("deep copy: a record leads back to itself");
        }
        return std::static_pointer_cast<Record>(kept);
    }

    template <class Record>
    ListOf<Record> copyOf(const ListOf<Record>& source) {
        if (!source) {
            return std::nullopt;
        }
        auto copy = RecordList<Record>::withCapacity(source->size());
        for (const auto& item : *source) {
            if (!item) {
                throw std::logic_error("deep copy: a list holds no record at a place");
            }
            copy.append(copyOf(item));
        }
        return copy;
    }

    template <class Value>
    Value copyOf(const Value& source) {
        return source;
    }

private:
    struct FieldCollector {
        std::vector<const void*>& fields;

        template <class Field>
        void operator()(std::string_view /*key*/, const Field& field) {
            fields.push_back(&field);
        }
    };
    struct FieldFiller {
        DeepCopier& copier;
        std::vector<const void*>::const_iterator next;

        template <class Field>
        void operator()(std::string_view /*key*/, Field& field) {
            field = copier.copyOf(*static_cast<const Field*>(*next++));
        }
    };

    /// The listing of a class names the same fields in the same order for both.
    template <class Record>
    void copyFields(const Record& source, Record& copy) {
        std::vector<const void*> fields;
        FieldCollector collect{fields};
        Record::visitFields(source, collect);
        FieldFiller fill{*this, fields.begin()};
        Record::visitFields(copy, fill);
    }

    /// By their sources. Null while the copy is being made.
    std::unordered_map<const void*, std::shared_ptr<void>> m_copies;
};

/// A copy of a whole list that shares no record with it: what comes of encoding it into an archive
/// and decoding it at once. Records that are one in the source are one in the copy. Every list of
/// the copy is growable, also where it was fixed. A null list gives null.
///
/// This is the one deep copy of the system: every archived value arrives as it was, whatever the
/// records' own copy operations do. Throws std::logic_error for a list that holds a null record
/// and for a record that leads back to itself.
template <class Record>
ListOf<Record> deepCopy(const ListOf<Record>& list) {
    return DeepCopier().copyOf(list);
}

} // namespace archive
