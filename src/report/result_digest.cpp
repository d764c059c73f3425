// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
//
// A digest that anybody can compute again from --json, in a few lines of any language
// (docs/formats/json.md). It is of results, so it leaves out where the files lay and what they were
// called, and it is made to last, so it leaves out what records learn later (digested_keys.h).
// Tested by result_digest_test.cpp and, with the Python program of that page, by
// check_digest_page.py.
#include "report/result_digest.h"

#include <nlohmann/json.hpp>

#include "report/canonical_json.h"
#include "report/digested_keys.h"
#include "report/result_json.h"

namespace report {
namespace {

std::string canonicalRecord(const run::SummaryForEachPatient& patient) {
    nlohmann::ordered_json record = patientJson(patient);
    keepDigestedKeys(record, kPatientsKey);
    return canonicalJson(record);
}

} // namespace

std::string patientDigest(const run::SummaryForEachPatient& patient) {
    return platform::sha256(canonicalRecord(patient));
}

std::string ResultDigest::add(const run::SummaryForEachPatient& patient) {
    const std::string record = canonicalRecord(patient);
    m_digest.add(m_empty ? "[" : ",");
    m_digest.add(record);
    m_empty = false;
    return platform::sha256(record);
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
