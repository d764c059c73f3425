// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
//
// Writes a result document with every record class, for check_result_document.py.
// Usage: write_result_document FILE.vexta
#include <cstdio>
#include <memory>

#include "document/result_document.h"
#include "platform/files.h"

namespace {

template <class Row>
archive::ListOf<Row> oneRow(const std::shared_ptr<catalogue::MutDomain>& domain) {
    auto row = std::make_shared<Row>();
    row->mutDomain = domain;
    row->patientNo = "1";
    return archive::RecordList<Row>::of({row});
}

std::shared_ptr<catalogue::MutDomain> domain() {
    auto mutation = std::make_shared<catalogue::Mutation>();
    mutation->name = "KRAS_G12D";
    mutation->referenceFrequencyOfTheMutantReads = 0.5;
    mutation->seqContainsWildCard = true;
    mutation->match = -1;
    mutation->comment = "Z\xC3\xBCrich \xF0\x9F\xA7\xAC";
    auto made = std::make_shared<catalogue::MutDomain>();
    made->name = "KRAS";
    made->mutationMutAr = archive::RecordList<catalogue::Mutation>::of({mutation});
    made->totalNumberOfNormalReads = 1'000'000'000'000;
    return made;
}

std::shared_ptr<run::SummaryForEachPatient> patient() {
    auto made = std::make_shared<run::SummaryForEachPatient>();
    const auto shared = domain();
    made->file1 = "a_R1_001.fastq";
    made->mutDomains = archive::RecordList<catalogue::MutDomain>::of({shared});
    made->germlineDNAResultMutAr = oneRow<calling::ReportGermlineDNA>(shared);
    made->somaticDNAResultMutAr = oneRow<calling::ReportSomaticDNA>(shared);
    made->germlineRNAResultMutAr = oneRow<calling::ReportGermlineRNA>(shared);
    made->somaticRNAResultMutAr = oneRow<calling::ReportSomaticRNA>(shared);
    return made;
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        return 2;
    }
    const run::MainMutDictionary dictionary{run::PatientList::value_type::of({patient()}), 0};
    const auto bytes = document::encodeResultDocument(dictionary);
    const auto written = bytes ? platform::writeFileAtomically(argv[1], bytes.value())
                               : platform::Status(bytes.error());
    if (!written) {
        std::fprintf(stderr, "%s\n", written.error().message.c_str());
        return 1;
    }
    return 0;
}
