// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <limits>
#include <memory>
#include <utility>
#include <vector>

#include "run/summary_for_each_patient.h"

namespace report {

/// Patients with what programs write in different ways: numbers that take an exponent in one
/// language and none in another, integers that no double holds, texts with escapes, and nulls.
class AwkwardPatients {
public:
    static run::PatientList make() {
        const auto first = patient();
        const auto second = patient();
        second->patientNo.reset();
        second->totalNumberOfReads = -1;
        second->somaticDNAResultMutAr.reset();
        second->mutDomains->append(std::make_shared<catalogue::MutDomain>());
        return run::PatientList::value_type::of({first, second});
    }

    static std::shared_ptr<run::SummaryForEachPatient> patient() {
        const auto domain = domainOfNumbers();
        auto made = std::make_shared<run::SummaryForEachPatient>();
        made->file1 = "P_S1_L001_R1_001.fastq";
        made->file2 = "P_S1_L001_R2_001.fastq";
        made->fastqFileDir = "/reads";
        made->patientNo = "1";
        made->totalNumberOfReads = 9'007'199'254'740'993; // 2^53 + 1
        made->readsFailedToBeMapped = std::numeric_limits<std::int64_t>::min();
        made->readsMapped = std::numeric_limits<std::int64_t>::max();
        made->mutDomains = archive::RecordList<catalogue::MutDomain>::of({domain});
        made->germlineDNAResultMutAr = oneRow<calling::ReportGermlineDNA>(domain);
        made->somaticDNAResultMutAr = oneRow<calling::ReportSomaticDNA>(domain);
        made->germlineRNAResultMutAr = oneRow<calling::ReportGermlineRNA>(nullptr);
        made->somaticRNAResultMutAr = oneRow<calling::ReportSomaticRNA>(domain);
        return made;
    }

private:
    static std::shared_ptr<catalogue::MutDomain> domainOfNumbers() {
        using Limits = std::numeric_limits<double>;
        const std::vector<double> numbers = {0.0,
                                             -0.0,
                                             1.0,
                                             100.0,
                                             0.1,
                                             1e-4,
                                             1e-5,
                                             -1e-5,
                                             0.000001,
                                             9.999999999999997e-7,
                                             1e-7,
                                             -1.5e-7,
                                             0.1 + 0.2,
                                             1.0 / 3.0,
                                             123456.789,
                                             333333333.3333332,
                                             9007199254740993.0,
                                             1e15,
                                             1e16,
                                             1.2345678901234567e17,
                                             1e20,
                                             999999999999999900000.0,
                                             1e21,
                                             -1.25e22,
                                             5e-324,
                                             Limits::min(),
                                             Limits::max(),
                                             -Limits::max()};
        const std::vector<archive::Text> texts = {std::nullopt, "", "\"\\/\b\f\n\r\t\x01\x1f\x7f",
                                                  "Z\xC3\xBCrich \xF0\x9F\xA7\xAC",
                                                  "\xE2\x80\xA8\xEF\xBF\xBD<&>"};
        std::vector<std::shared_ptr<catalogue::Mutation>> mutations;
        for (std::size_t i = 0; i < numbers.size(); ++i) {
            auto mutation = std::make_shared<catalogue::Mutation>();
            mutation->name = texts[i % texts.size()];
            mutation->comment = texts[(i + 1) % texts.size()];
            mutation->referenceFrequencyOfTheMutantReads = numbers[i];
            mutation->allowableFalsePositiveRate = numbers[(i + 1) % numbers.size()];
            mutation->allowableFalseNegativeRate = numbers[(i + 2) % numbers.size()];
            mutation->match = static_cast<std::int64_t>(i);
            mutation->seqContainsWildCard = i % 2 == 0;
            mutations.push_back(std::move(mutation));
        }
        auto made = std::make_shared<catalogue::MutDomain>();
        made->name = "KRAS";
        made->type = "SomaticDNA";
        made->canStopSearchIfMatched = true;
        made->mutationMutAr = archive::RecordList<catalogue::Mutation>::of(std::move(mutations));
        return made;
    }

    template <class Row>
    static archive::ListOf<Row> oneRow(const std::shared_ptr<catalogue::MutDomain>& domain) {
        auto row = std::make_shared<Row>();
        row->mutDomain = domain;
        row->patientNo = "1";
        return archive::RecordList<Row>::of({row});
    }
};

} // namespace report
