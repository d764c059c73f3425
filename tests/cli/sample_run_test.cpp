// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
//
// The program analyses the sample run in examples/ with the shipped catalogue, and its counts,
// calls and rows are those of the truth table that was written with the reads.
#include <algorithm>
#include <cmath>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

#include "program.h"

namespace {

using nlohmann::json;

const std::string kSource = VEXTA_SOURCE_DIR;
const std::string kSampleRun = kSource + "/examples/sample-run";
/// What the settings say before anybody changes them.
constexpr double kControlCopies = 100000.0;

/// A line of the truth table.
struct Truth {
    std::string patientNo;
    std::string domain;
    std::string mutation;
    std::string pairs;
    std::string intact;
    std::string call;

    bool isTotal() const { return domain == "total"; }
    bool isWholeDomain() const { return mutation == "*"; }
    bool isEntry() const { return !isTotal() && !isWholeDomain(); }
    std::string place() const { return "patient " + patientNo + ", " + domain + " " + mutation; }
};

std::vector<Truth> truthTable() {
    std::istringstream lines(support::readFile(kSampleRun + "/truth.tsv"));
    std::vector<Truth> table;
    std::string line;
    std::getline(lines, line);
    while (std::getline(lines, line)) {
        std::istringstream fields(line);
        std::string sample;
        Truth truth;
        for (std::string* field : {&sample, &truth.patientNo, &truth.domain, &truth.mutation,
                                   &truth.pairs, &truth.intact, &truth.call}) {
            std::getline(fields, *field, '\t');
        }
        table.push_back(truth);
    }
    // Else what is asked of every line would hold of none.
    EXPECT_FALSE(table.empty());
    return table;
}

const char* const kRowLists[] = {"germlineDNAResultMutAr", "somaticDNAResultMutAr",
                                 "germlineRNAResultMutAr", "somaticRNAResultMutAr"};

/// The word of a row that a reader looks for.
std::string verdictOf(const json& row) {
    return row.contains("allelicType") ? row["allelicType"] : row["diagnosis"];
}

/// What a row is about: the mutation when positive, else the domain.
std::string subjectOf(const json& row) {
    return row.contains("gene") ? row["gene"] : row["areaSearched"];
}

class SampleRun : public program::ProgramTest {
protected:
    SampleRun() {
        home().write("catalogue.txt",
                     support::readFile(kSource + "/resources/ReferenceNucleotideSequence.txt"));
        const program::Finished finished =
            run({"analyze-all", "--quiet", "--json", "-", kSampleRun});
        EXPECT_EQ(finished.status, 0) << finished.err;
        m_patients = json::parse(finished.out)["summaryForEachPatientMutAr"];
    }

    const json& patients() const { return m_patients; }

    const json& patient(const std::string& patientNo) const {
        for (const json& each : m_patients) {
            if (each["patientNo"] == patientNo) {
                return each;
            }
        }
        throw std::runtime_error("no patient " + patientNo);
    }

    const json& domainOf(const Truth& truth) const {
        for (const json& domain : patient(truth.patientNo)["mutDomains"]) {
            if (domain["name"] == truth.domain) {
                return domain;
            }
        }
        throw std::runtime_error("no domain at " + truth.place());
    }

    const json& mutationOf(const Truth& truth) const {
        for (const json& mutation : domainOf(truth)["mutationMutAr"]) {
            if (mutation["name"] == truth.mutation) {
                return mutation;
            }
        }
        throw std::runtime_error("no mutation at " + truth.place());
    }

    std::vector<json> rowsOf(const Truth& truth) const {
        std::vector<json> rows;
        for (const char* list : kRowLists) {
            for (const json& row : patient(truth.patientNo)[list]) {
                if (row["mutDomain"] == truth.domain) {
                    rows.push_back(row);
                }
            }
        }
        return rows;
    }

    // Parts of one test, so that one run serves them all.
    void expectCarriedMutationsAreCalled() const;
    void expectRatiosAreTwiceTheShareOfTheReads() const;
    void expectOnlyCarriedPositivesAreReported() const;
    void expectOtherDomainsHaveOneTrueRow() const;
    void expectDetectionLimitOfNegativeFusions() const;

private:
    json m_patients;
};

TEST_F(SampleRun, CountsWhatTheTruthTableSays) {
    for (const Truth& truth : truthTable()) {
        if (truth.isEntry()) {
            EXPECT_EQ(mutationOf(truth)["match"], std::stoll(truth.intact)) << truth.place();
        } else if (truth.isTotal()) {
            const json& record = patient(truth.patientNo);
            EXPECT_EQ(record["totalNumberOfReads"], std::stoll(truth.pairs)) << truth.place();
            EXPECT_EQ(record["readsMapped"], std::stoll(truth.intact)) << truth.place();
        }
    }
}

void SampleRun::expectCarriedMutationsAreCalled() const {
    for (const Truth& truth : truthTable()) {
        if (truth.isEntry() && truth.call != "-") {
            const std::string expected = truth.call == "nothing written" ? "" : truth.call;
            EXPECT_EQ(mutationOf(truth)["posNegDetectedOrAlleleType"], expected) << truth.place();
        }
    }
}

void SampleRun::expectRatiosAreTwiceTheShareOfTheReads() const {
    int positives = 0;
    for (const Truth& truth : truthTable()) {
        if (!truth.isEntry() || truth.call != "Positive" ||
            domainOf(truth)["type"] != "SomaticDNA") {
            continue;
        }
        ++positives;
        const double mutant = std::stod(truth.intact);
        const double normal = domainOf(truth)["mutationMutAr"][0]["match"];
        const std::string text = mutationOf(truth)["mutantCellRatio"];
        EXPECT_EQ(text.back(), '%');
        EXPECT_NEAR(std::stod(text), 200.0 * mutant / (normal + mutant), 0.051) << truth.place();
    }
    EXPECT_EQ(positives, 3);
}

void SampleRun::expectOnlyCarriedPositivesAreReported() const {
    std::multiset<std::string> expected;
    for (const Truth& truth : truthTable()) {
        if (truth.call == "Positive") {
            expected.insert(truth.patientNo + " " + truth.mutation);
        }
    }
    std::multiset<std::string> met;
    for (const json& each : patients()) {
        for (const char* list : kRowLists) {
            for (const json& row : each[list]) {
                if (verdictOf(row) == "Positive") {
                    met.insert(each["patientNo"].get<std::string>() + " " + subjectOf(row));
                }
            }
        }
    }
    EXPECT_EQ(met, expected);
}

void SampleRun::expectOtherDomainsHaveOneTrueRow() const {
    for (const Truth& truth : truthTable()) {
        if (!truth.isWholeDomain()) {
            continue;
        }
        const std::vector<json> rows = rowsOf(truth);
        ASSERT_EQ(rows.size(), 1U) << truth.place();
        EXPECT_EQ(verdictOf(rows[0]), truth.call) << truth.place();
        EXPECT_EQ(subjectOf(rows[0]), truth.domain) << truth.place();
    }
}

void SampleRun::expectDetectionLimitOfNegativeFusions() const {
    const std::vector<Truth> table = truthTable();
    const auto control = std::find_if(table.begin(), table.end(), [](const Truth& truth) {
        return truth.patientNo == "1" && truth.mutation == "IC_control";
    });
    ASSERT_NE(control, table.end());
    const double limit = (1.0 - std::pow(0.01, 1.0 / std::stod(control->intact))) * kControlCopies;
    const json row = rowsOf(*control).at(0);
    EXPECT_EQ(row["numberOfReads"], control->intact);
    EXPECT_EQ(row["comment"], "<" + std::to_string(static_cast<long>(limit)) + " copies");
}

TEST_F(SampleRun, CallsAndReportsWhatTheTruthTableSays) {
    expectCarriedMutationsAreCalled();
    expectRatiosAreTwiceTheShareOfTheReads();
    expectOnlyCarriedPositivesAreReported();
    expectOtherDomainsHaveOneTrueRow();
    expectDetectionLimitOfNegativeFusions();
}

TEST_F(SampleRun, ShowsEveryKindOfResultOfPlainAndCompressedPairs) {
    std::set<std::string> words;
    for (const json& each : patients()) {
        for (const char* list : kRowLists) {
            for (const json& row : each[list]) {
                words.insert(verdictOf(row));
            }
        }
        for (const json& domain : each["mutDomains"]) {
            for (const json& mutation : domain["mutationMutAr"]) {
                words.insert(mutation["posNegDetectedOrAlleleType"].get<std::string>());
            }
        }
    }
    EXPECT_THAT(words,
                testing::IsSupersetOf({"wt/wt", "wt/mut", "mut/mut", "Not Determined", "Positive",
                                       "Negative", "ND *1", "Detected", "NotDetected",
                                       "RNA degraded", "RNA not degraded", "Control Not Working"}));
    EXPECT_EQ(patient("3")["file1"], "DemoC_S3_L001_R1_001.fastq");
    EXPECT_EQ(patient("10")["file1"], "DemoD_S10_L001_R1_001.fastq.gz");
}

} // namespace
