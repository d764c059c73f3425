// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include "report/run_record.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "report/result_digest.h"
#include "report/status_table.h"
#include "support/temp_dir.h"

namespace report {
namespace {

using document::PatientAccount;
using nlohmann::json;

std::shared_ptr<run::SummaryForEachPatient> someResult(const std::string& number) {
    auto summary =
        run::SummaryForEachPatient::initWithMutDomains(catalogue::MutDomains(std::in_place));
    summary->patientNo = number;
    summary->totalNumberOfReads = 200;
    summary->readsMapped = 150;
    return summary;
}

PatientAccount patient(const std::string& number, PatientAccount::Outcome outcome) {
    PatientAccount account;
    account.sample = "P" + number;
    account.number = number;
    account.file1 = "r1";
    account.file2 = "r2";
    account.outcome = outcome;
    if (outcome == PatientAccount::Outcome::analysed) {
        account.summary = someResult(number);
    }
    return account;
}

document::AnalysisAccount threePatients() {
    document::AnalysisAccount account;
    account.patients = {patient("1", PatientAccount::Outcome::analysed),
                        patient("2", PatientAccount::Outcome::failed),
                        patient("3", PatientAccount::Outcome::cancelled)};
    account.patients[1].lines = {"Cannot read\tx.", "second"};
    account.patients[0].run.warnings = {{run::Warning::Kind::notAssessable, "first"},
                                        {run::Warning::Kind::earlyEnd, "sec\nond"}};
    return account;
}

TEST(RunRecord, EveryPatientStandsInItWithItsOutcome) {
    const json record = json::parse(runRecord(threePatients(), {4, document::InputMode::direct}));
    ASSERT_EQ(record["patients"].size(), 3u);
    EXPECT_EQ(record["patients"][0]["outcome"], "analysed");
    EXPECT_EQ(record["patients"][0]["mappedShare"], 0.75);
    EXPECT_EQ(record["patients"][0]["resultDigest"], patientDigest(*someResult("1")));
    EXPECT_EQ(record["patients"][1]["outcome"], "failed");
    EXPECT_EQ(record["patients"][1]["lines"], json::parse(R"(["Cannot read\tx.", "second"])"));
    EXPECT_FALSE(record["patients"][1].contains("resultDigest"));
    EXPECT_EQ(record["patients"][2]["outcome"], "cancelled");
    EXPECT_FALSE(record["patients"][2].contains("inputs"));
    EXPECT_EQ(record["threads"], 4);
    EXPECT_EQ(record["schemaVersion"], 1);
}

TEST(RunRecord, NamesThatAreNoUtf8DoNotStopIt) {
    document::AnalysisAccount account = threePatients();
    account.patients[0].file1 = "bad\xff";
    account.unusedReads = {{"\xfe", "reason", false}};
    EXPECT_TRUE(json::accept(runRecord(account, {1, document::InputMode::direct})));
}

/// A document and its record, as they lie side by side.
class RecordBesideTest : public testing::Test {
protected:
    RecordBeside::State stateWith(const std::string& document, const std::string& recordFile) {
        m_directory.write("d.vexta", document);
        m_directory.write("d.vexta.record.json", recordFile);
        found = findRecord(m_directory.file("d.vexta"));
        return found.state;
    }

    const std::string run = runRecord(threePatients(), {1, document::InputMode::direct});
    const std::string text = recordText(run, "bytes");
    RecordBeside found;

private:
    support::TempDir m_directory;
};

TEST_F(RecordBesideTest, FitsTheBytesOfItsDocument) {
    EXPECT_EQ(stateWith("bytes", text), RecordBeside::State::fits) << found.message;
    EXPECT_EQ(json::parse(found.run), json::parse(run));
}

TEST_F(RecordBesideTest, DoesNotFitAnotherDocument) {
    EXPECT_EQ(stateWith("other bytes", text), RecordBeside::State::differs);
    EXPECT_EQ(found.run, "");
}

TEST_F(RecordBesideTest, DoesNotFitOnceItWasEdited) {
    std::string edited = text;
    const std::size_t place = edited.find("\"threads\": 1");
    ASSERT_NE(place, std::string::npos);
    edited.replace(place, 12, "\"threads\": 2");
    EXPECT_EQ(stateWith("bytes", edited), RecordBeside::State::differs);
    EXPECT_NE(found.message.find("was edited"), std::string::npos);
}

TEST_F(RecordBesideTest, IsUnreadableWhereItIsNoRecord) {
    const std::string deep(400'000, '[');
    for (const std::string& content :
         {std::string(), std::string("x"), std::string("[]"), std::string("{}"),
          std::string(R"({"run":7})"), deep,
          R"({"run":{"a":)" + deep + std::string(400'000, ']') + "}}"}) {
        EXPECT_EQ(stateWith("bytes", content), RecordBeside::State::unreadable)
            << content.substr(0, 20);
    }
}

TEST(RecordBesideADocument, MayBeMissing) {
    const support::TempDir directory;
    EXPECT_EQ(findRecord(directory.file("d.vexta")).state, RecordBeside::State::missing);
}

TEST(StatusTable, HasALineForEachPatientAndNoStrayTab) {
    const std::string table = statusTable(threePatients());
    EXPECT_EQ(table, "sample\tpatient\tfiles\toutcome\tmessage\tpairs\tmapped\t"
                     "not_assessable_targets\twarnings\n"
                     "P1\t1\tr1; r2\tanalysed\t\t200\t150\t0\tfirst; sec ond\n"
                     "P2\t2\tr1; r2\tfailed\tCannot read x.; second\t\t\t\t\n"
                     "P3\t3\tr1; r2\tcancelled\t\t\t\t\t\n");
}

TEST(RunRecord, AndStatusTableNameEveryLane) {
    document::AnalysisAccount account = threePatients();
    account.patients[0].furtherFiles = {{"b1", "b2"}, {"c1", "c2"}};
    account.patients[2].file1.clear();
    const json record = json::parse(runRecord(account, {2, document::InputMode::direct}));
    EXPECT_EQ(record["patients"][0]["furtherFiles"],
              json::parse(R"([{"file1":"b1","file2":"b2"},{"file1":"c1","file2":"c2"}])"));
    EXPECT_FALSE(record["patients"][1].contains("furtherFiles"));
    const std::string table = statusTable(account);
    EXPECT_NE(table.find("\tr1; r2; b1; b2; c1; c2\t"), std::string::npos) << table;
    EXPECT_NE(table.find("\t3\tr2\tcancelled\t"), std::string::npos) << table;
}

} // namespace
} // namespace report
