// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
//
// The file: "bplist00", the objects one after the other, a table of their offsets, and a trailer of
// 32 bytes that says how wide offsets and references are and where the table lies. Each object is
// read once, by its place in the table, into the flat list; references stay numbers. So nesting
// costs nothing, and a list that contains itself is only a list. Objects of an honest file do not
// overlap: their bytes together fit before the table. Holding to that bounds what a hostile file
// can make of shared bytes. Tested by property_list_test.cpp.

#include <bit>
#include <limits>

#include "archive/property_list.h"
#include "platform/unicode.h"

namespace archive {

namespace {

constexpr std::size_t kHeaderSize = 8;
constexpr std::size_t kTrailerSize = 32;

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

} // namespace archive
