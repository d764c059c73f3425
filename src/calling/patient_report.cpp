// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
//
// The rows of a patient's four result tables, out of the called catalogue and in its order. Rows
// hold finished texts, so tables and exports show them as they stand.
//
// This file judges no mutation. It reads the calls that calls.cpp wrote, and the counts of the two
// RNA controls, which are results themselves. A somatic domain or fusion panel gives a row for each
// positive entry, and one summary row where there is none. Tested by patient_report_test.cpp.
#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <optional>
#include <string>
#include <utility>

#include "calling/call.h"
#include "calling/result_calc.h"
#include "catalogue/domain_words.h"
#include "platform/numbers.h"
#include "settings/settings_table.h"

namespace calling {
namespace {

using archive::Text;
using catalogue::DomainType;
using catalogue::Mutation;
using catalogue::MutDomain;
using DomainRef = std::shared_ptr<MutDomain>;
using Mutations = archive::RecordList<Mutation>;

/// ln(0.01), rounded to a double: the detection limit holds with 99 % confidence.
constexpr double kLogOfOnePerCent = -4.605170185988091;

/// The patient number for the first row of a kind, "" for those after it.
class NumberOfFirstRow {
public:
    explicit NumberOfFirstRow(const Text& patientNo) : m_next(patientNo) {}
    Text take() { return std::exchange(m_next, Text("")); }

private:
    Text m_next;
};

/// What the rows of one patient are made into and numbered by.
struct Report {
    PatientRows& rows;
    NumberOfFirstRow dnaNumber;
    NumberOfFirstRow somaticRNANumber;
};

/// What a domain's only row says where no mutation is positive.
struct Summary {
    Call diagnosis;
    Text numberOfReads;
    Text comment;
};

bool isPositive(const Mutation& mutation) {
    return callOf(mutation.posNegDetectedOrAlleleType) == Call::positive;
}

/// What the reads of the quality transcript say.
Call rnaQuality(std::int64_t reads) {
    return reads != 0 ? Call::rnaNotDegraded : Call::rnaDegraded;
}

/// The decimal number that the text begins with, after white space; 0 where there is none.
double leadingNumber(std::string_view text) {
    const std::size_t first = std::min(text.find_first_not_of(" \t\n\v\f\r"), text.size());
    text.remove_prefix(first);
    // Hexadecimal, "inf" and "nan" are no numbers here.
    const std::string number(text.substr(0, text.find_first_not_of("+-.0123456789eE")));
    const platform::ScopedCLocale cLocale;
    return std::strtod(number.c_str(), nullptr);
}

/// A new patient has all four lists, but one read from a document may lack some.
template <class Row>
void append(archive::ListOf<Row>& list, std::shared_ptr<Row> row) {
    if (!list) {
        list.emplace();
    }
    list->append(std::move(row));
}

/// Deliberate: the list is begun anew, so only the last row of its kind remains.
template <class Row>
void replace(archive::ListOf<Row>& list, std::shared_ptr<Row> row) {
    list = archive::RecordList<Row>::withCapacity(1);
    list->append(std::move(row));
}

// --- Germline DNA

void reportAlleleType(const DomainRef& domain, const Mutations& mutations, Report& report) {
    if (mutations.size() < 2) {
        return; // a faulty catalogue: there is nothing that was typed
    }
    auto row = std::make_shared<ReportGermlineDNA>();
    row->mutDomain = domain;
    row->patientNo = report.dnaNumber.take();
    row->areaSearched = domain->name;
    row->allelicType = mutations[0]->posNegDetectedOrAlleleType;
    replace(report.rows.germlineDNAResultMutAr, std::move(row));
}

// --- Somatic DNA

std::shared_ptr<ReportSomaticDNA> newSomaticDNARow(const DomainRef& domain, Report& report) {
    auto row = std::make_shared<ReportSomaticDNA>();
    row->mutDomain = domain;
    row->patientNo = report.dnaNumber.take();
    return row;
}

/// Adds one row per positive mutation. Returns whether there is any.
bool reportPositiveMutations(const DomainRef& domain, const Mutations& mutations, Report& report) {
    bool anyPositive = false;
    for (std::size_t i = 1; i < mutations.size(); ++i) {
        const Mutation& mutation = *mutations[i];
        if (!isPositive(mutation)) {
            continue;
        }
        auto row = newSomaticDNARow(domain, report);
        row->areaSearched = mutation.name;
        row->diagnosis = wordOf(Call::positive);
        row->mutantCellRatio = mutation.mutantCellRatio;
        row->comment = mutation.comment;
        append(report.rows.somaticDNAResultMutAr, std::move(row));
        anyPositive = true;
    }
    return anyPositive;
}

/// The diagnosis of a whole domain that one of its mutations decides, or nullopt. Deliberate: all
/// four are recognised, though only "ND *1" is called today.
std::optional<Call> decidingDiagnosis(const Mutation& mutation) {
    const Call call = callOf(mutation.posNegDetectedOrAlleleType);
    switch (call) {
    case Call::ndNegative:
    case Call::nd1:
    case Call::nd2:
        return call;
    case Call::nd0:
        return Call::tooFewReads;
    default:
        return std::nullopt;
    }
}

/// "Negative" with the largest chance probability among the mutations, unless one of them decides.
/// Deliberate: an undecided mutation with reads enough leaves the domain "Negative".
Summary summaryOfMutations(const Mutations& mutations) {
    Summary summary{Call::negative, "", ""};
    double largest = 0.0;
    for (std::size_t i = 1; i < mutations.size(); ++i) {
        const Mutation& mutation = *mutations[i];
        if (const auto diagnosis = decidingDiagnosis(mutation)) {
            return {*diagnosis, "", ""};
        }
        const double probability = leadingNumber(archive::orEmpty(mutation.comment));
        if (probability > largest) {
            largest = probability;
            summary.comment = mutation.comment;
        }
    }
    return summary;
}

void reportSomaticDNA(const DomainRef& domain, const Mutations& mutations, Report& report) {
    if (reportPositiveMutations(domain, mutations, report)) {
        return;
    }
    const Summary summary = summaryOfMutations(mutations);
    auto row = newSomaticDNARow(domain, report);
    row->areaSearched = domain->name;
    row->diagnosis = wordOf(summary.diagnosis);
    row->mutantCellRatio = "";
    row->comment = summary.comment;
    append(report.rows.somaticDNAResultMutAr, std::move(row));
}

// --- Germline RNA

void reportRNAQuality(const DomainRef& domain, const Mutations& mutations, Report& report) {
    if (mutations.empty() || !catalogue::isRNAQualityControl(*mutations[0])) {
        return;
    }
    const std::int64_t reads = mutations[0]->match;
    auto row = std::make_shared<ReportGermlineRNA>();
    row->mutDomain = domain;
    row->patientNo = "";
    row->gene = domain->name;
    row->diagnosis = wordOf(rnaQuality(reads));
    row->numberOfReads = std::to_string(reads);
    row->comment = "";
    replace(report.rows.germlineRNAResultMutAr, std::move(row));
}

// --- Somatic RNA

std::shared_ptr<ReportSomaticRNA> newSomaticRNARow(const DomainRef& domain, Report& report) {
    auto row = std::make_shared<ReportSomaticRNA>();
    row->mutDomain = domain;
    row->patientNo = report.somaticRNANumber.take();
    return row;
}

/// Adds one row per positive fusion. Returns whether there is any.
bool reportPositiveFusions(const DomainRef& domain, const Mutations& mutations, Report& report) {
    bool anyPositive = false;
    for (const auto& mutation : mutations) {
        if (!isPositive(*mutation)) {
            continue;
        }
        auto row = newSomaticRNARow(domain, report);
        row->gene = mutation->name;
        row->diagnosis = wordOf(Call::positive);
        row->numberOfReads = std::to_string(mutation->match);
        row->comment = "";
        append(report.rows.somaticRNAResultMutAr, std::move(row));
        anyPositive = true;
    }
    return anyPositive;
}

/// The number of fusion copies that `controlReads` reads of `controlCopies` copies of the internal
/// control would have shown with 99 % confidence: (1 - 0.01^(1 / reads)) copies.
std::string detectionLimitText(std::int64_t controlReads, std::int64_t controlCopies) {
    const double limit = (1.0 - std::exp(kLogOfOnePerCent / static_cast<double>(controlReads))) *
                         static_cast<double>(controlCopies);
    return std::string("<").append(std::to_string(platform::truncated(limit))).append(" copies");
}

/// The first entry of a panel tells what it means that no fusion was found.
Summary summaryOfPanel(const Mutation& first, const settings::SettingsStore& settings) {
    const std::string reads = std::to_string(first.match);
    if (catalogue::isRNAQualityControl(first)) {
        return {rnaQuality(first.match), reads, ""};
    }
    if (!catalogue::isInternalControl(first)) {
        return {Call::nothingDetected, "0", ""};
    }
    if (first.match == 0) {
        return {Call::controlNotWorking, "", ""};
    }
    const std::int64_t copies =
        settings::integerSetting(settings, settings::key::kCopyNumberOfInternalControl);
    return {Call::negative, reads, detectionLimitText(first.match, copies)};
}

void reportFusions(const DomainRef& domain, const Mutations& mutations,
                   const settings::SettingsStore& settings, Report& report) {
    if (mutations.empty() || reportPositiveFusions(domain, mutations, report)) {
        return;
    }
    const Summary summary = summaryOfPanel(*mutations[0], settings);
    auto row = newSomaticRNARow(domain, report);
    row->gene = domain->name;
    row->diagnosis = wordOf(summary.diagnosis);
    row->numberOfReads = summary.numberOfReads;
    row->comment = summary.comment;
    append(report.rows.somaticRNAResultMutAr, std::move(row));
}

void reportDomain(const DomainRef& domain, const settings::SettingsStore& settings,
                  Report& report) {
    const Mutations& mutations = archive::orEmpty(domain->mutationMutAr);
    switch (catalogue::typeOf(*domain)) {
    case DomainType::germline:
        if (catalogue::isAlleleTyping(*domain)) {
            reportAlleleType(domain, mutations, report);
        }
        break;
    case DomainType::somaticDNA:
        reportSomaticDNA(domain, mutations, report);
        break;
    case DomainType::germlineMRNA:
        reportRNAQuality(domain, mutations, report);
        break;
    case DomainType::fusionRNA:
        reportFusions(domain, mutations, settings, report);
        break;
    default:
        break; // counted, never reported
    }
}

} // namespace

void ResultCalc::summarizeResultForPatient(const Text& patientNo,
                                           const catalogue::MutDomains& mutDomains,
                                           PatientRows& rows) {
    Report report{rows, NumberOfFirstRow(patientNo), NumberOfFirstRow(patientNo)};
    for (const DomainRef& domain : archive::orEmpty(mutDomains)) {
        reportDomain(domain, m_settings, report);
    }
}

} // namespace calling
