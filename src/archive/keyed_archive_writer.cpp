// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
//
// From the objects of a keyed archive to the property list that holds them. "$objects" begins with
// the graph's objects under their own numbers, so references need no table; the class entries
// follow behind them, in the order in which classes are met. Equal texts, numbers and references
// are stored once. The same graph gives the same bytes, so a document that is saved twice is one
// file. Time and memory are linear in the graph. Tested by keyed_archive_test.cpp.

#include <array>
#include <bit>
#include <cmath>
#include <optional>
#include <unordered_map>

#include "archive/keyed_archive.h"
#include "archive/property_list.h"
#include "platform/unicode.h"

namespace archive {

namespace {

using Index = PropertyList::Index;

/// Lays a graph out as a property list. Equal texts, numbers and references are one object of the
/// list, but never a number with a real or a boolean.
class ArchiveLayout {
public:
    explicit ArchiveLayout(const ArchiveGraph& graph) : m_graph(graph) {}

    PropertyList layOut() {
        PropertyList::Dictionary top;
        m_list.top = m_list.add(PropertyList::Dictionary{});
        top.entries.emplace_back(text("$version"), number(100000));
        top.entries.emplace_back(text("$archiver"), text("NSKeyedArchiver"));
        PropertyList::Dictionary roots;
        const Index rootsIndex = m_list.add(PropertyList::Dictionary{});
        roots.entries.emplace_back(text("root"), uid(m_graph.root));
        m_list.objects[rootsIndex] = std::move(roots);
        top.entries.emplace_back(text("$top"), rootsIndex);
        top.entries.emplace_back(text("$objects"), objects());
        m_list.objects[m_list.top] = std::move(top);
        return std::move(m_list);
    }

    bool allFinite() const noexcept { return m_allFinite; }

    Index operator()(const ArchiveNull&) { return text("$null"); }
    // Only reading makes them, so no archive that is written holds one.
    Index operator()(const ArchiveForeign&) { return text("$null"); }
    Index operator()(const std::string& value) {
        return value == "$null" ? textObject(value) : text(platform::toValidUtf8(value));
    }
    Index operator()(std::int64_t value) { return number(value); }

    Index operator()(const ArchiveRecord& record) {
        PropertyList::Dictionary dictionary;
        dictionary.entries.reserve(record.fields.size() + 1);
        for (const auto& [key, value] : record.fields) {
            const Index valueIndex =
                std::visit([this](auto field) { return scalar(field); }, value);
            dictionary.entries.emplace_back(text(key), valueIndex);
        }
        dictionary.entries.emplace_back(text("$class"), classReference(record.className, {}));
        return m_list.add(std::move(dictionary));
    }

    Index operator()(const ArchiveList& list) {
        PropertyList::Dictionary dictionary;
        dictionary.entries.emplace_back(text("NS.objects"), references(list.items));
        dictionary.entries.emplace_back(
            text("$class"), list.growable ? classReference("NSMutableArray", {"NSArray"})
                                          : classReference("NSArray", {}));
        return m_list.add(std::move(dictionary));
    }

    Index operator()(const ArchiveDictionary& source) {
        std::vector<Uid> keys;
        std::vector<Uid> values;
        for (const auto& [key, value] : source.entries) {
            keys.push_back(key);
            values.push_back(value);
        }
        PropertyList::Dictionary dictionary;
        dictionary.entries.emplace_back(text("NS.keys"), references(keys));
        dictionary.entries.emplace_back(text("NS.objects"), references(values));
        dictionary.entries.emplace_back(text("$class"),
                                        classReference("NSMutableDictionary", {"NSDictionary"}));
        return m_list.add(std::move(dictionary));
    }

private:
    /// A text that would read as null where it stood bare.
    Index textObject(std::string_view value) {
        PropertyList::Dictionary dictionary;
        dictionary.entries.emplace_back(text("NS.string"), text(value));
        dictionary.entries.emplace_back(text("$class"),
                                        classReference("NSMutableString", {"NSString"}));
        return m_list.add(std::move(dictionary));
    }

    /// The list under "$objects": the graph's objects under their own numbers, then the class
    /// entries.
    Index objects() {
        PropertyList::Array array;
        array.items.reserve(m_graph.objects.size());
        for (const auto& object : m_graph.objects) {
            array.items.push_back(std::visit(*this, object));
        }
        array.items.insert(array.items.end(), m_classEntries.begin(), m_classEntries.end());
        return m_list.add(std::move(array));
    }

    Index classReference(std::string_view name, const std::vector<std::string_view>& supers) {
        const auto [known, isNew] = m_classes.try_emplace(std::string(name), Uid{});
        if (isNew) {
            known->second.index =
                static_cast<std::uint32_t>(m_graph.objects.size() + m_classEntries.size());
            PropertyList::Array chain{{text(name)}};
            for (const std::string_view super : supers) {
                chain.items.push_back(text(super));
            }
            chain.items.push_back(text("NSObject"));
            PropertyList::Dictionary entry;
            entry.entries.emplace_back(text("$classname"), text(name));
            entry.entries.emplace_back(text("$classes"), m_list.add(std::move(chain)));
            m_classEntries.push_back(m_list.add(std::move(entry)));
        }
        return uid(known->second);
    }

    Index references(const std::vector<Uid>& uids) {
        PropertyList::Array array;
        array.items.reserve(uids.size());
        for (const Uid item : uids) {
            array.items.push_back(uid(item));
        }
        return m_list.add(std::move(array));
    }

    Index scalar(const ArchiveForeign&) { return uid({}); }
    Index scalar(Uid value) { return uid(value); }
    Index scalar(std::int64_t value) { return number(value); }
    Index scalar(bool value) {
        auto& known = m_booleans[value ? 1 : 0];
        if (!known) {
            known = m_list.add(value);
        }
        return *known;
    }
    Index scalar(double value) {
        m_allFinite = m_allFinite && std::isfinite(value);
        return shared(m_reals, std::bit_cast<std::uint64_t>(value), value);
    }
    Index number(std::int64_t value) { return shared(m_numbers, value, value); }
    Index uid(Uid value) { return shared(m_uids, value.index, value); }
    Index text(std::string_view value) {
        return shared(m_texts, std::string(value), std::string(value));
    }

    template <class Map, class Object>
    Index shared(Map& map, typename Map::key_type key, Object object) {
        const auto [known, isNew] = map.try_emplace(std::move(key), Index{0});
        if (isNew) {
            known->second = m_list.add(std::move(object));
        }
        return known->second;
    }

    const ArchiveGraph& m_graph;
    PropertyList m_list;
    std::unordered_map<std::string, Uid> m_classes;
    std::vector<Index> m_classEntries;
    std::unordered_map<std::string, Index> m_texts;
    std::unordered_map<std::int64_t, Index> m_numbers;
    std::unordered_map<std::uint64_t, Index> m_reals;
    std::unordered_map<std::uint32_t, Index> m_uids;
    std::array<std::optional<Index>, 2> m_booleans;
    bool m_allFinite = true;
};

} // namespace

platform::Result<std::string> writeKeyedArchive(const ArchiveGraph& graph) {
    ArchiveLayout layout(graph);
    const PropertyList list = layout.layOut();
    if (!layout.allFinite()) {
        return platform::Error{"a number that is not finite cannot be saved"};
    }
    return writeBinaryPropertyList(list);
}

} // namespace archive
