// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include "report/result_digest.h"

#include <memory>
#include <string>

#include <gtest/gtest.h>

#include "awkward_patients.h"
#include "platform/sha256.h"

namespace {

std::shared_ptr<run::SummaryForEachPatient> patient(const std::string& number) {
    auto made = std::make_shared<run::SummaryForEachPatient>();
    made->patientNo = number;
    made->file1 = "P_S1_L001_R1_001.fastq";
    made->file2 = "P_S1_L001_R2_001.fastq";
    made->fastqFileDir = "/reads";
    made->totalNumberOfReads = 9007199254740993;
    return made;
}

run::PatientList listOf(std::vector<std::shared_ptr<run::SummaryForEachPatient>> patients) {
    return archive::RecordList<run::SummaryForEachPatient>::of(std::move(patients));
}

// FIPS 180-4's own example.
TEST(Sha256, IsThatOfTheStandard) {
    EXPECT_EQ(platform::sha256("abc"),
              "ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad");
    platform::Sha256 pieces;
    pieces.add("a");
    pieces.add("");
    pieces.add("bc");
    EXPECT_EQ(pieces.hex(), platform::sha256("abc"));
}

TEST(ResultDigest, IsOfTheCanonicalRecordWithoutItsFiles) {
    EXPECT_EQ(
        report::patientDigest(*patient("1")),
        platform::sha256("{\"germlineDNAResultMutAr\":null,\"germlineRNAResultMutAr\":null,"
                         "\"mutDomains\":null,\"patientNo\":\"1\",\"readsFailedToBeMapped\":0,"
                         "\"readsMapped\":0,\"somaticDNAResultMutAr\":null,"
                         "\"somaticRNAResultMutAr\":null,"
                         "\"totalNumberOfReads\":9007199254740993}"));
}

TEST(ResultDigest, DoesNotSeeWhereTheFilesLay) {
    const auto moved = patient("1");
    moved->file1 = "Q.gz";
    moved->fastqFileDir = "/elsewhere";
    EXPECT_EQ(report::patientDigest(*moved), report::patientDigest(*patient("1")));
}

TEST(ResultDigest, SeesEveryOtherChange) {
    const auto other = patient("1");
    other->readsMapped = 1;
    EXPECT_NE(report::patientDigest(*other), report::patientDigest(*patient("1")));
    EXPECT_NE(report::patientDigest(*patient("2")), report::patientDigest(*patient("1")));
}

// Laboratories write fingerprints down: these values may never change.
TEST(ResultDigest, StaysWhatItWas) {
    EXPECT_EQ(report::patientDigest(*report::AwkwardPatients::patient()),
              "d9e30cad63cc4c098b7741ed176dc85b5cde80aa9c7bcf40a34238e9f86a2c85");
    EXPECT_EQ(report::resultDigest(report::AwkwardPatients::make()),
              "a9c1071cb29ef5dc7fc198fc1cf17a14901374c9422cd003619d431260c9a74d");
}

TEST(ResultDigest, OfAllPatientsIsOfTheArrayInItsOrder) {
    const auto one = patient("1");
    const auto two = patient("2");
    EXPECT_NE(report::resultDigest(listOf({one, two})), report::resultDigest(listOf({two, one})));
    EXPECT_NE(report::resultDigest(listOf({one})), report::patientDigest(*one));
    EXPECT_EQ(report::resultDigest(listOf({})), platform::sha256("[]"));
    EXPECT_EQ(report::resultDigest({}), platform::sha256("[]"));
}

} // namespace
