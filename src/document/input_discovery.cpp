// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
//
// Which files belong together, by their names alone.
//
// A batch has 1000 sample numbers with two keys each, and a key may stand anywhere in a name.
// Looking for each key in each name would cost 2000 searches a name; samplesNamed() reads the
// numbers out of the name, so each name is looked at once. The keys write their numbers without
// leading zeros, so "_S07_" is no sample.
//
// Tested by input_discovery_test.cpp.
#include "document/input_discovery.h"

#include <map>
#include <string_view>

#include "platform/files.h"

namespace document {

namespace {

constexpr std::string_view kRead1Mark = "_R1_";
constexpr std::string_view kRead2Mark = "_R2_";
constexpr std::int64_t kHighestSampleNumber = 1000;

bool contains(std::string_view text, std::string_view part) {
    return text.find(part) != std::string_view::npos;
}

/// The name with its mark replaced. Only the two pieces around the first mark take part.
std::string mateOf(const std::string& name, std::string_view mark, std::string_view mateMark) {
    const std::vector<std::string> pieces = platform::splitAt(name, mark);
    return pieces[0] + std::string(mateMark) + pieces[1];
}

/// The mate as it stands in the directory, plain or compressed; nullopt when neither is there.
std::optional<std::string> mateInDirectory(const std::string& directory, const std::string& mate) {
    const auto there = [&directory](const std::string& name) {
        return platform::fileExists(directory + "/" + name);
    };
    const std::string extension = platform::pathExtension(mate);
    if (extension != "fastq" && extension != "gz") {
        return std::nullopt;
    }
    if (there(mate)) {
        return mate;
    }
    const std::string other =
        extension == "fastq" ? mate + ".gz" : platform::withoutPathExtension(mate);
    return there(other) ? std::optional(other) : std::nullopt;
}

} // namespace

ReadPairFiles findMate(const std::string& chosenPath) {
    ReadPairFiles files;
    files.directory = platform::directoryOf(chosenPath);
    const std::string name = platform::lastPathComponent(chosenPath);
    const bool isRead1 = contains(name, kRead1Mark);
    if (!isRead1 && !contains(name, kRead2Mark)) {
        return files;
    }
    const std::string mate =
        isRead1 ? mateOf(name, kRead1Mark, kRead2Mark) : mateOf(name, kRead2Mark, kRead1Mark);
    const std::optional<std::string> found = mateInDirectory(files.directory, mate);
    files.paired = found.has_value();
    files.file1 = isRead1 ? name : found.value_or(mate);
    files.file2 = isRead1 ? found.value_or(mate) : name;
    return files;
}

std::optional<std::string> patientNumberOf(const std::string& read1Name) {
    const std::vector<std::string> pieces = platform::splitAt(read1Name, "_S");
    if (pieces.size() < 2) {
        return std::nullopt;
    }
    return platform::splitAt(pieces[1], "_").front();
}

namespace {

/// The sample numbers of the keys "_S<number>_L001_R<read>_001.fastq" that a name contains, with
/// the numbers as the keys write them: 1 to 1000 without leading zeros.
std::vector<std::int64_t> samplesNamed(std::string_view name, char read) {
    std::string tail = "_L001_R?_001.fastq";
    tail[tail.find('?')] = read;
    std::vector<std::int64_t> samples;
    for (std::size_t at = name.find("_S"); at != std::string_view::npos;
         at = name.find("_S", at + 1)) {
        std::size_t end = at + 2;
        std::int64_t number = 0;
        while (end < name.size() && name[end] >= '0' && name[end] <= '9' &&
               number <= kHighestSampleNumber) {
            number = 10 * number + (name[end] - '0');
            ++end;
        }
        const bool asWritten =
            end > at + 2 && name[at + 2] != '0' && number <= kHighestSampleNumber;
        if (asWritten && name.substr(end, tail.size()) == tail) {
            samples.push_back(number);
        }
    }
    return samples;
}

} // namespace

std::vector<PatientSlot> planBatch(const std::vector<std::string>& names) {
    std::map<std::int64_t, PatientSlot> slots;
    for (const std::string& name : names) {
        if (name.empty() || name.front() == '_' || name.front() == '.') {
            continue;
        }
        const std::vector<std::int64_t> read1Samples = samplesNamed(name, '1');
        for (const std::int64_t sample : read1Samples) {
            slots[sample].file1 = name;
        }
        for (const std::int64_t sample : samplesNamed(name, '2')) {
            // A name that holds both keys of one sample is its read 1.
            bool isRead1 = false;
            for (const std::int64_t other : read1Samples) {
                isRead1 = isRead1 || other == sample;
            }
            if (!isRead1) {
                slots[sample].file2 = name;
            }
        }
    }
    std::vector<PatientSlot> batch;
    for (auto& [sample, slot] : slots) {
        slot.sampleNumber = sample;
        batch.push_back(std::move(slot));
    }
    return batch;
}

} // namespace document
