// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
//
// The findings of `vexta catalogue check` for people and for scripts. Tested by
// findings_text_test.cpp.
#include "cli/findings_text.h"

#include <algorithm>

#include <nlohmann/json.hpp>

#include "platform/unicode.h"

namespace cli {
namespace {

using catalogue::Finding;
using Json = nlohmann::ordered_json;

std::string severityWord(const Finding& finding) {
    return finding.severity == Finding::Severity::error ? "error" : "warning";
}

std::string counted(std::size_t count, const std::string& noun) {
    return std::to_string(count) + " " + noun + (count == 1 ? "" : "s");
}

std::string findingLine(const std::string& path, const Finding& finding) {
    const std::string place = finding.line == 0 ? path : path + ":" + std::to_string(finding.line);
    return place + ": " + severityWord(finding) + ": " + finding.message + "\n";
}

std::string explanationLines(const Finding& finding) {
    const catalogue::RuleText& rule = catalogue::textOf(finding.rule);
    return "    what happens: " + std::string(rule.explanation) +
           "\n    what to do: " + std::string(rule.advice) + "\n";
}

Json findingObject(const std::string& path, const Finding& finding) {
    const catalogue::RuleText& rule = catalogue::textOf(finding.rule);
    return {{"rule", rule.identifier},
            {"severity", severityWord(finding)},
            {"file", platform::toValidUtf8(path)},
            {"line", finding.line == 0 ? Json() : Json(finding.line)},
            {"message", platform::toValidUtf8(finding.message)},
            {"explanation", rule.explanation},
            {"advice", rule.advice}};
}

} // namespace

std::size_t errorCount(const std::vector<Finding>& findings) {
    return static_cast<std::size_t>(
        std::count_if(findings.begin(), findings.end(), [](const Finding& finding) {
            return finding.severity == Finding::Severity::error;
        }));
}

std::string findingsAsText(const std::string& path, const std::vector<Finding>& findings,
                           bool explain) {
    std::string text;
    for (const Finding& finding : findings) {
        text += findingLine(path, finding);
        text += explain ? explanationLines(finding) : "";
    }
    const std::size_t errors = errorCount(findings);
    return text + path + ": " + counted(errors, "error") + ", " +
           counted(findings.size() - errors, "warning") + "\n";
}

std::string findingsAsJson(const std::string& path, const std::vector<Finding>& findings) {
    std::string text = "[";
    const char* separator = "\n";
    for (const Finding& finding : findings) {
        text += separator + findingObject(path, finding).dump();
        separator = ",\n";
    }
    return text + (findings.empty() ? "]\n" : "\n]\n");
}

} // namespace cli
