// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
//
// A result says what was found. Its record says how: which program, catalogue and settings, which
// files and how far they were read, and what became of the patients that have no result. A result
// document keeps its two entries and nothing more, so the record lies in a file beside it. Two
// digests tie them together: that of the document's bytes tells a record of another run, that of
// the record itself one that was edited. They guard against mistakes, not against somebody who
// computes them anew. Tested by run_record_test.cpp and account_program_test.cpp.
#include "report/run_record.h"

#include <optional>
#include <utility>

#include <nlohmann/json.hpp>

#include "platform/files.h"
#include "platform/sha256.h"
#include "platform/unicode.h"
#include "report/program_version.h"
#include "report/result_digest.h"

namespace report {
namespace {

using Json = nlohmann::ordered_json;
using document::PatientAccount;

/// Raised when a key changes its meaning, which is not planned.
constexpr int kSchemaVersion = 1;
/// A record of ten thousand patients has about 30 MB.
constexpr std::size_t kLargestRecord = std::size_t{256} * 1024 * 1024;
constexpr std::size_t kLargestDocument = std::size_t{4} * 1024 * 1024 * 1024;

std::string shown(const std::string& bytes) {
    return platform::toValidUtf8(bytes);
}

const char* wordOf(settings::SettingOrigin origin) {
    switch (origin) {
    case settings::SettingOrigin::firstRun:
        return "first-run value";
    case settings::SettingOrigin::stored:
        return "settings file";
    case settings::SettingOrigin::forThisRun:
        return "--set";
    case settings::SettingOrigin::notSet:
        break;
    }
    return "not set";
}

const char* wordOf(reads::ReadingEnd end) {
    switch (end) {
    case reads::ReadingEnd::emptyLine:
        return "empty line";
    case reads::ReadingEnd::zeroByte:
        return "zero byte";
    case reads::ReadingEnd::endOfFile:
        break;
    }
    return "end of file";
}

Json settingsJson(const std::vector<settings::SettingInForce>& settings) {
    Json json = Json::object();
    for (const settings::SettingInForce& each : settings) {
        Json value = each.value;
        if (each.setting.type != settings::Setting::Type::integer) {
            value = each.value != 0;
        }
        json[std::string(each.setting.key)] = {{"value", value}, {"from", wordOf(each.origin)}};
    }
    return json;
}

Json warningsJson(const std::vector<run::Warning>& warnings) {
    Json json = Json::array();
    for (const run::Warning& warning : warnings) {
        json.push_back({{"kind", run::nameOf(warning.kind)}, {"text", shown(warning.text)}});
    }
    return json;
}

Json lanesJson(const reads::HeaderFacts& headers) {
    Json json = Json::array();
    for (const reads::FlowCellLane& lane : headers.lanes()) {
        json.push_back({{"flowCell", shown(lane.flowCell)}, {"lane", shown(lane.lane)}});
    }
    return json;
}

Json fileJson(const reads::FileAccount& file, const std::string& name, bool wasRead) {
    return {{"name", shown(name)},
            {"bytes", file.fileBytes},
            {"gzipMembers", file.gzipMembers},
            {"records", file.records},
            {"end", wordOf(file.end)},
            {"bytesNotRead", file.rest.bytes},
            {"zeroBytes", file.zeroBytes},
            {"surplusRecords", file.surplusRecords},
            {"empty", wasRead && file.isEmpty()},
            {"headersOfRead1", file.headers.read1Headers()},
            {"headersOfRead2", file.headers.read2Headers()}};
}

Json inputsJson(const PatientAccount& patient) {
    const reads::InputAccount& inputs = patient.run.inputs;
    return {{"read1", fileJson(inputs.read1, patient.file1, inputs.complete)},
            {"read2", fileJson(inputs.read2, patient.file2, inputs.complete)},
            {"lanes", lanesJson(inputs.read1.headers)},
            {"allWasRead", inputs.allWasRead()}};
}

const char* nameOf(run::ElsewhereInPair place) {
    switch (place) {
    case run::ElsewhereInPair::otherStrand:
        return "other strand";
    case run::ElsewhereInPair::otherMate:
        return "other read";
    case run::ElsewhereInPair::otherStrandOfOtherMate:
        return "other strand of the other read";
    case run::ElsewhereInPair::lowQuality:
        break;
    }
    return "low quality";
}

Json secondLookJson(const run::SecondLook& look) {
    Json found = Json::array();
    for (const run::CoreElsewhere& each : look.found) {
        found.push_back({{"mutation", shown(each.mutation)},
                         {"place", nameOf(each.place)},
                         {"pairs", each.pairs}});
    }
    return {{"pairs", look.pairsLookedAt}, {"found", std::move(found)}};
}

void addResult(Json& json, const PatientAccount& patient, ResultDigest& digest) {
    const run::SummaryForEachPatient& result = *patient.summary;
    const std::int64_t pairs = result.totalNumberOfReads;
    json["pairs"] = pairs;
    json["mapped"] = result.readsMapped;
    json["mappedShare"] =
        pairs == 0 ? Json(nullptr)
                   : Json(static_cast<double>(result.readsMapped) / static_cast<double>(pairs));
    json["targets"] = patient.run.assessability.targets;
    json["notAssessableTargets"] = patient.run.assessability.notAssessable;
    Json kinds = Json::array();
    for (const calling::NotAssessable& kind : patient.run.assessability.kinds) {
        kinds.push_back(kind.text());
    }
    json["notAssessable"] = std::move(kinds);
    json["resultDigest"] = digest.add(result);
}

Json patientRecord(const PatientAccount& patient, ResultDigest& digest) {
    Json json = {{"sample", shown(patient.sample)},
                 {"patient", shown(patient.number)},
                 {"file1", shown(patient.file1)},
                 {"file2", shown(patient.file2)},
                 {"outcome", document::wordOf(patient.outcome)}};
    for (const auto& [read1, read2] : patient.furtherFiles) {
        json["furtherFiles"].push_back({{"file1", shown(read1)}, {"file2", shown(read2)}});
    }
    Json lines = Json::array();
    for (const std::string& line : patient.lines) {
        lines.push_back(shown(line));
    }
    json["lines"] = std::move(lines);
    json["warnings"] = warningsJson(patient.run.warnings);
    json["catalogueDigest"] = patient.run.catalogueDigest;
    if (!patient.run.settings.empty()) {
        json["settings"] = settingsJson(patient.run.settings);
    }
    json["seconds"] = patient.run.seconds;
    if (patient.outcome == PatientAccount::Outcome::analysed ||
        patient.outcome == PatientAccount::Outcome::failed) {
        json["inputs"] = inputsJson(patient);
    }
    if (patient.run.secondLook.pairsLookedAt > 0) {
        json["secondLook"] = secondLookJson(patient.run.secondLook);
    }
    if (patient.summary) {
        addResult(json, patient, digest);
    }
    return json;
}

Json unusedJson(const std::vector<document::UnusedReads>& unused) {
    Json json = Json::array();
    for (const document::UnusedReads& file : unused) {
        json.push_back({{"name", shown(file.name)}, {"reason", shown(file.reason)}});
    }
    return json;
}

/// The value of a text's JSON; nullopt where it is none, or one that is nested deeper than any
/// record, since its value would be taken apart by calls as deep.
std::optional<Json> parsed(const std::string& text) {
    constexpr int kDeepest = 32;
    bool tooDeep = false;
    Json json = Json::parse(
        text,
        [&tooDeep](int depth, Json::parse_event_t, Json&) {
            tooDeep = tooDeep || depth > kDeepest;
            return !tooDeep;
        },
        false);
    return tooDeep || json.is_discarded() ? std::nullopt : std::optional(std::move(json));
}

std::string textUnder(const Json& json, const char* key) {
    const auto found = json.find(key);
    return found != json.end() && found->is_string() ? found->get<std::string>() : std::string();
}

RecordBeside notUsable(RecordBeside::State state, const std::string& path, const char* why) {
    return {state, "The record " + path + why, {}};
}

} // namespace

std::string runRecord(const document::AnalysisAccount& account, const RunConditions& conditions) {
    // Of the results, in the order in which a document holds them.
    ResultDigest digest;
    Json patients = Json::array();
    for (const PatientAccount& patient : account.patients) {
        patients.push_back(patientRecord(patient, digest));
    }
    const Json record = {
        {"schemaVersion", kSchemaVersion},
        {"program",
         {{"name", "vexta"}, {"version", programVersion()}, {"commit", programCommit()}}},
        {"catalogue",
         {{"file", shown(platform::lastPathComponent(account.cataloguePath))},
          {"sha256", account.catalogueDigest},
          {"entries", account.catalogueMutations},
          {"changedDuringRun", account.catalogueChanged}}},
        {"settings", settingsJson(account.settings)},
        {"settingsChangedDuringRun", account.settingsChanged},
        {"threads", conditions.threads},
        {"inputMode",
         conditions.inputMode == document::InputMode::direct ? "direct" : "working copies"},
        {"directory", shown(account.directory)},
        {"unusedReads", unusedJson(account.unusedReads)},
        {"warnings", warningsJson(account.warnings)},
        {"patients", std::move(patients)},
        {"resultDigest", digest.hex()}};
    return record.dump();
}

std::string recordPathOf(const std::string& path) {
    return path + ".record.json";
}

std::string recordText(const std::string& run, std::string_view documentBytes) {
    constexpr int kIndent = 1;
    return Json{{"documentSha256", platform::sha256(documentBytes)},
                {"recordSha256", platform::sha256(run)},
                {"run", Json::parse(run)}}
               .dump(kIndent) +
           "\n";
}

RecordBeside findRecord(const std::string& path) {
    using State = RecordBeside::State;
    const std::string recordPath = recordPathOf(path);
    if (!platform::fileExists(recordPath)) {
        return {State::missing, "No record lies beside " + path, {}};
    }
    const auto text = platform::readWholeFile(recordPath, kLargestRecord);
    if (!text) {
        return {State::unreadable, "The record cannot be read. " + text.error().message, {}};
    }
    const std::optional<Json> json = parsed(text.value());
    if (!json || !json->is_object() || !json->contains("run") || !(*json)["run"].is_object()) {
        return notUsable(State::unreadable, recordPath, " is no record of a run");
    }
    const auto document = platform::readWholeFile(path, kLargestDocument);
    if (!document || textUnder(*json, "documentSha256") != platform::sha256(document.value())) {
        return notUsable(State::differs, recordPath,
                         " is that of another document and is not used");
    }
    std::string run = (*json)["run"].dump();
    if (textUnder(*json, "recordSha256") != platform::sha256(run)) {
        return notUsable(State::differs, recordPath, " was edited and is not used");
    }
    return {State::fits, {}, std::move(run)};
}

} // namespace report
