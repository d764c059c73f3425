// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <memory>
#include <string_view>

#include "archive/nullable.h"
#include "calling/report_rows.h"
#include "catalogue/mut_domain.h"

namespace run {

/// Everything that one patient's analysis produces: file names, read counters, the patient's own
/// copy of the catalogue with its counts and calls, and the rows of the four result tables.
class SummaryForEachPatient : public calling::PatientRows {
public:
    static constexpr std::string_view kClassName = "SummaryForEachPatient";

    /// The plain record: every text and list null, every count 0.
    SummaryForEachPatient() = default;
    SummaryForEachPatient(const SummaryForEachPatient&) = delete;
    SummaryForEachPatient& operator=(const SummaryForEachPatient&) = delete;

    /// An empty record with a deep copy of `catalogue`: texts "", counts 0, four empty growable
    /// lists.
    static std::shared_ptr<SummaryForEachPatient>
    initWithMutDomains(const catalogue::MutDomains& catalogue);

    /// A copy that shares no record with this one. The catalogue and each list of rows are deep
    /// copied on their own, so a row of the copy refers to a domain of its own, not to one of the
    /// copy's list.
    std::shared_ptr<SummaryForEachPatient> copyWithZone() const;

    /// Names without directory.
    archive::Text file1;
    archive::Text file2;
    archive::Text fastqFileDir;
    archive::Text patientNo;
    /// Read pairs.
    std::int64_t totalNumberOfReads = 0;
    std::int64_t readsFailedToBeMapped = 0;
    std::int64_t readsMapped = 0;
    catalogue::MutDomains mutDomains;

    /// Names every archived field once, in archive order.
    template <class Self, class Visitor>
    static void visitFields(Self& self, Visitor& visit) {
        visit("file1", self.file1);
        visit("file2", self.file2);
        visit("fastqFileDir", self.fastqFileDir);
        visit("patientNo", self.patientNo);
        visit("totalNumberOfReads", self.totalNumberOfReads);
        visit("readsFailedToBeMapped", self.readsFailedToBeMapped);
        visit("readsMapped", self.readsMapped);
        visit("mutDomains", self.mutDomains);
        visit("germlineDNAResultMutAr", self.germlineDNAResultMutAr);
        visit("somaticDNAResultMutAr", self.somaticDNAResultMutAr);
        visit("germlineRNAResultMutAr", self.germlineRNAResultMutAr);
        visit("somaticRNAResultMutAr", self.somaticRNAResultMutAr);
    }

    static std::shared_ptr<SummaryForEachPatient> forDecoding() {
        return std::make_shared<SummaryForEachPatient>();
    }
};

/// The patients of a document, in order of completion.
using PatientList = archive::ListOf<SummaryForEachPatient>;

} // namespace run
