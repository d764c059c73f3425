// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
//
// Records become JSON by the one listing of their fields (visitFields), which archives use as well:
// a new field needs no line here. The text of one patient is in memory at a time. Tested by
// result_json_test.cpp.
#include "report/result_json.h"

#include <memory>
#include <string>

#include <nlohmann/json.hpp>

#include "platform/unicode.h"

namespace report {

using Json = nlohmann::ordered_json;

namespace {

/// Makes a JSON object of a record from its one listing of fields.
class RecordToJson {
public:
    template <class Record>
    static Json object(const Record& record) {
        RecordToJson visitor;
        Record::visitFields(record, visitor);
        return std::move(visitor.m_object);
    }

    template <class Field>
    void operator()(const char* key, const Field& field) {
        m_object[key] = value(field);
    }

private:
    static Json value(bool field) { return field; }
    static Json value(double field) { return field; }
    static Json value(std::int64_t field) { return field; }
    static Json value(const archive::Text& text) {
        return text ? Json(platform::toValidUtf8(*text)) : Json();
    }
    /// A row refers to its domain by name; the domain itself stands among the patient's domains.
    static Json value(const std::shared_ptr<catalogue::MutDomain>& domain) {
        return domain ? value(domain->name) : Json();
    }
    template <class Record>
    static Json value(const archive::ListOf<Record>& list) {
        if (!list) {
            return {};
        }
        Json array = Json::array();
        for (const auto& record : *list) {
            array.push_back(object(*record));
        }
        return array;
    }

    Json m_object = Json::object();
};

} // namespace

Json patientJson(const run::SummaryForEachPatient& patient) {
    return RecordToJson::object(patient);
}

platform::Status writeJson(const run::PatientList& patients, std::int64_t selectedPatientRowNo,
                           const std::string& run, const TextSink& sink) {
    auto status = sink("{\"selectedPatientRowNo\":" + std::to_string(selectedPatientRowNo) +
                       ",\"summaryForEachPatientMutAr\":[");
    const char* separator = "\n";
    for (const auto& patient : archive::orEmpty(patients)) {
        if (!status) {
            return status;
        }
        status = sink(separator + patientJson(*patient).dump());
        separator = ",\n";
    }
    if (status) {
        status = sink(run.empty() ? "\n]}\n" : "\n],\n\"run\":" + run + "}\n");
    }
    return status;
}

} // namespace report
