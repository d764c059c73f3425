// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "run/summary_for_each_patient.h"

namespace support {

/// A domain with mutations of these names and counts; the first is its wild type or control.
inline std::shared_ptr<catalogue::MutDomain>
countedDomain(const std::string& name, const std::string& type,
              const std::vector<std::pair<std::string, std::int64_t>>& counts) {
    auto domain = std::make_shared<catalogue::MutDomain>();
    domain->name = name;
    domain->type = type;
    domain->mutationMutAr.emplace();
    for (const auto& [mutationName, match] : counts) {
        auto mutation = std::make_shared<catalogue::Mutation>();
        mutation->name = mutationName;
        mutation->match = match;
        domain->mutationMutAr->append(std::move(mutation));
    }
    return domain;
}

/// A domain whose mutations are called so.
inline std::shared_ptr<catalogue::MutDomain> calledDomain(const std::string& name,
                                                          const std::string& type,
                                                          const std::vector<std::string>& calls) {
    auto domain = countedDomain(
        name, type, std::vector<std::pair<std::string, std::int64_t>>(calls.size(), {name, 7}));
    for (std::size_t place = 0; place < calls.size(); ++place) {
        domain->mutationMutAr.value()[place]->posNegDetectedOrAlleleType = calls[place];
    }
    return domain;
}

inline catalogue::MutDomains
catalogueOf(std::vector<std::shared_ptr<catalogue::MutDomain>> domains) {
    return archive::RecordList<catalogue::MutDomain>::of(std::move(domains));
}

/// A patient with some reads, whose rows are added one by one.
struct PatientBuilder {
    std::shared_ptr<run::SummaryForEachPatient> patient =
        run::SummaryForEachPatient::initWithMutDomains(catalogue::MutDomains(std::in_place));

    explicit PatientBuilder(const std::string& number) {
        patient->patientNo = number;
        patient->file1 = "P" + number + "_S" + number + "_L001_R1_001.fastq";
        patient->file2 = "P" + number + "_S" + number + "_L001_R2_001.fastq";
        counts(1000, 900);
    }

    PatientBuilder& counts(std::int64_t total, std::int64_t mapped) {
        patient->totalNumberOfReads = total;
        patient->readsMapped = mapped;
        patient->readsFailedToBeMapped = total - mapped;
        return *this;
    }
    PatientBuilder& germlineDNA(const std::string& area, const std::string& alleles) {
        auto row = std::make_shared<calling::ReportGermlineDNA>();
        row->mutDomain = countedDomain(area, "Germline", {{area + "_wt", 800}, {area + "_del", 7}});
        row->areaSearched = area;
        row->allelicType = alleles;
        patient->germlineDNAResultMutAr->append(std::move(row));
        return *this;
    }
    PatientBuilder& somaticDNA(const std::string& area, const std::string& diagnosis,
                               const std::string& ratio = "", const std::string& comment = "") {
        auto row = std::make_shared<calling::ReportSomaticDNA>();
        row->mutDomain =
            countedDomain(area, "SomaticDNA", {{area + " wt", 1200}, {area + " G12D", 60}});
        row->areaSearched = area;
        row->diagnosis = diagnosis;
        row->mutantCellRatio = ratio;
        row->comment = comment;
        patient->somaticDNAResultMutAr->append(std::move(row));
        return *this;
    }
    PatientBuilder& germlineRNA(const std::string& gene, const std::string& diagnosis,
                                const std::string& reads = "0", const std::string& comment = "") {
        patient->germlineRNAResultMutAr->append(rnaRow<calling::ReportGermlineRNA>(
            countedDomain(gene, "germline_mRNA", {{gene, 900}}), gene, diagnosis, reads, comment));
        return *this;
    }
    PatientBuilder& somaticRNA(const std::string& gene, const std::string& diagnosis,
                               const std::string& reads = "0", const std::string& comment = "") {
        patient->somaticRNAResultMutAr->append(rnaRow<calling::ReportSomaticRNA>(
            countedDomain(gene, "fusion_RNA", {{"control", 500}, {gene, 12}}), gene, diagnosis,
            reads, comment));
        return *this;
    }

private:
    template <class Row>
    static std::shared_ptr<Row> rnaRow(std::shared_ptr<catalogue::MutDomain> domain,
                                       const std::string& gene, const std::string& diagnosis,
                                       const std::string& reads, const std::string& comment) {
        auto row = std::make_shared<Row>();
        row->mutDomain = std::move(domain);
        row->gene = gene;
        row->diagnosis = diagnosis;
        row->numberOfReads = reads;
        row->comment = comment;
        return row;
    }
};

} // namespace support
