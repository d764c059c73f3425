// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
//
// How a patient's record begins and how it is copied. A run counts in the records of its catalogue,
// so every patient gets a deep copy of the whole; that costs one pass over it. Lists of result rows
// begin empty and not null, so that rules may append. Tested by summary_for_each_patient_test.cpp.
#include "run/summary_for_each_patient.h"

#include <cstddef>

#include "archive/deep_copy.h"

namespace run {

using archive::deepCopy;
using archive::RecordList;

namespace {

/// Most patients have a row per table.
constexpr std::size_t kRowsExpected = 1;

} // namespace

std::shared_ptr<SummaryForEachPatient>
SummaryForEachPatient::initWithMutDomains(const catalogue::MutDomains& catalogue) {
    auto summary = std::make_shared<SummaryForEachPatient>();
    summary->file1 = "";
    summary->file2 = "";
    summary->fastqFileDir = "";
    summary->patientNo = "";
    summary->mutDomains = deepCopy(catalogue);
    summary->germlineDNAResultMutAr =
        RecordList<calling::ReportGermlineDNA>::withCapacity(kRowsExpected);
    summary->somaticDNAResultMutAr =
        RecordList<calling::ReportSomaticDNA>::withCapacity(kRowsExpected);
    summary->germlineRNAResultMutAr =
        RecordList<calling::ReportGermlineRNA>::withCapacity(kRowsExpected);
    summary->somaticRNAResultMutAr =
        RecordList<calling::ReportSomaticRNA>::withCapacity(kRowsExpected);
    return summary;
}

std::shared_ptr<SummaryForEachPatient> SummaryForEachPatient::copyWithZone() const {
    auto copy = std::make_shared<SummaryForEachPatient>();
    copy->file1 = file1;
    copy->file2 = file2;
    copy->fastqFileDir = fastqFileDir;
    copy->patientNo = patientNo;
    copy->totalNumberOfReads = totalNumberOfReads;
    copy->readsFailedToBeMapped = readsFailedToBeMapped;
    copy->readsMapped = readsMapped;
    copy->mutDomains = deepCopy(mutDomains);
    copy->germlineDNAResultMutAr = deepCopy(germlineDNAResultMutAr);
    copy->somaticDNAResultMutAr = deepCopy(somaticDNAResultMutAr);
    copy->germlineRNAResultMutAr = deepCopy(germlineRNAResultMutAr);
    copy->somaticRNAResultMutAr = deepCopy(somaticRNAResultMutAr);
    return copy;
}

} // namespace run
