// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <memory>
#include <string_view>

#include "archive/nullable.h"
#include "catalogue/mut_domain.h"

namespace calling {

// One row each of a patient's four result tables. Every text is finished for display, and callOf()
// (call.h) tells what a diagnosis or allele type says. `mutDomain` is the domain that the row was
// made from, shared with the patient's catalogue. A new row is all null.

/// A row of the germline DNA table: the allele-typing domain.
class ReportGermlineDNA {
public:
    static constexpr std::string_view kClassName = "ReportGermlineDNA";

    std::shared_ptr<catalogue::MutDomain> mutDomain;
    /// The patient number on the patient's first DNA row, else "".
    archive::Text patientNo;
    archive::Text areaSearched;
    /// The word of an allele type, or of Call::notDetermined.
    archive::Text allelicType;

    template <class Self, class Visitor>
    static void visitFields(Self& self, Visitor& visit) {
        visit("mutDomain", self.mutDomain);
        visit("patientNo", self.patientNo);
        visit("areaSearched", self.areaSearched);
        visit("allelicType", self.allelicType);
    }
    static std::shared_ptr<ReportGermlineDNA> forDecoding() {
        return std::make_shared<ReportGermlineDNA>();
    }
};

/// A row of the somatic DNA table: a positive mutation, or the summary of a domain.
class ReportSomaticDNA {
public:
    static constexpr std::string_view kClassName = "ReportSomaticDNA";

    std::shared_ptr<catalogue::MutDomain> mutDomain;
    /// The patient number on the patient's first DNA row, else "".
    archive::Text patientNo;
    archive::Text areaSearched;
    /// The word of Call::positive, negative, ndNegative, tooFewReads, nd1 or nd2.
    archive::Text diagnosis;
    /// Per cent of cells as "60.0%", or "".
    archive::Text mutantCellRatio;
    /// Chance probability as "0.0000001000", or "".
    archive::Text comment;

    template <class Self, class Visitor>
    static void visitFields(Self& self, Visitor& visit) {
        visit("mutDomain", self.mutDomain);
        visit("patientNo", self.patientNo);
        visit("areaSearched", self.areaSearched);
        visit("diagnosis", self.diagnosis);
        visit("mutantCellRatio", self.mutantCellRatio);
        visit("comment", self.comment);
    }
    static std::shared_ptr<ReportSomaticDNA> forDecoding() {
        return std::make_shared<ReportSomaticDNA>();
    }
};

/// A row of the germline RNA table: the RNA quality control.
class ReportGermlineRNA {
public:
    static constexpr std::string_view kClassName = "ReportGermlineRNA";

    std::shared_ptr<catalogue::MutDomain> mutDomain;
    /// Always "" as built by a run.
    archive::Text patientNo;
    archive::Text gene;
    /// The word of Call::rnaNotDegraded or rnaDegraded.
    archive::Text diagnosis;
    archive::Text numberOfReads;
    archive::Text comment;

    template <class Self, class Visitor>
    static void visitFields(Self& self, Visitor& visit) {
        visit("mutDomain", self.mutDomain);
        visit("patientNo", self.patientNo);
        visit("gene", self.gene);
        visit("diagnosis", self.diagnosis);
        visit("numberOfReads", self.numberOfReads);
        visit("comment", self.comment);
    }
    static std::shared_ptr<ReportGermlineRNA> forDecoding() {
        return std::make_shared<ReportGermlineRNA>();
    }
};

/// A row of the somatic RNA table: a positive fusion, or the summary of a domain.
class ReportSomaticRNA {
public:
    static constexpr std::string_view kClassName = "ReportSomaticRNA";

    std::shared_ptr<catalogue::MutDomain> mutDomain;
    /// The patient number on the patient's first somatic RNA row, else "".
    archive::Text patientNo;
    archive::Text gene;
    /// The word of Call::positive, negative, rnaNotDegraded, rnaDegraded, controlNotWorking or
    /// nothingDetected.
    archive::Text diagnosis;
    archive::Text numberOfReads;
    /// The detection limit as "<4500 copies", or "".
    archive::Text comment;

    template <class Self, class Visitor>
    static void visitFields(Self& self, Visitor& visit) {
        visit("mutDomain", self.mutDomain);
        visit("patientNo", self.patientNo);
        visit("gene", self.gene);
        visit("diagnosis", self.diagnosis);
        visit("numberOfReads", self.numberOfReads);
        visit("comment", self.comment);
    }
    static std::shared_ptr<ReportSomaticRNA> forDecoding() {
        return std::make_shared<ReportSomaticRNA>();
    }
};

/// The four lists of rows of one patient. The patient's record extends it, so that calling fills
/// rows without knowing that record.
struct PatientRows {
    archive::ListOf<ReportGermlineDNA> germlineDNAResultMutAr;
    archive::ListOf<ReportSomaticDNA> somaticDNAResultMutAr;
    archive::ListOf<ReportGermlineRNA> germlineRNAResultMutAr;
    archive::ListOf<ReportSomaticRNA> somaticRNAResultMutAr;
};

} // namespace calling
