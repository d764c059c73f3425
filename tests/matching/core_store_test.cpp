// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include "matching/core_store.h"

#include <gtest/gtest.h>

#include "matching/core_search.h"
#include "matching/record_text.h"
#include "matching/reverse_complement.h"

namespace matching {
namespace {

/// One core in its store.
class Kept {
public:
    Kept(std::string_view core, bool wildCard, Mate mate) : m_store(mate), m_core(core) {
        const OrientedCore oriented(core, wildCard, mate);
        EXPECT_TRUE(CoreStore::canKeep(oriented, core));
        m_store.keep(OrientedCore("ACGTACGTA", false, mate), "ACGTACGTA",
                     1); // not the first record
        m_record = m_store.keep(oriented, core, 7);
    }
    /// Whether it is found at `place` of a read that lies as in its file.
    bool stands(std::string_view read, std::size_t place) const {
        // What stands behind a read may look like the core.
        std::string text(read);
        text.append(m_core).append(RecordText::kReadableBeyond, 'A');
        const std::string_view alone = std::string_view(text).substr(0, read.size());
        const auto found = m_store.standsAt(m_record, alone, place);
        EXPECT_EQ(found.number, 7u);
        EXPECT_EQ(found.length, m_core.size());
        return found.stands;
    }

private:
    CoreStore m_store;
    std::string m_core;
    std::uint32_t m_record = 0;
};

bool stands(std::string_view core, bool wildCard, Mate mate, std::string_view read,
            std::size_t place) {
    return Kept(core, wildCard, mate).stands(read, place);
}

TEST(CoreStore, ComparesEveryLetterOfAPlainCore) {
    const std::string core = "ACGTTGCAACGGTTACATC"; // not whole words
    const std::string read = "TT" + core + "GG";
    EXPECT_TRUE(stands(core, false, Mate::read1, read, 2));
    EXPECT_FALSE(stands(core, false, Mate::read1, read, 1));
    for (std::size_t place = 2; place < 2 + core.size(); ++place) {
        std::string other = read;
        other[place] = other[place] == 'A' ? 'C' : 'A';
        EXPECT_FALSE(stands(core, false, Mate::read1, other, 2)) << place;
        other[place] = static_cast<char>(read[place] | 0x20);
        EXPECT_FALSE(stands(core, false, Mate::read1, other, 2)) << place;
    }
}

TEST(CoreStore, ComparesCoresOfEveryLength) {
    const std::string letters = "GATTACAGTCCATGCAAGCTTGGACCTATCGA";
    for (std::size_t length = 8; length <= 200; ++length) {
        std::string core;
        while (core.size() < length) {
            core += letters[(core.size() * core.size() / 3) % letters.size()];
        }
        const Kept kept(core, false, Mate::read1);
        EXPECT_TRUE(kept.stands("G" + core, 1)) << length;
        EXPECT_FALSE(kept.stands(core.substr(0, length - 1), 0)) << length;
        for (std::size_t place = 0; place < length; ++place) {
            std::string other = core;
            other[place] = 'N';
            EXPECT_FALSE(kept.stands(other, 0)) << place << " of " << length;
        }
    }
}

TEST(CoreStore, HeedsNoCaseInRead2) {
    EXPECT_TRUE(stands("AACCGGTTA", false, Mate::read2, "TaAccGgtt", 0));
    EXPECT_FALSE(stands("AACCGGTTA", false, Mate::read2, "TAACCGGTN", 0));
    // As close as a byte comes to a letter without being one.
    EXPECT_FALSE(stands("AACCGGTTA", false, Mate::read2,
                        "\x14"
                        "AACCGGTT",
                        0));
}

TEST(CoreStore, HoldsNoCoreThatEndsBeyondTheRead) {
    EXPECT_FALSE(stands("ACGTACGT", false, Mate::read1, "ACGTACGT", 1));
    EXPECT_FALSE(stands("ACGTACGT", false, Mate::read1, "ACGTACGT", 8));
    EXPECT_FALSE(stands("ACGTACGT", false, Mate::read1, "ACGTACG", 0));
}

TEST(CoreStore, AgreesWithTheRulesForEveryLetterOfAWildcardCore) {
    constexpr std::string_view kLetters = "ACGTNBDHKMRSVWYacgtnbdhkmrsvwy";
    for (const char coreLetter : kLetters) {
        const std::string core = std::string("ACGRACG") + coreLetter;
        const Kept inRead1(core, true, Mate::read1);
        const Kept inRead2(core, true, Mate::read2);
        for (int byte = 1; byte < 256; ++byte) {
            const std::string letter(1, static_cast<char>(byte));
            EXPECT_EQ(inRead1.stands("ACGAACG" + letter, 0), baseAgrees(letter[0], coreLetter))
                << byte << " against " << coreLetter;
            // Reverse-complemented, this is ACGAACG and the complement of the letter.
            EXPECT_EQ(inRead2.stands(letter + "CGTTCGT", 0),
                      baseAgrees(complement(letter[0]), coreLetter))
                << byte << " against " << coreLetter;
        }
    }
}

TEST(CoreStore, KeepsNoShortCoreAndNoOddLetterOfAWildcardCore) {
    const auto canKeep = [](std::string_view core, bool wildCard) {
        return CoreStore::canKeep(OrientedCore(core, wildCard, Mate::read1), core);
    };
    EXPECT_TRUE(canKeep("ACGTACGT", false));
    EXPECT_FALSE(canKeep("ACGTACG", false));
    EXPECT_TRUE(canKeep("ACGTACG-", false));
    EXPECT_FALSE(canKeep("ACGTACRQ", true));
}

} // namespace
} // namespace matching
