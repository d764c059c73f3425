// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

#include "archive/keyed_archive.h"
#include "platform/result.h"

namespace archive {

/// A property list as a flat table of objects that refer to each other by index, so that nothing is
/// expanded or walked by recursion, however an input nests or shares its objects.
struct PropertyList {
    using Index = std::uint32_t;
    struct Array {
        std::vector<Index> items;
    };
    struct Dictionary {
        std::vector<std::pair<Index, Index>> entries; ///< key and value, in file order
    };
    /// An object of a kind that no archive here uses, named for messages ("a date").
    struct Other {
        std::string_view kind;
    };
    /// Texts are valid UTF-8.
    using Object =
        std::variant<Other, bool, std::int64_t, double, std::string, Uid, Array, Dictionary>;

    std::vector<Object> objects;
    Index top = 0;

    Index add(Object object) {
        objects.push_back(std::move(object));
        return static_cast<Index>(objects.size() - 1);
    }
};

/// Reads a binary property list. Every count, size, offset and index is checked against the bytes
/// that are there before it is used; memory stays within a small multiple of the input. The message
/// of an error says what is wrong and where, without the file's name.
platform::Result<PropertyList> readBinaryPropertyList(std::string_view bytes);

/// The binary form. The same list gives the same bytes. REQUIRES: no Other in the list.
std::string writeBinaryPropertyList(const PropertyList& list);

/// Reads an XML property list, in which a reference is a dictionary with the one key "CF$UID".
/// Entities that the text declares itself, and nesting beyond a small bound, are errors.
platform::Result<PropertyList> readXmlPropertyList(std::string_view text);

} // namespace archive
