// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
//
// A digest that anybody can compute again from --json, in a few lines of any language
// (docs/formats/json.md). It is of results, so it leaves out where the files lay and what they were
// called. Tested by result_digest_test.cpp and, with a Python program, by digest_program_test.cpp.
#include "report/result_digest.h"

#include <nlohmann/json.hpp>

#include "report/canonical_json.h"
#include "report/result_json.h"

namespace report {
namespace {

std::string canonicalRecord(const run::SummaryForEachPatient& patient) {
    nlohmann::ordered_json record = patientJson(patient);
    for (const char* place : {"fastqFileDir", "file1", "file2"}) {
        record.erase(place);
    }
    return canonicalJson(record);
}

} // namespace

std::string patientDigest(const run::SummaryForEachPatient& patient) {
    return platform::sha256(canonicalRecord(patient));
}

void ResultDigest::add(const run::SummaryForEachPatient& patient) {
    m_digest.add(m_empty ? "[" : ",");
    m_digest.add(canonicalRecord(patient));
    m_empty = false;
}

std::string ResultDigest::hex() {
    m_digest.add(m_empty ? "[]" : "]");
    return m_digest.hex();
}

std::string resultDigest(const run::PatientList& patients) {
    ResultDigest digest;
    for (const auto& patient : archive::orEmpty(patients)) {
        digest.add(*patient);
    }
    return digest.hex();
}

} // namespace report
