// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
//
// A laboratory writes a fingerprint down and compares it years later, with a program that may know
// more fields of a record. So a fingerprint is made of the fields that records had when the first
// one was made, and these are named here once and for all. Of the patient's own fields, the names
// and the directory of the files are not among them. Tested by digested_keys_test.cpp, which fails
// when a record gets a field.
#include "report/digested_keys.h"

#include <algorithm>
#include <map>

#include <nlohmann/json.hpp>

namespace report {
namespace {

using Json = nlohmann::ordered_json;
using Keys = std::vector<std::string_view>;

const Keys kRnaRow = {"mutDomain", "patientNo", "gene", "diagnosis", "numberOfReads", "comment"};

const std::map<std::string_view, Keys> kKeysOfLists = {
    {kPatientsKey,
     {"patientNo", "totalNumberOfReads", "readsFailedToBeMapped", "readsMapped", "mutDomains",
      "germlineDNAResultMutAr", "somaticDNAResultMutAr", "germlineRNAResultMutAr",
      "somaticRNAResultMutAr"}},
    {"mutDomains",
     {"name", "type", "mutationMutAr", "canStopSearchIfMatched", "totalNumberOfNormalReads",
      "totalNumberOfMutantReads"}},
    {"mutationMutAr",
     {"name", "referenceFrequencyOfTheMutantReads", "allowableFalsePositiveRate",
      "allowableFalseNegativeRate", "minimumRequiredNumberOfInformativeReads", "seq",
      "seqContainsWildCard", "coreSeq", "coreSeqContainsWildCard", "before10bp", "after10bp",
      "strandRequiredToRead", "match", "posNegDetectedOrAlleleType", "mutantCellRatio", "comment"}},
    {"germlineDNAResultMutAr", {"mutDomain", "patientNo", "areaSearched", "allelicType"}},
    {"somaticDNAResultMutAr",
     {"mutDomain", "patientNo", "areaSearched", "diagnosis", "mutantCellRatio", "comment"}},
    {"germlineRNAResultMutAr", kRnaRow},
    {"somaticRNAResultMutAr", kRnaRow},
};

} // namespace

Keys digestedKeys(std::string_view list) {
    const auto found = kKeysOfLists.find(list);
    return found == kKeysOfLists.end() ? Keys() : found->second;
}

void keepDigestedKeys(Json& record, std::string_view list) {
    const Keys keys = digestedKeys(list);
    Json kept = Json::object();
    for (auto& [key, value] : record.items()) {
        if (std::find(keys.begin(), keys.end(), key) == keys.end()) {
            continue;
        }
        if (value.is_array()) {
            for (Json& item : value) {
                keepDigestedKeys(item, key);
            }
        }
        kept[key] = std::move(value);
    }
    record = std::move(kept);
}

} // namespace report
