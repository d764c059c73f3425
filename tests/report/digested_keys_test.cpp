// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include "report/digested_keys.h"

#include <algorithm>
#include <string>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "awkward_patients.h"
#include "report/canonical_json.h"
#include "report/result_json.h"
#include "support/record_printer.h"

namespace report {
namespace {

using Json = nlohmann::ordered_json;

/// What fingerprints leave out of a record. A field that records get later belongs here, in the
/// list of its record below.
const std::vector<std::string> kPlacesOfFiles = {"file1", "file2", "fastqFileDir"};
const std::vector<std::string> kNothing;

template <class Record>
void expectEachFieldKnown(std::string_view list, const std::vector<std::string>& leftOut) {
    std::vector<std::string> digested;
    for (const std::string& key : support::keysOf(Record())) {
        if (std::find(leftOut.begin(), leftOut.end(), key) == leftOut.end()) {
            digested.push_back(key);
        }
    }
    const auto keys = digestedKeys(list);
    EXPECT_EQ(digested, std::vector<std::string>(keys.begin(), keys.end()))
        << Record::kClassName << " has other fields than fingerprints were ever made of. A new "
        << "field is in no fingerprint, so that those of older results stay as they are: name it "
        << "in this test as left out, and in docs/formats/json.md as well.";
}

TEST(DigestedKeys, AreTheFieldsThatRecordsHadFromTheFirst) {
    expectEachFieldKnown<run::SummaryForEachPatient>(kPatientsKey, kPlacesOfFiles);
    expectEachFieldKnown<catalogue::MutDomain>("mutDomains", kNothing);
    expectEachFieldKnown<catalogue::Mutation>("mutationMutAr", kNothing);
    expectEachFieldKnown<calling::ReportGermlineDNA>("germlineDNAResultMutAr", kNothing);
    expectEachFieldKnown<calling::ReportSomaticDNA>("somaticDNAResultMutAr", kNothing);
    expectEachFieldKnown<calling::ReportGermlineRNA>("germlineRNAResultMutAr", kNothing);
    expectEachFieldKnown<calling::ReportSomaticRNA>("somaticRNAResultMutAr", kNothing);
}

/// Gives every object in `value` a key that no record has today.
void addLaterKeys(Json& value) {
    for (Json& item : value) {
        if (item.is_structured()) {
            addLaterKeys(item);
        }
    }
    if (value.is_object()) {
        value["later"] = {{"name", 1}};
    }
}

TEST(DigestedKeys, LeaveNothingOfKeysThatComeLater) {
    Json today = patientJson(*AwkwardPatients::patient());
    Json later = today;
    addLaterKeys(later);
    ASSERT_NE(canonicalJson(later), canonicalJson(today));
    ASSERT_TRUE(later["mutDomains"][0]["mutationMutAr"][0].contains("later"));
    ASSERT_TRUE(later["somaticRNAResultMutAr"][0].contains("later"));
    keepDigestedKeys(today, kPatientsKey);
    keepDigestedKeys(later, kPatientsKey);
    EXPECT_EQ(canonicalJson(later), canonicalJson(today));
}

TEST(DigestedKeys, AreThoseOfListsOfRecordsOnly) {
    EXPECT_TRUE(digestedKeys("later").empty());
    EXPECT_TRUE(digestedKeys("").empty());
}

} // namespace
} // namespace report
