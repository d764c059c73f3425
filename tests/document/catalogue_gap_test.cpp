// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include "document/catalogue_gap.h"

#include <string>

#include <gtest/gtest.h>

namespace {

using document::CatalogueGap;

std::string noticeFor(const std::string& whom) {
    return "The catalogue could not be read for " + whom +
           ": no target was searched, every result of theirs is empty. Why.";
}

TEST(CatalogueGap, NamesASinglePatient) {
    CatalogueGap gap;
    gap.add(0, "7", "Why");
    EXPECT_EQ(gap.notice(), noticeFor("patient 7"));
}

TEST(CatalogueGap, JoinsPatientsThatFollowEachOtherInTheBatch) {
    CatalogueGap gap;
    gap.add(2, "3", "Why");
    gap.add(3, "10", "Why");
    EXPECT_EQ(gap.notice(), noticeFor("patients 3, 10"));
    gap.add(4, "11", "Why");
    gap.add(6, "20", "Why");
    EXPECT_EQ(gap.notice(), noticeFor("patients 3 to 11, 20"));
}

TEST(CatalogueGap, CountsWhatItDoesNotName) {
    CatalogueGap gap;
    for (std::size_t place = 0; place < 1000; place += 2) {
        gap.add(place, std::to_string(place + 1), "Why");
    }
    EXPECT_EQ(gap.notice(), noticeFor("patients 1, 3, 5, 7, 9 and 495 more"));
}

TEST(CatalogueGap, SaysWhyItWasMissingLast) {
    CatalogueGap gap;
    gap.add(0, "1", "Gone");
    gap.add(1, "2", "Why");
    EXPECT_EQ(gap.notice(), noticeFor("patients 1, 2"));
}

} // namespace
