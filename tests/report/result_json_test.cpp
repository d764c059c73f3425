// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include "report/result_json.h"

#include <limits>
#include <memory>
#include <string>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

namespace {

using Json = nlohmann::ordered_json;

std::string jsonText(const run::PatientList& patients, std::int64_t row) {
    std::string text;
    const auto status = report::writeJson(patients, row, "", [&text](std::string_view piece) {
        text += piece;
        return platform::Status();
    });
    EXPECT_TRUE(status.ok());
    return text;
}

std::shared_ptr<catalogue::MutDomain> domainWithOneMutation() {
    auto mutation = std::make_shared<catalogue::Mutation>();
    mutation->name = "G12D";
    mutation->referenceFrequencyOfTheMutantReads = 0.001;
    mutation->allowableFalsePositiveRate = 1e-7;
    mutation->minimumRequiredNumberOfInformativeReads = 30;
    mutation->match = std::numeric_limits<std::int64_t>::max();
    auto domain = std::make_shared<catalogue::MutDomain>();
    domain->name = "KRAS";
    domain->type = "SomaticDNA";
    domain->canStopSearchIfMatched = true;
    domain->mutationMutAr = archive::RecordList<catalogue::Mutation>::of({mutation});
    return domain;
}

/// A patient with one somatic row; the other lists are null.
run::PatientList onePatient() {
    auto patient = std::make_shared<run::SummaryForEachPatient>();
    patient->file1 = "a";
    patient->patientNo = "";
    patient->totalNumberOfReads = 7;
    const auto domain = domainWithOneMutation();
    patient->mutDomains = archive::RecordList<catalogue::MutDomain>::of({domain});
    auto row = std::make_shared<calling::ReportSomaticDNA>();
    row->mutDomain = domain;
    row->diagnosis = "Positive";
    auto strayRow = std::make_shared<calling::ReportSomaticDNA>();
    patient->somaticDNAResultMutAr =
        archive::RecordList<calling::ReportSomaticDNA>::of({row, strayRow});
    return archive::RecordList<run::SummaryForEachPatient>::of({patient});
}

TEST(JsonExport, AnEmptyListGivesAnEmptyArray) {
    const run::PatientList none = archive::RecordList<run::SummaryForEachPatient>();
    EXPECT_EQ(Json::parse(jsonText(none, -1)),
              Json::parse(R"({"selectedPatientRowNo": -1, "summaryForEachPatientMutAr": []})"));
}

TEST(JsonExport, WritesEveryPropertyUnderItsNameInOrder) {
    EXPECT_EQ(jsonText(onePatient(), 0),
              R"({"selectedPatientRowNo":0,"summaryForEachPatientMutAr":[)"
              "\n"
              R"({"file1":"a","file2":null,"fastqFileDir":null,"patientNo":"",)"
              R"("totalNumberOfReads":7,"readsFailedToBeMapped":0,"readsMapped":0,)"
              R"("mutDomains":[{"name":"KRAS","type":"SomaticDNA","mutationMutAr":[{"name":"G12D",)"
              R"("referenceFrequencyOfTheMutantReads":0.001,"allowableFalsePositiveRate":1e-07,)"
              R"("allowableFalseNegativeRate":0.0,"minimumRequiredNumberOfInformativeReads":30,)"
              R"("seq":null,"seqContainsWildCard":false,"coreSeq":null,)"
              R"("coreSeqContainsWildCard":false,"before10bp":null,"after10bp":null,)"
              R"("strandRequiredToRead":null,"match":9223372036854775807,)"
              R"("posNegDetectedOrAlleleType":"","mutantCellRatio":"","comment":""}],)"
              R"("canStopSearchIfMatched":true,"totalNumberOfNormalReads":0,)"
              R"("totalNumberOfMutantReads":0}],"germlineDNAResultMutAr":null,)"
              R"("somaticDNAResultMutAr":[{"mutDomain":"KRAS","patientNo":null,)"
              R"("areaSearched":null,"diagnosis":"Positive","mutantCellRatio":null,)"
              R"("comment":null},{"mutDomain":null,"patientNo":null,"areaSearched":null,)"
              R"("diagnosis":null,"mutantCellRatio":null,"comment":null}],)"
              R"("germlineRNAResultMutAr":null,"somaticRNAResultMutAr":null})"
              "\n]}\n");
}

TEST(JsonExport, BytesThatAreNotUtf8BecomeReplacementCharacters) {
    const run::PatientList patients = onePatient();
    (*patients)[0]->file1 = "a\xff\"\n";
    const Json json = Json::parse(jsonText(patients, 0));
    EXPECT_EQ(json["summaryForEachPatientMutAr"][0]["file1"], "a\xEF\xBF\xBD\"\n");
}

TEST(JsonExport, ReportsTheFirstFailureOfItsSinkAndStops) {
    int calls = 0;
    const auto status = report::writeJson(onePatient(), 0, "", [&calls](std::string_view) {
        ++calls;
        return platform::Status(platform::Error{"disk full"});
    });
    ASSERT_FALSE(status.ok());
    EXPECT_EQ(status.error().message, "disk full");
    EXPECT_EQ(calls, 1);
}

} // namespace
