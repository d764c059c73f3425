// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
//
// From a property list to the objects of a keyed archive. The format is flat: top dictionary,
// "$objects", an object, its list of references. So nothing here walks by recursion, and what a
// file nests deeper is never looked at.
//
// Objects that no record of ours can use (dates, data, class entries) become ArchiveForeign. They
// do no harm where nobody refers to them, and a place that refers to one learns what it met.
//
// Property lists share objects, so a small file can ask for much. Four limits follow from what
// honest archives look like:
// - Fields and references: as many as the file has bytes. Each has a byte or more of its own.
// - Bytes of text: 16 for each byte of the file. Equal texts may share theirs, and catalogues
//   repeat names; no document comes near this.
// - A key or a class name: 1024 bytes. Names are compared over and over.
// - A key stands once in a record: which of two values counts would be chance.
// With these, time and memory are linear in the file. KeyedUnarchiver limits what the graph is made
// into, in the same way.
//
// Tested by keyed_archive_test.cpp, with a file cut and changed at every byte.

#include <algorithm>
#include <cmath>
#include <optional>
#include <unordered_map>

#include "archive/keyed_archive.h"
#include "archive/property_list.h"

namespace archive {

namespace {

using Index = PropertyList::Index;
using Dictionary = PropertyList::Dictionary;

/// Thrown and caught in this file: one fault ends the whole reading.
struct ArchiveFault {
    std::string message;
};

class ArchiveReader {
public:
    /// `inputSize` in bytes bounds what is made of the list.
    ArchiveReader(const PropertyList& list, std::size_t inputSize)
        : m_list(list), m_elementsLeft(inputSize), m_textLeft(kTextPerByte * inputSize) {}

    ArchiveGraph read() {
        const auto* top = std::get_if<Dictionary>(&m_list.objects[m_list.top]);
        if (!top) {
            throw ArchiveFault{"it is a property list, but no keyed archive"};
        }
        checkArchiver(*top);
        const auto* objects = find<PropertyList::Array>(*top, "$objects");
        const auto* roots = find<Dictionary>(*top, "$top");
        const auto* root = roots ? find<Uid>(*roots, "root") : nullptr;
        if (!objects || !root) {
            throw ArchiveFault{"it is a keyed archive without objects or without a root"};
        }
        m_objects = objects;
        m_graph.objects.clear();
        m_graph.objects.reserve(objects->items.size());
        for (std::size_t index = 0; index < objects->items.size(); ++index) {
            m_graph.objects.push_back(readObject(index));
        }
        m_graph.root = *root;
        return std::move(m_graph);
    }

private:
    void checkArchiver(const Dictionary& top) {
        const auto* archiver = find<std::string>(top, "$archiver");
        if (!archiver || *archiver != "NSKeyedArchiver") {
            throw ArchiveFault{"it is a property list, but no keyed archive"};
        }
        const auto* version = find<std::int64_t>(top, "$version");
        if (!version || *version != 100000) {
            throw ArchiveFault{"its archive version is not 100000"};
        }
    }

    ArchiveObject readObject(std::size_t index) {
        m_current = index;
        const PropertyList::Object& object = m_list.objects[m_objects->items[index]];
        if (const auto* text = std::get_if<std::string>(&object)) {
            spend(m_textLeft, text->size());
            return *text == "$null" ? ArchiveObject(ArchiveNull{}) : ArchiveObject(*text);
        }
        if (const auto* number = std::get_if<std::int64_t>(&object)) {
            return *number;
        }
        if (const auto* real = std::get_if<double>(&object)) {
            return wholeNumber(*real);
        }
        if (const auto* boolean = std::get_if<bool>(&object)) {
            return std::int64_t{*boolean ? 1 : 0};
        }
        const auto* dictionary = std::get_if<Dictionary>(&object);
        return dictionary ? readInstance(*dictionary)
                          : ArchiveObject(ArchiveForeign{"not an object"});
    }

    static ArchiveObject wholeNumber(double real) {
        constexpr double kTwoTo63 = 9223372036854775808.0;
        if (real == std::trunc(real) && real >= -kTwoTo63 && real < kTwoTo63) {
            return static_cast<std::int64_t>(real);
        }
        return ArchiveForeign{"a number that is not whole"};
    }

    ArchiveObject readInstance(const Dictionary& dictionary) {
        spend(m_elementsLeft, dictionary.entries.size());
        const auto* classUid = find<Uid>(dictionary, "$class");
        if (!classUid) {
            return ArchiveForeign{"a dictionary without a class"};
        }
        const std::string_view name = className(*classUid);
        if (name == "NSArray" || name == "NSMutableArray") {
            return ArchiveList{name == "NSMutableArray", references(dictionary, "NS.objects")};
        }
        if (name == "NSDictionary" || name == "NSMutableDictionary") {
            return readDictionary(dictionary);
        }
        if (name == "NSString" || name == "NSMutableString") {
            return readText(dictionary);
        }
        return readRecord(name, dictionary);
    }

    ArchiveObject readDictionary(const Dictionary& dictionary) {
        const std::vector<Uid> keys = references(dictionary, "NS.keys");
        const std::vector<Uid> values = references(dictionary, "NS.objects");
        if (keys.size() != values.size()) {
            throw ArchiveFault{place() +
                               " is a dictionary with more keys than values or the reverse"};
        }
        ArchiveDictionary result;
        for (std::size_t i = 0; i < keys.size(); ++i) {
            result.entries.emplace_back(keys[i], values[i]);
        }
        return result;
    }

    ArchiveObject readText(const Dictionary& dictionary) {
        const auto* text = find<std::string>(dictionary, "NS.string");
        if (!text) {
            throw ArchiveFault{place() + " is a text object without a text"};
        }
        spend(m_textLeft, text->size());
        return *text;
    }

    ArchiveObject readRecord(std::string_view name, const Dictionary& dictionary) {
        ArchiveRecord record{name, {}};
        record.fields.reserve(dictionary.entries.size());
        std::vector<std::string_view> seen;
        for (const auto& [keyIndex, valueIndex] : dictionary.entries) {
            const std::string_view key = keyText(keyIndex);
            if (key == "$class") {
                continue;
            }
            seen.push_back(key);
            const PropertyList::Object& value = m_list.objects[valueIndex];
            if (const auto* uid = std::get_if<Uid>(&value)) {
                record.fields.emplace_back(m_graph.internKey(key), *uid);
            } else if (const auto* boolean = std::get_if<bool>(&value)) {
                record.fields.emplace_back(m_graph.internKey(key), *boolean);
            } else if (const auto* number = std::get_if<std::int64_t>(&value)) {
                record.fields.emplace_back(m_graph.internKey(key), *number);
            } else if (const auto* real = std::get_if<double>(&value);
                       real && std::isfinite(*real)) {
                record.fields.emplace_back(m_graph.internKey(key), *real);
            } else {
                record.fields.emplace_back(m_graph.internKey(key),
                                           ArchiveForeign{"of another kind"});
            }
        }
        requireDistinct(seen);
        return record;
    }

    void requireDistinct(std::vector<std::string_view>& keys) const {
        std::sort(keys.begin(), keys.end());
        if (std::adjacent_find(keys.begin(), keys.end()) != keys.end()) {
            throw ArchiveFault{place() + " holds a key twice"};
        }
    }

    std::vector<Uid> references(const Dictionary& dictionary, std::string_view key) {
        const auto* array = find<PropertyList::Array>(dictionary, key);
        if (!array) {
            throw ArchiveFault{place() + " has no \"" + std::string(key) + "\""};
        }
        spend(m_elementsLeft, array->items.size());
        std::vector<Uid> uids;
        uids.reserve(array->items.size());
        for (const Index item : array->items) {
            const auto* uid = std::get_if<Uid>(&m_list.objects[item]);
            if (!uid) {
                throw ArchiveFault{place() + " lists something that is not a reference"};
            }
            uids.push_back(*uid);
        }
        return uids;
    }

    /// The name in the class entry, looked up once for each class; it lives as long as the graph.
    std::string_view className(Uid uid) {
        const auto known = m_classNames.find(uid.index);
        if (known != m_classNames.end()) {
            return known->second;
        }
        if (uid.index >= m_objects->items.size()) {
            throw ArchiveFault{place() + " names a class beyond the archive's objects"};
        }
        const auto* entry = std::get_if<Dictionary>(&m_list.objects[m_objects->items[uid.index]]);
        const auto* name = entry ? find<std::string>(*entry, "$classname") : nullptr;
        if (!name) {
            throw ArchiveFault{place() + " names a class that has no name"};
        }
        requireNameLength(*name);
        return m_classNames.emplace(uid.index, m_graph.internKey(*name)).first->second;
    }

    /// The value under `key` if it is of that kind; nullptr when it is missing or of another.
    template <class Value>
    const Value* find(const Dictionary& dictionary, std::string_view key) const {
        const PropertyList::Object* found = nullptr;
        for (const auto& [keyIndex, valueIndex] : dictionary.entries) {
            if (keyText(keyIndex) != key) {
                continue;
            }
            if (found) {
                throw ArchiveFault{"a dictionary holds the key \"" + std::string(key) + "\" twice"};
            }
            found = &m_list.objects[valueIndex];
        }
        return found ? std::get_if<Value>(found) : nullptr;
    }

    std::string_view keyText(Index index) const {
        const auto* key = std::get_if<std::string>(&m_list.objects[index]);
        if (!key) {
            throw ArchiveFault{"the key of a dictionary is not a text"};
        }
        requireNameLength(*key);
        return *key;
    }

    void requireNameLength(std::string_view name) const {
        if (name.size() > kLongestName) {
            throw ArchiveFault{place() + " holds a key or a class name longer than any record has"};
        }
    }

    std::string place() const { return "object " + std::to_string(m_current); }

    /// Takes `amount` of what a limit leaves.
    void spend(std::size_t& left, std::size_t amount) const {
        if (amount > left) {
            throw ArchiveFault{"its objects repeat each other beyond what the file can hold"};
        }
        left -= amount;
    }

    static constexpr std::size_t kTextPerByte = 16;
    static constexpr std::size_t kLongestName = 1024;

    const PropertyList& m_list;
    const PropertyList::Array* m_objects = nullptr;
    std::unordered_map<std::uint32_t, std::string_view> m_classNames;
    std::size_t m_current = 0;
    std::size_t m_elementsLeft;
    std::size_t m_textLeft;
    ArchiveGraph m_graph;
};

} // namespace

platform::Result<ArchiveGraph> readKeyedArchive(std::string_view bytes) {
    auto list =
        bytes.substr(0, 6) == "bplist" ? readBinaryPropertyList(bytes) : readXmlPropertyList(bytes);
    if (!list) {
        return list.error();
    }
    try {
        return ArchiveReader(list.value(), bytes.size()).read();
    } catch (const ArchiveFault& fault) {
        return platform::Error{fault.message};
    }
}

} // namespace archive
