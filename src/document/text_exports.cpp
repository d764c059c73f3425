// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
//
// The two texts for a spreadsheet. Others parse them, so every byte is fixed, odd lines included: a
// patient without rows leaves its line open, and one table stands twice. Numbers are integers and
// texts are finished, so no locale has a say. Tested by text_exports_test.cpp.
#include "document/text_exports.h"

#include <string_view>

#include "calling/call.h"
#include "catalogue/domain_words.h"
#include "platform/files.h"

namespace document {

namespace {

using archive::orEmpty;

constexpr std::string_view kSeparator = "----------------------------\n";

using calling::Call;
using calling::callOf;
using catalogue::DomainType;

using Patient = run::SummaryForEachPatient;
using PatientRefs = std::vector<const Patient*>;

/// Appends one piece after the other.
template <class... Pieces>
void append(std::string& text, const Pieces&... pieces) {
    (text.append(pieces), ...);
}

std::string cell(const archive::Text& text) {
    return std::string(orEmpty(text));
}

// --- Counts

void appendCounts(std::string& text, const Patient& patient) {
    append(text, cell(patient.file1), "\n", cell(patient.file2), "\n");
    append(text, "TotalNumberOfReads\t", std::to_string(patient.totalNumberOfReads), "\n");
    append(text, "ReadsMapped\t", std::to_string(patient.readsMapped), "\n");
    append(text, "ReadsFailedToBeMapped\t", std::to_string(patient.readsFailedToBeMapped), "\n\n");
    for (const auto& domain : orEmpty(patient.mutDomains)) {
        for (const auto& mutation : orEmpty(domain->mutationMutAr)) {
            append(text, cell(mutation->name), "\t", std::to_string(mutation->match), "\n");
        }
    }
    append(text, kSeparator);
}

void appendColumnHeads(std::string& text, const catalogue::MutDomain& domain) {
    const std::string name = cell(domain.name);
    switch (catalogue::typeOf(domain)) {
    case DomainType::germline:
        append(text, name, " wt\t", name, " mut\t");
        break;
    case DomainType::somaticDNA:
        append(text, name, " norm\t", name, " mut\t");
        break;
    case DomainType::countedGermlineRNA:
    case DomainType::countedFusionMRNA:
        append(text, name, "\t");
        break;
    default:
        break; // Deliberate: no column, also for the RNA domains that are called
    }
}

void appendDomainCounts(std::string& text, const catalogue::MutDomain& domain) {
    const std::int64_t normal = domain.totalNumberOfNormalReads;
    const std::int64_t mutant = domain.totalNumberOfMutantReads;
    switch (catalogue::typeOf(domain)) {
    case DomainType::germline:
    case DomainType::somaticDNA:
        append(text, std::to_string(normal), "\t", std::to_string(mutant), "\t");
        break;
    case DomainType::countedGermlineRNA:
        append(text, std::to_string(normal), "\t");
        break;
    case DomainType::countedFusionMRNA:
        append(text, std::to_string(normal + mutant), "\t");
        break;
    default:
        break;
    }
}

void appendCountTable(std::string& text, const run::PatientList& patients,
                      const PatientRefs& selected) {
    append(text, "Patient #\t");
    if (!orEmpty(patients).empty()) {
        for (const auto& domain : orEmpty(orEmpty(patients)[0]->mutDomains)) {
            appendColumnHeads(text, *domain);
        }
    }
    append(text, "\n");
    for (const Patient* patient : selected) {
        append(text, cell(patient->patientNo), "\t");
        for (const auto& domain : orEmpty(patient->mutDomains)) {
            appendDomainCounts(text, *domain);
        }
        append(text, "\n");
    }
    append(text, kSeparator);
}

// --- Report sections

/// A head line and a block for each patient. The first row goes on behind the patient's number, so
/// that a patient without rows leaves the line open for what follows.
template <class Row, class AppendRow>
void appendSection(std::string& text, std::string_view head, const PatientRefs& selected,
                   archive::ListOf<Row> calling::PatientRows::*rows, AppendRow appendRow) {
    append(text, head);
    for (const Patient* patient : selected) {
        append(text, cell(patient->patientNo));
        for (const auto& row : orEmpty(patient->*rows)) {
            appendRow(*row);
        }
    }
}

void appendSections(std::string& text, const PatientRefs& selected) {
    const auto alleles = [&text](const calling::ReportGermlineDNA& row) {
        append(text, "\t", cell(row.areaSearched), "\t", cell(row.allelicType), "\n");
    };
    const auto mutations = [&text](const calling::ReportSomaticDNA& row) {
        append(text, "\t", cell(row.areaSearched), "\t", cell(row.diagnosis), "\t",
               cell(row.mutantCellRatio), "\t", cell(row.comment), "\n");
    };
    const auto transcripts = [&text](const auto& row) {
        append(text, "\t", cell(row.gene), "\t", cell(row.diagnosis), "\t", cell(row.numberOfReads),
               "\t", cell(row.comment), "\n");
    };
    using Rows = calling::PatientRows;
    constexpr std::string_view kRnaHead = "Patient#\tGene\tDiagnosis\tNumberOfReads\tComment\n";
    appendSection(text, "Patient#\tArea\tAllele Type\n", selected, &Rows::germlineDNAResultMutAr,
                  alleles);
    appendSection(text, "Patient#\tArea\tDiagnosis\tMutantCellRatio\tFalsePositiveRate\n", selected,
                  &Rows::somaticDNAResultMutAr, mutations);
    // Deliberate: the allele types stand twice, under the two spellings of their head.
    appendSection(text, "Patient#\tArea\tAlleleType\n", selected, &Rows::germlineDNAResultMutAr,
                  alleles);
    appendSection(text, kRnaHead, selected, &Rows::germlineRNAResultMutAr, transcripts);
    appendSection(text, kRnaHead, selected, &Rows::somaticRNAResultMutAr, transcripts);
}

// --- Summary table

/// Texts joined by ", ".
class JoinedList {
public:
    void add(std::string_view item) { m_text.append(m_count++ == 0 ? "" : ", ").append(item); }
    const std::string& text() const noexcept { return m_text; }

private:
    std::string m_text;
    std::size_t m_count = 0;
};

void appendSummaryLine(std::string& text, const Patient& patient) {
    JoinedList notDetermined;
    JoinedList mutations;
    JoinedList values;
    for (const auto& row : orEmpty(patient.somaticDNAResultMutAr)) {
        const Call call = callOf(row->diagnosis);
        if (call == Call::nd1) {
            notDetermined.add(orEmpty(row->areaSearched));
        } else if (call == Call::positive) {
            mutations.add(orEmpty(row->areaSearched));
            values.add(orEmpty(row->mutantCellRatio));
        }
    }
    for (const auto& row : orEmpty(patient.somaticRNAResultMutAr)) {
        if (callOf(row->diagnosis) == Call::positive) {
            mutations.add(orEmpty(row->gene));
            values.add(orEmpty(row->numberOfReads));
        }
    }
    const auto& alleles = orEmpty(patient.germlineDNAResultMutAr);
    const auto& controls = orEmpty(patient.germlineRNAResultMutAr);
    append(text, platform::lastPathComponent(cell(patient.fastqFileDir)), "/", cell(patient.file1));
    append(text, "\t", mutations.text().empty() ? wordOf(Call::negative) : mutations.text(), "\t",
           values.text(), "\t", notDetermined.text());
    append(text, "\t", controls.empty() ? std::string() : cell(controls[0]->numberOfReads), "\t",
           alleles.empty() ? std::string() : cell(alleles[0]->allelicType), "\n");
}

} // namespace

std::string fullReport(const run::PatientList& patients,
                       const std::vector<std::int64_t>& selection) {
    PatientRefs selected;
    for (const std::int64_t row : selection) {
        if (row >= 0 && static_cast<std::size_t>(row) < orEmpty(patients).size()) {
            selected.push_back(orEmpty(patients)[static_cast<std::size_t>(row)].get());
        }
    }
    std::string text;
    for (const Patient* patient : selected) {
        appendCounts(text, *patient);
    }
    appendCountTable(text, patients, selected);
    appendSections(text, selected);
    return text;
}

std::string summaryTable(const run::PatientList& patients) {
    std::string text = "File\tMutation\tMutantCellPercent or Read#\tND *1\tOAZ-1 reads\tBIM type\n";
    for (const auto& patient : orEmpty(patients)) {
        appendSummaryLine(text, *patient);
    }
    return text;
}

} // namespace document
