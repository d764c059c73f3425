// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include "reads/truth_table.h"

#include <algorithm>

namespace reads {

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

} // namespace

std::string truthTable(const std::vector<Sample>& samples, const std::vector<SampleTruth>& truths) {
    std::string text = "sample\tnumber\tdomain\tmutation\tpairs\tintact\tcall\n";
    for (std::size_t at = 0; at < samples.size(); ++at) {
        const Sample& sample = samples[at];
        const SampleTruth& truth = truths[at];
        const auto addLine = [&](const std::string& domain, const std::string& mutation,
                                 const std::string& pairs, const std::string& intact,
                                 const std::string& call) {
            text += sample.name + "\t" + std::to_string(sample.number) + "\t" + domain + "\t" +
                    mutation + "\t" + pairs + "\t" + intact + "\t" + call + "\n";
        };
        addLine("total", "-", std::to_string(truth.totalPairs),
                std::to_string(intactPairsOf(truth)), "-");
        for (const EntryTruth& entry : truth.entries) {
            addLine(entry.domain, entry.mutation, std::to_string(entry.pairs),
                    std::to_string(entry.intactPairs), callOf(sample, entry));
        }
        for (const PanelLine& line : sample.lines) {
            if (line.mutation == "*") {
                addLine(line.domain, "*", "-", "-", line.call);
            }
        }
    }
    return text;
}

} // namespace reads
