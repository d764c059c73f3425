// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include "simulator/truth_table.h"

#include <initializer_list>

namespace simulator {

namespace {

std::string callOf(const Sample& sample, const EntryTruth& entry) {
    for (const PanelLine& line : sample.lines) {
        if (line.domain == entry.domain && line.mutation == entry.mutation && line.call != "-") {
            return line.call;
        }
    }
    return "-";
}

std::uint64_t intactPairsOf(const SampleTruth& truth) {
    std::uint64_t sum = 0;
    for (const EntryTruth& entry : truth.entries) {
        sum += entry.intactPairs;
    }
    return sum;
}

void addLine(std::string& text, std::initializer_list<std::string> fields) {
    const char* separator = "";
    for (const std::string& field : fields) {
        text.append(separator).append(field);
        separator = "\t";
    }
    text += '\n';
}

void addSample(std::string& text, const Sample& sample, const SampleTruth& truth) {
    const std::string number = std::to_string(sample.number);
    addLine(text, {sample.name, number, "total", "-", std::to_string(truth.totalPairs),
                   std::to_string(intactPairsOf(truth)), "-"});
    for (const EntryTruth& entry : truth.entries) {
        addLine(text,
                {sample.name, number, entry.domain, entry.mutation, std::to_string(entry.pairs),
                 std::to_string(entry.intactPairs), callOf(sample, entry)});
    }
    for (const PanelLine& line : sample.lines) {
        if (line.mutation == "*") {
            addLine(text, {sample.name, number, line.domain, "*", "-", "-", line.call});
        }
    }
}

} // namespace

std::string truthTable(const std::vector<Sample>& samples, const std::vector<SampleTruth>& truths) {
    std::string text;
    addLine(text, {"sample", "number", "domain", "mutation", "pairs", "intact", "call"});
    for (std::size_t at = 0; at < samples.size(); ++at) {
        addSample(text, samples[at], truths[at]);
    }
    return text;
}

} // namespace simulator
