// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
// Whatever records a document holds, saving and opening gives them back.
#include "document/result_document.h"

#include <regex>

#include <gtest/gtest.h>

#include "archive/deep_copy.h"
#include "random_document.h"
#include "support/archive_round_trip.h"
#include "support/record_printer.h"

namespace {

using document::decodeResultDocument;
using document::encodeResultDocument;
using document::RandomDocument;

constexpr std::uint64_t kDocuments = 40;

std::string encoded(const run::MainMutDictionary& dictionary) {
    auto bytes = encodeResultDocument(dictionary);
    EXPECT_TRUE(bytes.ok());
    return std::move(bytes).value();
}

run::MainMutDictionary roundTrip(const run::MainMutDictionary& dictionary) {
    auto again = decodeResultDocument(encoded(dictionary));
    EXPECT_TRUE(again.ok()) << again.error().message;
    return std::move(again).value();
}

std::vector<std::size_t> identities(const run::MainMutDictionary& dictionary) {
    document::IdentityCollector collector;
    collector.collect(dictionary.summaryForEachPatientMutAr);
    return collector.met;
}

TEST(ResultDocumentProperties, EveryValueComesBackAndInvalidTextAsTheReplacementCharacter) {
    for (std::uint64_t seed = 0; seed < kDocuments; ++seed) {
        const auto expected = RandomDocument(seed, RandomDocument::Texts::valid).make();
        const auto found = roundTrip(RandomDocument(seed).make());
        ASSERT_EQ(found.selectedPatientRowNo, expected.selectedPatientRowNo) << seed;
        ASSERT_EQ(support::printed(found.summaryForEachPatientMutAr),
                  support::printed(expected.summaryForEachPatientMutAr))
            << seed;
    }
}

TEST(ResultDocumentProperties, RecordsThatAreOneStayOneAndOthersStayApart) {
    for (std::uint64_t seed = 0; seed < kDocuments; ++seed) {
        const auto source = RandomDocument(seed).make();
        ASSERT_EQ(identities(roundTrip(source)), identities(source)) << seed;
    }
}

TEST(ResultDocumentProperties, TheSameRecordsGiveTheSameBytes) {
    for (std::uint64_t seed = 0; seed < kDocuments; ++seed) {
        const std::string bytes = encoded(RandomDocument(seed).make());
        ASSERT_EQ(encoded(RandomDocument(seed).make()), bytes) << seed;
        ASSERT_EQ(encoded(decodeResultDocument(bytes).value()), bytes) << seed;
    }
}

/// The printed records, as if each list were growable.
std::string withGrowableLists(const std::string& printed) {
    return std::regex_replace(printed, std::regex("fixed\\["), "growable[");
}

TEST(ResultDocumentProperties, ADeepCopyIsWhatAnArchiveRoundTripGivesWithGrowableLists) {
    for (std::uint64_t seed = 0; seed < kDocuments; ++seed) {
        const auto source = RandomDocument(seed).make();
        const auto& patients = source.summaryForEachPatientMutAr;
        const run::PatientList copy = archive::deepCopy(patients);
        ASSERT_EQ(support::printed(copy),
                  withGrowableLists(support::printed(support::archivedAndBack(patients))))
            << seed;
        ASSERT_EQ(identities({copy, 0}), identities(source)) << seed;
    }
}

TEST(ResultDocumentProperties, AMillionCharactersOfOneTextComeBack) {
    auto source = RandomDocument(3).make();
    auto patient = std::make_shared<run::SummaryForEachPatient>();
    patient->file1 = std::string(1'000'000, 'x') + "\xC3\xBC";
    source.summaryForEachPatientMutAr = run::PatientList::value_type::of({patient});
    EXPECT_EQ((*roundTrip(source).summaryForEachPatientMutAr)[0]->file1, patient->file1);
}

} // namespace
