// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
//
// The summary table has a line for each result. Who runs a batch from a script wants a line for
// each patient, above all for those without a result. Tested by run_record_test.cpp.
#include "report/status_table.h"

#include <algorithm>
#include <vector>

#include "platform/unicode.h"

namespace report {
namespace {

using document::PatientAccount;

constexpr const char* kHeadLine =
    "sample\tpatient\tfiles\toutcome\tmessage\tpairs\tmapped\tnot_assessable_targets\twarnings\n";

/// Without what would end a field or a line.
std::string field(std::string text) {
    std::replace_if(
        text.begin(), text.end(), [](char c) { return c == '\t' || c == '\n' || c == '\r'; }, ' ');
    return platform::toValidUtf8(text);
}

std::string joined(const std::vector<std::string>& texts) {
    std::string all;
    for (const std::string& text : texts) {
        all += (all.empty() ? "" : "; ") + text;
    }
    return all;
}

std::string warningsOf(const PatientAccount& patient) {
    std::vector<std::string> texts;
    for (const run::Warning& warning : patient.run.warnings) {
        texts.push_back(warning.text);
    }
    return joined(texts);
}

std::string filesOf(const PatientAccount& patient) {
    std::vector<std::string> names = {patient.file1, patient.file2};
    for (const auto& [read1, read2] : patient.furtherFiles) {
        names.insert(names.end(), {read1, read2});
    }
    names.erase(std::remove(names.begin(), names.end(), std::string()), names.end());
    return joined(names);
}

std::string lineOf(const PatientAccount& patient) {
    const run::SummaryForEachPatient* result = patient.summary.get();
    std::string line;
    for (const std::string& text :
         {patient.sample, patient.number, filesOf(patient),
          std::string(document::wordOf(patient.outcome)), joined(patient.lines),
          result ? std::to_string(result->totalNumberOfReads) : "",
          result ? std::to_string(result->readsMapped) : "",
          result ? std::to_string(patient.run.assessability.notAssessable) : "",
          warningsOf(patient)}) {
        line += field(text) + "\t";
    }
    line.back() = '\n';
    return line;
}

} // namespace

std::string statusTable(const document::AnalysisAccount& account) {
    std::string table = kHeadLine;
    for (const PatientAccount& patient : account.patients) {
        table += lineOf(patient);
    }
    return table;
}

} // namespace report
