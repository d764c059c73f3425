// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
//
// Records are decoded by recursion, and the schema bounds its depth: a place accepts one class, and
// classes hold each other a few levels deep. A record that leads back to itself is met while it is
// still open, and is refused. A record that many places share is decoded once.
//
// Lists are decoded at every place that refers to them, as each place owns its list; and every
// place owns its texts. A small file could therefore ask for very much: a hundred trees may share
// one list of a million leaves. The limits count what is made, not what is stored. A reader of
// files gives them in proportion to the file.
//
// The first fault is kept and nothing is thrown: a visitor of fields has nobody to return an error
// to. Whoever decodes asks status() at the end. Tested by keyed_unarchiver_test.cpp.
#include "archive/keyed_unarchiver.h"

#include <cmath>
#include <optional>

namespace archive {

namespace {

constexpr double kTwoTo63 = 9223372036854775808.0;

} // namespace

KeyedUnarchiver::KeyedUnarchiver(const ArchiveGraph& graph, Options options)
    : m_graph(graph), m_slots(graph.objects.size()), m_options(options) {}

void KeyedUnarchiver::fail(std::string message) {
    if (m_status.ok()) {
        m_status = platform::Error{std::move(message)};
    }
}

bool KeyedUnarchiver::spend(std::size_t& left, std::size_t amount) {
    if (amount > left) {
        fail("the archive's objects repeat each other beyond what a document can hold");
        return false;
    }
    left -= amount;
    return true;
}

const ArchiveObject* KeyedUnarchiver::object(Uid uid) {
    // A missing key gives this reference, whatever a file has put in the place of its null.
    if (uid == Uid{}) {
        return nullptr;
    }
    if (uid.index >= m_graph.objects.size()) {
        fail("reference " + std::to_string(uid.index) + " lies beyond the archive's objects");
        return nullptr;
    }
    const ArchiveObject& found = m_graph.objects[uid.index];
    return std::holds_alternative<ArchiveNull>(found) ? nullptr : &found;
}

Uid KeyedUnarchiver::dictionaryValue(Uid dictionary, std::string_view key) {
    const ArchiveObject* found = object(dictionary);
    const auto* entries = found ? std::get_if<ArchiveDictionary>(found) : nullptr;
    if (!entries) {
        fail("the root object is not a dictionary");
        return {};
    }
    std::optional<Uid> result;
    for (const auto& [entryKey, value] : entries->entries) {
        const ArchiveObject* keyObject = object(entryKey);
        const auto* text = keyObject ? std::get_if<std::string>(keyObject) : nullptr;
        if (keyObject && !text) {
            fail("object " + std::to_string(entryKey.index) + " is not a text");
        }
        if (!text || *text != key) {
            continue;
        }
        if (result) {
            fail("the root dictionary holds \"" + std::string(key) + "\" twice");
        }
        result = value;
    }
    return result.value_or(Uid{});
}

void KeyedUnarchiver::decode(Uid uid, Text& text) {
    text.reset();
    const ArchiveObject* found = object(uid);
    if (!found) {
        return;
    }
    if (const auto* value = std::get_if<std::string>(found)) {
        if (spend(m_options.textBytes, value->size())) {
            text = *value;
        }
    } else {
        fail("object " + std::to_string(uid.index) + " is not a text");
    }
}

void KeyedUnarchiver::decode(Uid uid, std::int64_t& number) {
    number = 0;
    const ArchiveObject* found = object(uid);
    if (!found) {
        return;
    }
    if (const auto* value = std::get_if<std::int64_t>(found)) {
        number = *value;
    } else {
        fail("object " + std::to_string(uid.index) + " is not a whole number");
    }
}

KeyedUnarchiver::Slot* KeyedUnarchiver::open(Uid uid, std::string_view className) {
    const ArchiveObject* found = m_status.ok() ? object(uid) : nullptr;
    if (!found) {
        return nullptr;
    }
    const auto* record = std::get_if<ArchiveRecord>(found);
    if (!record || record->className != className) {
        fail("object " + std::to_string(uid.index) + " is not a " + std::string(className));
        return nullptr;
    }
    Slot& slot = m_slots[uid.index];
    if (slot.state == Slot::State::open) {
        fail("object " + std::to_string(uid.index) + " leads back to itself");
        return nullptr;
    }
    return &slot;
}

const ArchiveList* KeyedUnarchiver::openList(Uid uid) {
    const ArchiveObject* found = m_status.ok() ? object(uid) : nullptr;
    if (!found) {
        return nullptr;
    }
    const auto* list = std::get_if<ArchiveList>(found);
    if (!list) {
        fail("object " + std::to_string(uid.index) + " is not a list");
        return nullptr;
    }
    if (!spend(m_options.listElements, list->items.size())) {
        return nullptr;
    }
    return list;
}

const ArchiveValue* KeyedUnarchiver::find(const ArchiveRecord& record, std::string_view key) {
    for (const auto& [name, value] : record.fields) {
        if (name == key) {
            return &value;
        }
    }
    return nullptr;
}

Uid KeyedUnarchiver::reference(std::string_view key, const ArchiveValue& value) {
    if (const auto* uid = std::get_if<Uid>(&value)) {
        return *uid;
    }
    fail("the value of \"" + std::string(key) + "\" is not a reference");
    return {};
}

void KeyedUnarchiver::read(std::string_view key, const ArchiveValue& value, bool& field) {
    if (const auto* boolean = std::get_if<bool>(&value)) {
        field = *boolean;
        return;
    }
    const auto* number = std::get_if<std::int64_t>(&value);
    if (number && (*number == 0 || *number == 1)) {
        field = *number == 1;
        return;
    }
    fail("the value of \"" + std::string(key) + "\" is not a boolean");
}

void KeyedUnarchiver::read(std::string_view key, const ArchiveValue& value, std::int64_t& field) {
    if (const auto* number = std::get_if<std::int64_t>(&value)) {
        field = *number;
        return;
    }
    const auto* real = std::get_if<double>(&value);
    if (real && *real >= -kTwoTo63 && *real < kTwoTo63 && *real == std::trunc(*real)) {
        field = static_cast<std::int64_t>(*real);
        return;
    }
    fail("the value of \"" + std::string(key) + "\" is not a whole number");
}

void KeyedUnarchiver::read(std::string_view key, const ArchiveValue& value, double& field) {
    if (const auto* real = std::get_if<double>(&value)) {
        field = *real;
        return;
    }
    if (const auto* number = std::get_if<std::int64_t>(&value)) {
        field = static_cast<double>(*number);
        return;
    }
    fail("the value of \"" + std::string(key) + "\" is not a number");
}

} // namespace archive
