// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
//
// A batch reads the names that it knows and passes over all others. Whoever put four lanes into a
// folder must hear that one was read. So every file that looks like reads gets a reason here when
// it is not used. Tested by folder_account_test.cpp.
#include "document/folder_account.h"

#include <algorithm>
#include <array>
#include <map>
#include <set>
#include <string_view>

#include "platform/files.h"

namespace document {
namespace {

constexpr std::array<std::string_view, 6> kCompressions = {".gz",  ".bz2", ".xz",
                                                           ".zst", ".zip", ".lz4"};

bool hasEnding(std::string_view text, std::string_view end) {
    return text.size() >= end.size() && text.substr(text.size() - end.size()) == end;
}

std::string_view withoutCompression(std::string_view name) {
    for (const std::string_view ending : kCompressions) {
        if (hasEnding(name, ending)) {
            return name.substr(0, name.size() - ending.size());
        }
    }
    return name;
}

bool isDigit(char letter) {
    return letter >= '0' && letter <= '9';
}

/// A sequencer's name taken apart: <sample>_S<number>_L<lane>_<R1|R2|I1|I2>_<part>.fastq…
struct SequencerName {
    std::string_view sample;
    std::string_view number;
    std::string_view lane; ///< digits; empty: the name tells none
    std::string_view read; ///< "R1", "R2", "I1", "I2"
    std::string_view part;
};

/// Takes letters from the front of `text` up to the next underscore or full stop.
std::string_view takeField(std::string_view& text) {
    const std::string_view field = text.substr(0, text.find_first_of("_."));
    text.remove_prefix(std::min(text.size(), field.size() + 1));
    return field;
}

bool isNumber(std::string_view text) {
    return !text.empty() && std::all_of(text.begin(), text.end(), isDigit);
}

/// Where the last "_S<digits>_" begins.
std::size_t sampleMark(std::string_view name) {
    for (std::size_t at = name.rfind("_S"); at != std::string_view::npos && at > 0;
         at = name.rfind("_S", at - 1)) {
        std::size_t end = at + 2;
        while (end < name.size() && isDigit(name[end])) {
            ++end;
        }
        if (end > at + 2 && end < name.size() && name[end] == '_') {
            return at;
        }
    }
    return std::string_view::npos;
}

std::optional<SequencerName> takeApart(std::string_view name) {
    const std::size_t mark = sampleMark(name);
    if (mark == std::string_view::npos) {
        return std::nullopt;
    }
    SequencerName parts;
    parts.sample = name.substr(0, mark);
    std::string_view rest = name.substr(mark + 2);
    parts.number = takeField(rest);
    std::string_view field = takeField(rest);
    if (field.size() > 1 && field.front() == 'L' && isNumber(field.substr(1))) {
        parts.lane = field.substr(1);
        field = takeField(rest);
    }
    if (field != "R1" && field != "R2" && field != "I1" && field != "I2") {
        return std::nullopt;
    }
    parts.read = field;
    field = takeField(rest);
    parts.part = isNumber(field) ? field : std::string_view();
    return parts;
}

/// Why a batch passes over a name that is nearly one of its own; empty: no such reason.
std::string reasonOfParts(const SequencerName& parts, bool& isUsual) {
    if (parts.read.front() == 'I') {
        isUsual = true;
        return "index reads are not needed";
    }
    const std::string number(parts.number);
    if (number == "0") {
        isUsual = true;
        return "sample 0, the reads that no sample claimed";
    }
    if (number.front() == '0') {
        return "sample number " + number + ": numbers begin with 1 to 9";
    }
    if (number.size() > 4 || (number.size() == 4 && number != "1000")) {
        return "sample number " + number + ": only 1 to 1000 are read";
    }
    if (parts.lane.empty()) {
        return "the name tells no lane; names hold \"_L001_\"";
    }
    if (parts.lane != "001") {
        return "lane L" + std::string(parts.lane) + ": only lane L001 is read";
    }
    if (parts.part != "001") {
        return parts.part.empty() ? "the name tells no part; names end in \"_001.fastq\""
                                  : "part " + std::string(parts.part) + ": only part 001 is read";
    }
    return {};
}

std::string reasonFor(const std::string& name, bool& isUsual) {
    if (name.front() == '_' || name.front() == '.') {
        return std::string("names that begin with \"") + name.front() + "\" are passed over";
    }
    const auto parts = takeApart(name);
    if (parts) {
        if (std::string reason = reasonOfParts(*parts, isUsual); !reason.empty()) {
            return reason;
        }
    }
    if (!hasEnding(withoutCompression(name), ".fastq") &&
        !hasEnding(withoutCompression(name), ".fq")) {
        return "endings are written in small letters: \".fastq\" or \".fastq.gz\"";
    }
    if (hasEnding(withoutCompression(name), ".fq")) {
        return "the name ends in \".fq\"; names end in \".fastq\" or \".fastq.gz\"";
    }
    return "the name is none of <sample>_S<1-1000>_L001_R<1 or 2>_001.fastq[.gz]";
}

std::string withoutGz(const std::string& name) {
    return hasEnding(name, ".gz") ? name.substr(0, name.size() - 3) : name;
}

/// Whether the names are one but for the read mark and a ".gz" ending.
bool areMates(const std::string& read1Name, const std::string& read2Name) {
    const std::string name1 = withoutGz(read1Name);
    const std::string name2 = withoutGz(read2Name);
    if (name1.size() != name2.size()) {
        return false;
    }
    int differences = 0;
    for (std::size_t i = 0; i < name1.size(); ++i) {
        if (name1[i] == name2[i]) {
            continue;
        }
        const bool isMark = name1[i] == '1' && name2[i] == '2' && i >= 2 &&
                            name1.compare(i - 2, 2, "_R") == 0 && i + 1 < name1.size() &&
                            name1[i + 1] == '_';
        if (!isMark) {
            return false;
        }
        ++differences;
    }
    return differences == 1;
}

std::set<std::string> usedNames(const std::vector<PatientSlot>& batch) {
    std::set<std::string> used;
    for (const PatientSlot& slot : batch) {
        used.insert({slot.file1, slot.file2});
    }
    return used;
}

} // namespace

std::string sampleNameOf(const std::string& readsName) {
    const std::size_t mark = sampleMark(readsName);
    return mark == std::string_view::npos ? std::string() : readsName.substr(0, mark);
}

bool patientNumberIsDoubtful(const std::string& readsName) {
    const std::size_t first = readsName.find("_S");
    return first != std::string::npos && readsName.find("_S", first + 1) != std::string::npos;
}

bool looksLikeReads(const std::string& name) {
    std::string lower = name;
    std::transform(lower.begin(), lower.end(), lower.begin(),
                   [](unsigned char c) { return c >= 'A' && c <= 'Z' ? c - 'A' + 'a' : c; });
    const std::string_view bare = withoutCompression(lower);
    return hasEnding(bare, ".fastq") || hasEnding(bare, ".fq");
}

std::vector<UnusedReads> unusedReads(const std::vector<std::string>& names,
                                     const std::vector<PatientSlot>& batch) {
    return unusedReads(names, usedNames(batch));
}

std::vector<UnusedReads> unusedReads(const std::vector<std::string>& names,
                                     const std::set<std::string>& used) {
    std::vector<UnusedReads> unused;
    for (const std::string& name : names) {
        if (name.empty() || !looksLikeReads(name) || used.count(name) > 0) {
            continue;
        }
        UnusedReads found{name, {}, false, false};
        found.reason = planBatch({name}).empty() ? reasonFor(name, found.isUsual)
                                                 : "another file of this sample is read";
        unused.push_back(std::move(found));
    }
    std::sort(unused.begin(), unused.end(),
              [](const UnusedReads& a, const UnusedReads& b) { return a.name < b.name; });
    return unused;
}

std::vector<UnusedReads> otherReadsOfSample(const std::vector<std::string>& names,
                                            const ReadPairFiles& pair) {
    const std::string read1 = pair.file1.value_or(std::string());
    const auto parts = takeApart(read1);
    std::vector<UnusedReads> others;
    for (const std::string& name : names) {
        const auto other = takeApart(name);
        if (!parts || !other || !looksLikeReads(name) || name == pair.file1 || name == pair.file2 ||
            other->sample != parts->sample || other->number != parts->number ||
            other->read.front() == 'I') {
            continue;
        }
        if (other->lane != parts->lane) {
            others.push_back({name, "another lane of this sample"});
        } else if (other->part != parts->part) {
            others.push_back({name, "another part of this sample"});
        }
    }
    std::sort(others.begin(), others.end(),
              [](const UnusedReads& a, const UnusedReads& b) { return a.name < b.name; });
    return others;
}

std::vector<DoubtfulPair> doubtfulPairs(const std::vector<std::string>& names,
                                        const std::vector<PatientSlot>& batch) {
    std::vector<DoubtfulPair> doubtful;
    std::map<std::int64_t, std::vector<DoubtfulPair>> candidates;
    for (const std::string& name : names) {
        for (const PatientSlot& alone : planBatch({name})) {
            const auto slot =
                std::find_if(batch.begin(), batch.end(), [&alone](const PatientSlot& planned) {
                    return planned.sampleNumber == alone.sampleNumber;
                });
            if (slot == batch.end()) {
                continue;
            }
            const bool isRead1 = !alone.file1.empty();
            const std::string& chosen = isRead1 ? slot->file1 : slot->file2;
            // A file and its compressed twin are one sample's; one of them is read. Checksums and
            // the like that nobody reads are nobody's.
            if (looksLikeReads(name) && looksLikeReads(chosen) &&
                withoutGz(chosen) != withoutGz(name)) {
                candidates[slot->sampleNumber].push_back(
                    {slot->sampleNumber, name, chosen, DoubtfulPair::Kind::sameRead});
            }
        }
    }
    for (const PatientSlot& slot : batch) {
        const auto others = candidates.find(slot.sampleNumber);
        if (others != candidates.end()) {
            doubtful.insert(doubtful.end(), others->second.begin(), others->second.end());
        }
        bool areReads = true;
        for (const std::string& file : {slot.file1, slot.file2}) {
            if (!file.empty() && !looksLikeReads(file)) {
                areReads = false;
                doubtful.push_back({slot.sampleNumber, file, {}, DoubtfulPair::Kind::noReads});
            }
        }
        if (areReads && !slot.file1.empty() && !slot.file2.empty() &&
            !areMates(slot.file1, slot.file2)) {
            doubtful.push_back(
                {slot.sampleNumber, slot.file1, slot.file2, DoubtfulPair::Kind::namesDiffer});
        }
    }
    return doubtful;
}

} // namespace document
