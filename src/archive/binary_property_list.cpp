// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
//
// The file: "bplist00", the objects one after the other, a table of their offsets, and a trailer of
// 32 bytes that says how wide offsets and references are and where the table lies:
//
//     | bplist00 | object | object | ... | offset | offset | ... | trailer |
//
// An object begins with a marker byte: its upper half is the kind, its lower half a width or a
// count; a count of 15 means that the count follows as an integer. Arrays and dictionaries hold
// references, which are places in the table. Numbers are big-endian.
//
// Files come from anywhere, so the reader trusts nothing:
// - Every offset, count and reference is checked against the bytes that are there before use.
// - Each object is read once, by its place in the table, into a flat list, and references stay
//   numbers. So nesting costs nothing, and a list that contains itself is only a list.
// - Objects of an honest file do not overlap: their bytes together fit before the table. A file
//   whose objects share bytes is refused; a few bytes could otherwise become any number of arrays.
// Time and memory are linear in the file. The writer's output depends on the list alone.
//
// Tested by property_list_test.cpp, with a file cut and changed at every byte.

#include <bit>
#include <limits>

#include "archive/property_list.h"
#include "platform/unicode.h"

namespace archive {

// --- Reading

namespace {

constexpr std::size_t kHeaderSize = 8;
constexpr std::size_t kTrailerSize = 32;

/// Thrown by the reader and caught in this file. What cannot be read shows many calls deep, and
/// nothing that was read so far is of use.
struct Fault {
    std::string message;
};

class BinaryReader {
public:
    explicit BinaryReader(std::string_view bytes) : m_bytes(bytes) {}

    PropertyList read() {
        readTrailer();
        PropertyList list;
        list.objects.reserve(m_objectCount);
        for (std::size_t index = 0; index < m_objectCount; ++index) {
            const std::uint64_t offset =
                bigEndian(m_tableOffset + index * m_offsetSize, m_offsetSize);
            if (offset < kHeaderSize || offset >= m_tableOffset) {
                throw Fault{"object " + std::to_string(index) + " lies outside the objects"};
            }
            list.objects.push_back(readObject(static_cast<std::size_t>(offset)));
        }
        list.top = m_top;
        return list;
    }

private:
    void readTrailer() {
        if (m_bytes.size() < kHeaderSize + kTrailerSize ||
            m_bytes.substr(0, kHeaderSize) != "bplist00") {
            throw Fault{"it is not a binary property list"};
        }
        const std::size_t trailer = m_bytes.size() - kTrailerSize;
        m_offsetSize = byteAt(trailer + 6);
        m_referenceSize = byteAt(trailer + 7);
        const std::uint64_t count = bigEndian(trailer + 8, 8);
        const std::uint64_t top = bigEndian(trailer + 16, 8);
        const std::uint64_t table = bigEndian(trailer + 24, 8);
        if (m_offsetSize < 1 || m_offsetSize > 8 || m_referenceSize < 1 || m_referenceSize > 8) {
            throw Fault{"its trailer holds impossible sizes"};
        }
        if (table < kHeaderSize || table > trailer || count == 0 ||
            count > (trailer - table) / m_offsetSize || top >= count ||
            count > std::numeric_limits<PropertyList::Index>::max()) {
            throw Fault{"its table of objects lies outside the file"};
        }
        m_objectCount = static_cast<std::size_t>(count);
        m_top = static_cast<PropertyList::Index>(top);
        m_tableOffset = static_cast<std::size_t>(table);
        m_bytesLeft = m_tableOffset - kHeaderSize;
    }

    PropertyList::Object readObject(std::size_t offset) {
        const unsigned marker = byteAt(offset);
        const unsigned low = marker & 0x0FU;
        switch (marker >> 4U) {
        case 0x0:
            return readSimple(marker, offset);
        case 0x1:
            return readInteger(offset, low);
        case 0x2:
            return readReal(offset, low);
        case 0x3:
            take(offset, 9);
            return PropertyList::Other{"a date"};
        case 0x4:
            countedBytes(offset, low, 1);
            return PropertyList::Other{"data"};
        case 0x5:
            return platform::toValidAscii(countedBytes(offset, low, 1));
        case 0x6:
            return platform::utf16BigEndianToUtf8(countedBytes(offset, low, 2));
        case 0x8:
            return readUid(offset, low);
        case 0xA:
            return readArray(offset, low);
        case 0xD:
            return readDictionary(offset, low);
        default:
            throw Fault{"byte " + std::to_string(offset) + " begins an object of an unknown kind"};
        }
    }

    PropertyList::Object readSimple(unsigned marker, std::size_t offset) {
        take(offset, 1);
        if (marker == 0x08 || marker == 0x09) {
            return marker == 0x09;
        }
        return PropertyList::Other{"an empty object"};
    }

    PropertyList::Object readInteger(std::size_t offset, unsigned widthLog) {
        if (widthLog > 4) {
            throw Fault{"byte " + std::to_string(offset) +
                        " begins an integer of an unknown width"};
        }
        const std::size_t width = std::size_t{1} << widthLog;
        take(offset, 1 + width);
        if (width < 8) {
            return static_cast<std::int64_t>(bigEndian(offset + 1, width));
        }
        const std::uint64_t value = bigEndian(offset + 1 + (width - 8), 8);
        if (width == 16) {
            const std::uint64_t upper = bigEndian(offset + 1, 8);
            const std::uint64_t extension = value >> 63U ? ~std::uint64_t{0} : 0;
            if (upper != extension) {
                return PropertyList::Other{"an integer beyond 64 bits"};
            }
        }
        return static_cast<std::int64_t>(value);
    }

    PropertyList::Object readReal(std::size_t offset, unsigned widthLog) {
        if (widthLog == 2) {
            take(offset, 5);
            return static_cast<double>(
                std::bit_cast<float>(static_cast<std::uint32_t>(bigEndian(offset + 1, 4))));
        }
        if (widthLog == 3) {
            take(offset, 9);
            return std::bit_cast<double>(bigEndian(offset + 1, 8));
        }
        throw Fault{"byte " + std::to_string(offset) + " begins a real of an unknown width"};
    }

    PropertyList::Object readUid(std::size_t offset, unsigned low) {
        const std::size_t width = low + 1;
        take(offset, 1 + width);
        const std::uint64_t value = width <= 8 ? bigEndian(offset + 1, width) : ~std::uint64_t{0};
        if (value > std::numeric_limits<std::uint32_t>::max()) {
            return PropertyList::Other{"a reference beyond 32 bits"};
        }
        return Uid{static_cast<std::uint32_t>(value)};
    }

    PropertyList::Object readArray(std::size_t offset, unsigned low) {
        const std::string_view references = countedBytes(offset, low, m_referenceSize);
        PropertyList::Array array;
        array.items.reserve(references.size() / m_referenceSize);
        for (std::size_t at = 0; at < references.size(); at += m_referenceSize) {
            array.items.push_back(reference(references, at));
        }
        return array;
    }

    PropertyList::Object readDictionary(std::size_t offset, unsigned low) {
        const std::string_view references = countedBytes(offset, low, 2 * m_referenceSize);
        const std::size_t half = references.size() / 2;
        PropertyList::Dictionary dictionary;
        dictionary.entries.reserve(half / m_referenceSize);
        for (std::size_t at = 0; at < half; at += m_referenceSize) {
            dictionary.entries.emplace_back(reference(references, at),
                                            reference(references, half + at));
        }
        return dictionary;
    }

    PropertyList::Index reference(std::string_view references, std::size_t at) const {
        const std::uint64_t index = bigEndian(
            static_cast<std::size_t>(references.data() - m_bytes.data()) + at, m_referenceSize);
        if (index >= m_objectCount) {
            throw Fault{"reference " + std::to_string(index) + " lies beyond the " +
                        std::to_string(m_objectCount) + " objects"};
        }
        return static_cast<PropertyList::Index>(index);
    }

    /// The bytes of a counted object of `unit` bytes an element, behind marker and count.
    std::string_view countedBytes(std::size_t offset, unsigned low, std::size_t unit) {
        std::uint64_t count = low;
        std::size_t start = offset + 1;
        if (low == 0x0F) {
            const unsigned marker = start < m_tableOffset ? byteAt(start) : 0;
            if (marker >> 4U != 0x1 || (marker & 0x0FU) > 3) {
                throw Fault{"the count at byte " + std::to_string(start) + " is not an integer"};
            }
            const std::size_t width = std::size_t{1} << (marker & 0x0FU);
            requireBeforeTable(start, 1 + width);
            count = bigEndian(start + 1, width);
            start += 1 + width;
        }
        if (start > m_tableOffset || count > (m_tableOffset - start) / unit) {
            throw Fault{"the object at byte " + std::to_string(offset) +
                        " is longer than the file"};
        }
        const std::size_t size = static_cast<std::size_t>(count) * unit;
        take(offset, start - offset + size);
        return m_bytes.substr(start, size);
    }

    void requireBeforeTable(std::size_t offset, std::size_t size) const {
        if (offset > m_tableOffset || size > m_tableOffset - offset) {
            throw Fault{"the object at byte " + std::to_string(offset) +
                        " is longer than the file"};
        }
    }

    /// Claims an object's bytes for it alone.
    void take(std::size_t offset, std::size_t size) {
        requireBeforeTable(offset, size);
        if (size > m_bytesLeft) {
            throw Fault{"its objects overlap"};
        }
        m_bytesLeft -= size;
    }

    unsigned byteAt(std::size_t offset) const {
        return static_cast<unsigned char>(m_bytes[offset]);
    }

    std::uint64_t bigEndian(std::size_t offset, std::size_t width) const {
        std::uint64_t value = 0;
        for (std::size_t i = 0; i < width; ++i) {
            value = value << 8U | byteAt(offset + i);
        }
        return value;
    }

    std::string_view m_bytes;
    std::size_t m_offsetSize = 0;
    std::size_t m_referenceSize = 0;
    std::size_t m_objectCount = 0;
    std::size_t m_tableOffset = 0;
    std::size_t m_bytesLeft = 0;
    PropertyList::Index m_top = 0;
};

} // namespace

platform::Result<PropertyList> readBinaryPropertyList(std::string_view bytes) {
    try {
        return BinaryReader(bytes).read();
    } catch (const Fault& fault) {
        return platform::Error{fault.message};
    }
}

// --- Writing

namespace {

/// Bytes that a number below or equal to `highest` needs: 1, 2, 4 or 8, the sizes that readers
/// know.
std::size_t widthFor(std::uint64_t highest) {
    return highest <= 0xFF ? 1 : highest <= 0xFFFF ? 2 : highest <= 0xFFFFFFFF ? 4 : 8;
}

class BinaryWriter {
public:
    explicit BinaryWriter(const PropertyList& list)
        // Strict readers want 2^(8 * size) to be greater than the number of objects itself.
        : m_list(list), m_referenceSize(widthFor(list.objects.size())) {}

    std::string write() {
        m_bytes = "bplist00";
        std::vector<std::uint64_t> offsets;
        offsets.reserve(m_list.objects.size());
        for (const auto& object : m_list.objects) {
            offsets.push_back(m_bytes.size());
            std::visit(*this, object);
        }
        const std::uint64_t table = m_bytes.size();
        const std::size_t offsetSize = widthFor(table);
        for (const std::uint64_t offset : offsets) {
            bigEndian(offset, offsetSize);
        }
        m_bytes.append(6, '\0');
        bigEndian(offsetSize, 1);
        bigEndian(m_referenceSize, 1);
        bigEndian(offsets.size(), 8);
        bigEndian(m_list.top, 8);
        bigEndian(table, 8);
        return std::move(m_bytes);
    }

    void operator()(const PropertyList::Other&) { bigEndian(0x00, 1); }
    void operator()(bool value) { bigEndian(value ? 0x09 : 0x08, 1); }

    void operator()(std::int64_t value) {
        // Widths below 8 bytes are unsigned: every negative number takes all 8.
        const auto bits = static_cast<std::uint64_t>(value);
        const std::size_t width = widthFor(bits);
        bigEndian(0x10U + static_cast<unsigned>(std::countr_zero(width)), 1);
        bigEndian(bits, width);
    }

    void operator()(double value) {
        bigEndian(0x23, 1);
        bigEndian(std::bit_cast<std::uint64_t>(value), 8);
    }

    void operator()(const std::string& text) {
        if (platform::isAscii(text)) {
            counted(0x50, text.size());
            m_bytes += text;
            return;
        }
        const std::string units = platform::utf8ToUtf16BigEndian(text);
        counted(0x60, units.size() / 2);
        m_bytes += units;
    }

    void operator()(const Uid& uid) {
        const std::size_t width = widthFor(uid.index);
        bigEndian(0x80U + width - 1, 1);
        bigEndian(uid.index, width);
    }

    void operator()(const PropertyList::Array& array) {
        counted(0xA0, array.items.size());
        for (const PropertyList::Index item : array.items) {
            bigEndian(item, m_referenceSize);
        }
    }

    void operator()(const PropertyList::Dictionary& dictionary) {
        counted(0xD0, dictionary.entries.size());
        for (const auto& [key, value] : dictionary.entries) {
            bigEndian(key, m_referenceSize);
        }
        for (const auto& [key, value] : dictionary.entries) {
            bigEndian(value, m_referenceSize);
        }
    }

private:
    void counted(unsigned marker, std::size_t count) {
        if (count < 0x0F) {
            bigEndian(marker + count, 1);
        } else {
            bigEndian(marker + 0x0FU, 1);
            (*this)(static_cast<std::int64_t>(count));
        }
    }

    void bigEndian(std::uint64_t value, std::size_t width) {
        for (std::size_t shift = 8 * width; shift > 0; shift -= 8) {
            m_bytes.push_back(static_cast<char>(value >> (shift - 8) & 0xFFU));
        }
    }

    const PropertyList& m_list;
    std::size_t m_referenceSize;
    std::string m_bytes;
};

} // namespace

std::string writeBinaryPropertyList(const PropertyList& list) {
    return BinaryWriter(list).write();
}

} // namespace archive
