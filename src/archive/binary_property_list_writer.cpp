// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include <bit>

#include "archive/property_list.h"
#include "platform/unicode.h"

namespace archive {

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
