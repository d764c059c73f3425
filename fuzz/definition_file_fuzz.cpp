// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
//
// Loads and checks arbitrary bytes as a definition file. The same text gives the same catalogue and
// findings wherever its blocks and lines end; what stands behind the end marker is not read; and
// every core is what the rules say of its sequence and flanks.

#include <algorithm>
#include <cctype>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <string>
#include <string_view>
#include <utility>

#include "require.h"

#include "calling/result_calc.h"
#include "calling/statistics.h"
#include "catalogue/catalogue_check.h"
#include "catalogue/definition_file.h"
#include "support/memory_stream.h"

namespace {

using catalogue::Catalogue;
using catalogue::Mutation;
using fuzzing::require;

constexpr std::int64_t kReadThreshold = 500;

Catalogue load(const std::string& text, std::size_t blockSize = 65536) {
    support::MemoryStream stream(text, blockSize);
    auto loaded = catalogue::loadDefinition(stream, "panel.txt");
    require(loaded.ok(), "a text in memory that cannot be read", text);
    return std::move(loaded).value();
}

class Description {
public:
    Description& add(const std::string& text) {
        m_text += text;
        m_text += '\n';
        return *this;
    }
    Description& add(const archive::Text& text) { return add(text ? "=" + *text : "null"); }
    Description& add(double number) {
        char text[64];
        std::snprintf(text, sizeof text, "%a", number);
        return add(std::string(text));
    }
    Description& addCount(std::int64_t number) { return add(std::to_string(number)); }
    Description& addSize(std::size_t number) { return add(std::to_string(number)); }

    const std::string& text() const noexcept { return m_text; }

private:
    std::string m_text;
};

void describe(const Mutation& mutation, Description& to) {
    to.add(mutation.name)
        .add(mutation.before10bp)
        .add(mutation.after10bp)
        .add(mutation.strandRequiredToRead)
        .add(mutation.referenceFrequencyOfTheMutantReads)
        .add(mutation.allowableFalsePositiveRate)
        .add(mutation.allowableFalseNegativeRate)
        .addCount(mutation.minimumRequiredNumberOfInformativeReads)
        .add(mutation.seq)
        .addCount(mutation.seqContainsWildCard)
        .add(mutation.coreSeq)
        .addCount(mutation.coreSeqContainsWildCard);
}

/// All that a run or a check can see of a catalogue.
std::string description(const Catalogue& loaded) {
    Description to;
    for (const auto& domain : *loaded.domains) {
        to.add(domain->name).add(domain->type).addCount(domain->canStopSearchIfMatched);
        for (const auto& mutation : *domain->mutationMutAr) {
            describe(*mutation, to);
        }
    }
    for (const catalogue::MutationSource& source : loaded.mutationSources) {
        describe(*source.mutation, to);
        to.addSize(source.headerLine).addCount(source.fieldsScanned).add(source.textAfterFields);
        to.addCount(source.domain != nullptr).addCount(source.sequenceMissing);
        to.addCount(source.sequenceCut);
    }
    for (const catalogue::DomainSource& source : loaded.domainSources) {
        to.addSize(source.headerLine).addCount(source.tokensScanned);
        to.add(source.flagWord).add(source.textAfterTokens);
    }
    for (const catalogue::IgnoredHeader& ignored : loaded.ignoredHeaders) {
        to.addSize(ignored.line).addCount(ignored.afterByteOrderMark).add(ignored.text);
    }
    for (const catalogue::CatalogueFault& fault : loaded.faults) {
        to.addSize(fault.line).add(fault.message).add(fault.reason);
    }
    to.addCount(loaded.endMarkerSeen);
    to.addSize(loaded.overlongLine);
    return to.text();
}

void requireSame(const std::string& text, std::size_t blockSize, const std::string& expected,
                 const char* what) {
    require(description(load(text, blockSize)) == expected, what);
}

bool holdsWildCard(const std::string& text) {
    return std::any_of(text.begin(), text.end(), [](char letter) {
        const int upper = std::toupper(static_cast<unsigned char>(letter));
        return std::string_view("ACGT").find(static_cast<char>(upper)) == std::string_view::npos;
    });
}

/// Letter for letter, or by an ambiguity code on one side, as far as both go: a core is shorter
/// than a flank that overlaps the other one.
bool agree(std::string_view core, std::string_view flank) {
    const std::size_t size = std::min(core.size(), flank.size());
    return std::equal(core.begin(), core.begin() + static_cast<std::ptrdiff_t>(size), flank.begin(),
                      [](char a, char b) {
                          return a == b || (std::isupper(static_cast<unsigned char>(a)) != 0 &&
                                            std::isupper(static_cast<unsigned char>(b)) != 0);
                      });
}

void requireSoundCore(const Mutation& mutation) {
    const std::string& sequence = mutation.seq.value();
    const std::string& core = mutation.coreSeq.value();
    require(sequence.size() <= 999, "a sequence that no line holds", sequence);
    require(sequence.find(core) != std::string::npos, "a core from elsewhere", core);
    require(mutation.seqContainsWildCard == holdsWildCard(sequence), "wild card", sequence);
    require(mutation.coreSeqContainsWildCard == holdsWildCard(core), "wild card of core", core);
    if (!core.empty()) {
        const std::string& before = mutation.before10bp.value();
        std::string after = mutation.after10bp.value();
        require(agree(core, before), "another beginning", core);
        std::string end = core;
        std::reverse(end.begin(), end.end());
        std::reverse(after.begin(), after.end());
        require(agree(end, after), "another end", core);
    }
}

void requireSoundFindings(const Catalogue& loaded) {
    catalogue::CheckOptions options;
    options.positiveWithoutMutantReads = [](const Mutation& mutation) {
        return calling::ResultCalc::callsPositiveWithoutMutantReads(mutation, kReadThreshold);
    };
    options.readsForNegative = calling::ResultCalc::readsForNegative;
    options.readThreshold = kReadThreshold;
    options.frequencyOfTrulyMutantReads = calling::kFrequencyOfTrulyMutantReads;
    const auto findings = catalogue::checkCatalogue(loaded, options);
    std::size_t line = 0;
    std::size_t errors = 0;
    for (const catalogue::Finding& finding : findings) {
        require(!finding.message.empty(), "a finding without words");
        require(finding.line >= line, "findings out of order", finding.message);
        // The last header's sequence may be missing from the line behind the file.
        require(finding.line <= loaded.lineCount + 1, "a finding behind the file", finding.message);
        line = finding.line;
        errors += finding.severity == catalogue::Finding::Severity::error ? 1U : 0U;
    }
    require(errors >= loaded.faults.size(), "a fault that the check passes over");
}

std::string withLineEnds(const std::string& text, const std::string& lineEnd) {
    std::string changed;
    for (const char letter : text) {
        changed += letter == '\n' ? lineEnd : std::string(1, letter);
    }
    return changed;
}

} // namespace

// The fuzzer's library calls it by this name.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string text(data, data + size);
    const Catalogue loaded = load(text);
    const std::string expected = description(loaded);
    requireSame(text, 1, expected, "other blocks give another catalogue");
    if (text.find('\r') == std::string::npos) {
        requireSame(withLineEnds(text, "\r\n"), 7, expected, "CR LF gives another catalogue");
        requireSame(withLineEnds(text, "\r"), 7, expected, "CR gives another catalogue");
    }
    if (loaded.endMarkerSeen) {
        requireSame(text + "\n*D SomaticDNA\n", 64, expected, "read behind the end marker");
    }
    for (const auto& domain : *loaded.domains) {
        for (const auto& mutation : *domain->mutationMutAr) {
            requireSoundCore(*mutation);
        }
    }
    requireSoundFindings(loaded);
    return 0;
}
