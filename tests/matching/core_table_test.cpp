// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include "matching/core_table.h"

#include <gtest/gtest.h>

#include "matching/core_search.h"
#include "matching/reverse_complement.h"
#include "reads/record_text.h"

namespace matching {
namespace {

/// One core in its table.
class TableOfOne {
public:
    TableOfOne(std::string_view core, bool wildCard, Mate mate) : m_table(mate), m_core(core) {
        const OrientedCore oriented(core, wildCard, mate);
        EXPECT_TRUE(CoreTable::canHold(oriented, core));
        m_table.add(OrientedCore("ACGTACGTA", false, mate), "ACGTACGTA",
                    1); // not the first record
        m_record = m_table.add(oriented, core, 7);
    }
    /// Whether it occurs at `position` of a read that is as in its file.
    bool occurs(std::string_view read, std::size_t position) const {
        // The bytes behind a read may look like the core.
        std::string text(read);
        text.append(m_core).append(reads::RecordText::kReadableBeyond, 'A');
        const std::string_view alone = std::string_view(text).substr(0, read.size());
        const auto found = m_table.verify(m_record, alone, position);
        EXPECT_EQ(found.core, 7u);
        EXPECT_EQ(found.coreLength, m_core.size());
        return found.occurs;
    }

private:
    CoreTable m_table;
    std::string m_core;
    std::uint32_t m_record = 0;
};

bool occurs(std::string_view core, bool wildCard, Mate mate, std::string_view read,
            std::size_t position) {
    return TableOfOne(core, wildCard, mate).occurs(read, position);
}

TEST(CoreTable, ComparesEveryBaseOfAnUnambiguousCore) {
    const std::string core = "ACGTTGCAACGGTTACATC"; // not whole words
    const std::string read = "TT" + core + "GG";
    EXPECT_TRUE(occurs(core, false, Mate::read1, read, 2));
    EXPECT_FALSE(occurs(core, false, Mate::read1, read, 1));
    for (std::size_t position = 2; position < 2 + core.size(); ++position) {
        std::string other = read;
        other[position] = other[position] == 'A' ? 'C' : 'A';
        EXPECT_FALSE(occurs(core, false, Mate::read1, other, 2)) << position;
        other[position] = static_cast<char>(read[position] | 0x20);
        EXPECT_FALSE(occurs(core, false, Mate::read1, other, 2)) << position;
    }
}

TEST(CoreTable, ComparesCoresOfEveryLength) {
    const std::string bases = "GATTACAGTCCATGCAAGCTTGGACCTATCGA";
    for (std::size_t length = 8; length <= 200; ++length) {
        std::string core;
        while (core.size() < length) {
            core += bases[(core.size() * core.size() / 3) % bases.size()];
        }
        const TableOfOne table(core, false, Mate::read1);
        EXPECT_TRUE(table.occurs("G" + core, 1)) << length;
        EXPECT_FALSE(table.occurs(core.substr(0, length - 1), 0)) << length;
        for (std::size_t position = 0; position < length; ++position) {
            std::string other = core;
            other[position] = 'N';
            EXPECT_FALSE(table.occurs(other, 0)) << position << " of " << length;
        }
    }
}

TEST(CoreTable, IgnoresCaseInRead2) {
    EXPECT_TRUE(occurs("AACCGGTTA", false, Mate::read2, "TaAccGgtt", 0));
    EXPECT_FALSE(occurs("AACCGGTTA", false, Mate::read2, "TAACCGGTN", 0));
    // As close as a byte comes to a base without being one.
    EXPECT_FALSE(occurs("AACCGGTTA", false, Mate::read2,
                        "\x14"
                        "AACCGGTT",
                        0));
}

TEST(CoreTable, HoldsNoCoreThatEndsBeyondTheRead) {
    EXPECT_FALSE(occurs("ACGTACGT", false, Mate::read1, "ACGTACGT", 1));
    EXPECT_FALSE(occurs("ACGTACGT", false, Mate::read1, "ACGTACGT", 8));
    EXPECT_FALSE(occurs("ACGTACGT", false, Mate::read1, "ACGTACG", 0));
}

TEST(CoreTable, AgreesWithTheRulesForEveryCodeOfAWildcardCore) {
    constexpr std::string_view kCodes = "ACGTNBDHKMRSVWYacgtnbdhkmrsvwy";
    for (const char coreBase : kCodes) {
        const std::string core = std::string("ACGRACG") + coreBase;
        const TableOfOne inRead1(core, true, Mate::read1);
        const TableOfOne inRead2(core, true, Mate::read2);
        for (int byte = 1; byte < 256; ++byte) {
            const std::string text(1, static_cast<char>(byte));
            EXPECT_EQ(inRead1.occurs("ACGAACG" + text, 0), baseAgrees(text[0], coreBase))
                << byte << " against " << coreBase;
            // Reverse-complemented, this is ACGAACG and the complement of the byte.
            EXPECT_EQ(inRead2.occurs(text + "CGTTCGT", 0),
                      baseAgrees(complement(text[0]), coreBase))
                << byte << " against " << coreBase;
        }
    }
}

TEST(CoreTable, HoldsNoShortCoreAndNoOddByteOfAWildcardCore) {
    const auto canHold = [](std::string_view core, bool wildCard) {
        return CoreTable::canHold(OrientedCore(core, wildCard, Mate::read1), core);
    };
    EXPECT_TRUE(canHold("ACGTACGT", false));
    EXPECT_FALSE(canHold("ACGTACG", false));
    EXPECT_TRUE(canHold("ACGTACG-", false));
    EXPECT_FALSE(canHold("ACGTACRQ", true));
}

} // namespace
} // namespace matching
