// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>

#include "platform/sha256.h"
#include "run/summary_for_each_patient.h"

namespace report {

/// The fingerprint of one patient's results: SHA-256 over the canonical form of the patient's JSON
/// without the names and the directory of the files. The same for any number of threads, for plain
/// and .gz input, from a run and from a reopened document. 64 hexadecimal digits.
std::string patientDigest(const run::SummaryForEachPatient& patient);

/// The same of several patients, in their order: over the array of their records.
class ResultDigest {
public:
    /// Gives the patient's own fingerprint, as patientDigest() does.
    std::string add(const run::SummaryForEachPatient& patient);
    /// REQUIRES: called once, after the last add().
    std::string hex();

private:
    platform::Sha256 m_digest;
    bool m_empty = true;
};

/// That of all patients of a document.
std::string resultDigest(const run::PatientList& patients);

} // namespace report
