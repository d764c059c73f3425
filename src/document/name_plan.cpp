// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
//
// Names as they come from real sequencers, archives and people: several lanes, no lane, no number,
// other endings. Files are gathered by sample and number, then by lane, then by read. Wherever two
// files could stand for one thing, or a piece of a sample is missing, there is no plan but a line
// that names the files: a guess would mix up reads or lose some. Tested by name_plan_test.cpp.
#include "document/name_plan.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <iterator>
#include <map>
#include <optional>
#include <set>
#include <tuple>
#include <utility>

#include "document/reads_name.h"
#include "platform/files.h"

namespace document {
namespace {

constexpr std::uint64_t kNoLane = UINT64_MAX;
constexpr std::size_t kPatientsNamed = 20;
constexpr std::size_t kMostDigitsOfALane = 9;

/// Samples with a number come first, by number.
struct SampleKey {
    bool hasNoNumber = false;
    std::size_t digits = 0;
    std::string number; ///< without leading zeros
    std::string sample;

    bool operator==(const SampleKey&) const = default;
    bool operator<(const SampleKey& other) const {
        return std::tie(hasNoNumber, digits, number, sample) <
               std::tie(other.hasNoNumber, other.digits, other.number, other.sample);
    }
};

SampleKey keyOf(const ReadsName& parts) {
    const std::string number(withoutLeadingZeros(parts.number));
    return {parts.number.empty(), number.size(), number, parts.sample};
}

/// The files of one lane of a sample, read 1 and read 2.
struct LaneNames {
    std::array<std::string, 2> names; ///< "": not there
    std::array<ReadsName, 2> parts;

    bool isWhole() const { return !names[0].empty() && !names[1].empty(); }
    std::size_t present() const { return names[0].empty() ? 1 : 0; }
};

/// By lane number; kNoLane where the names tell none.
using Lanes = std::map<std::uint64_t, LaneNames>;

/// "read 1 of sample P", "read 1 of sample P, lane 2".
std::string placeText(const ReadsName& parts) {
    return "read " + std::to_string(parts.read) + " of sample " + parts.sample +
           (parts.lane.empty() ? "" : ", lane " + parts.lane);
}

bool isHidden(const std::string& name) {
    return name.empty() || name.front() == '_' || name.front() == '.';
}

/// Turns the names of a directory into a plan.
class NamePlanner {
public:
    NamePlanner(std::string directory, const std::vector<std::string>& names,
                const NameRules& rules)
        : m_directory(std::move(directory)), m_names(names), m_rules(rules) {
        std::sort(m_names.begin(), m_names.end());
    }

    /// Only files of that sample and part, where one is given.
    void restrictTo(const ReadsName& only) { m_only = only; }

    Planned plan() {
        gather();
        for (const auto& [key, lanes] : m_samples) {
            lookAtLanes(key, lanes);
        }
        if (!m_only) {
            giveNumbers();
            lookAtNumbers();
        }
        if (m_planned.faults.empty()) {
            tellOfUnusedFiles();
        }
        return std::move(m_planned);
    }

private:
    bool isTaken(const ReadsName& parts) const;
    bool isTakenNumber(const ReadsName& parts) const;
    bool isTakenLane(const ReadsName& parts) const;
    void gather();
    void take(const std::string& name, const ReadsName& parts);
    void lookAtLanes(const SampleKey& key, const Lanes& lanes);
    bool lookAtMates(const SampleKey& key, const Lanes& lanes);
    void passOverUnpaired(const SampleKey& key, const Lanes& lanes);
    void addPatient(const SampleKey& key, const Lanes& lanes);
    void giveNumbers();
    void lookAtNumbers();
    void tellOfUnusedFiles();
    std::string reasonFor(const UnusedReads& file) const;
    void fault(std::string line) { m_planned.faults.push_back(std::move(line)); }

    const std::string m_directory;
    std::vector<std::string> m_names;
    const NameRules m_rules;
    std::optional<ReadsName> m_only;
    std::map<SampleKey, Lanes> m_samples;
    Planned m_planned;
    /// Of the plan's patients, as a number that other names may tell, too; "" where no name does.
    std::vector<std::string> m_numbers;
    /// Why files that could be read are not.
    std::map<std::string, std::string> m_reasons;
    /// Those of patients that are passed over.
    std::set<std::string> m_told;
};

bool NamePlanner::isTaken(const ReadsName& parts) const {
    if (m_only) {
        return parts.hasR && parts.sample == m_only->sample && parts.number == m_only->number &&
               parts.part == m_only->part && !parts.lane.empty();
    }
    const bool usualForm = parts.hasR && parts.part == "001" &&
                           (parts.ending == ".fastq" || parts.ending == ".fastq.gz");
    return (m_rules.anyName || usualForm) && isTakenNumber(parts) && isTakenLane(parts);
}

bool NamePlanner::isTakenNumber(const ReadsName& parts) const {
    const std::string_view number = withoutLeadingZeros(parts.number);
    if (m_rules.anyName) {
        return parts.number.empty() || !number.empty();
    }
    constexpr std::size_t kDigitsOf1000 = 4;
    return !parts.number.empty() && number == parts.number && !number.empty() &&
           (number.size() < kDigitsOf1000 || number == "1000");
}

bool NamePlanner::isTakenLane(const ReadsName& parts) const {
    if (parts.lane.empty()) {
        return m_rules.anyName;
    }
    return m_rules.everyLane || parts.lane == "001" ||
           (m_rules.anyName && withoutLeadingZeros(parts.lane) == "1");
}

void NamePlanner::gather() {
    for (const std::string& name : m_names) {
        const auto parts = isHidden(name) && !m_only ? std::nullopt : readsNameOf(name);
        if (parts && isTaken(*parts)) {
            take(name, *parts);
        }
    }
}

void NamePlanner::take(const std::string& name, const ReadsName& parts) {
    if (parts.lane.size() > kMostDigitsOfALane) {
        fault(name + ": no lane has the number " + parts.lane);
        return;
    }
    const std::uint64_t lane = parts.lane.empty() ? kNoLane : std::stoull(parts.lane);
    LaneNames& files = m_samples[keyOf(parts)][lane];
    const auto side = static_cast<std::size_t>(parts.read - 1);
    std::string& place = files.names[side];
    if (place.empty()) {
        place = name;
        files.parts[side] = parts;
    } else if (withoutGz(place) == withoutGz(name)) {
        // Sorted names bring the plain file first.
        m_reasons[name] = "another file of this sample is read";
    } else {
        fault(place + " and " + name + " are both " + placeText(parts));
    }
}

void NamePlanner::lookAtLanes(const SampleKey& key, const Lanes& lanes) {
    const LaneNames& first = lanes.begin()->second;
    const LaneNames& last = lanes.rbegin()->second;
    if (lanes.size() > 1 && lanes.rbegin()->first == kNoLane) {
        fault(last.names[last.present()] + " tells no lane and " + first.names[first.present()] +
              " does: one of them may hold the reads of the other");
        return;
    }
    if (lanes.size() > kMostLanes) {
        fault("sample " + key.sample + " has " + std::to_string(lanes.size()) + " lanes, " +
              first.names[first.present()] + " and so on; at most " + std::to_string(kMostLanes) +
              " are read");
        return;
    }
    const bool someAreWhole = std::any_of(lanes.begin(), lanes.end(),
                                          [](const auto& lane) { return lane.second.isWhole(); });
    if (!someAreWhole && !m_only) {
        passOverUnpaired(key, lanes);
    } else if (lookAtMates(key, lanes)) {
        addPatient(key, lanes);
    }
}

/// Whether each lane has both reads, by names that differ in the read mark alone.
bool NamePlanner::lookAtMates(const SampleKey& key, const Lanes& lanes) {
    const std::size_t faultsBefore = m_planned.faults.size();
    for (const auto& [number, lane] : lanes) {
        if (!lane.isWhole()) {
            const std::size_t there = lane.present();
            fault("sample " + key.sample + ", lane " + lane.parts[there].lane + ": " +
                  withoutMateText(lane.names[there], lane.parts[there].mate));
        } else if (withoutGz(lane.parts[0].mate) != withoutGz(lane.names[1]) &&
                   !m_rules.allowSharedNumbers) {
            fault(lane.names[0] + " and " + lane.names[1] + " make up sample " + key.sample +
                  ", but their names differ in more than the read mark");
        }
    }
    return m_planned.faults.size() == faultsBefore;
}

void NamePlanner::passOverUnpaired(const SampleKey& key, const Lanes& lanes) {
    const LaneNames& first = lanes.begin()->second;
    PatientAccount patient;
    patient.sample = key.sample;
    patient.file1 = first.names[0];
    patient.file2 = first.names[1];
    patient.number = key.hasNoNumber
                         ? std::string()
                         : patientNumberOf(first.names[first.present()]).value_or(std::string());
    patient.lines = {unpairedText(key.hasNoNumber ? key.sample : key.number)};
    for (const auto& [number, lane] : lanes) {
        const std::size_t there = lane.present();
        patient.lines.push_back(withoutMateText(lane.names[there], lane.parts[there].mate));
        m_reasons[lane.names[there]] = "its mate is missing";
        m_told.insert(lane.names[there]);
    }
    if (!m_rules.skipUnpaired) {
        std::copy(patient.lines.begin(), patient.lines.end(), std::back_inserter(m_planned.faults));
        return;
    }
    passOver(m_planned.plan, std::move(patient));
}

void NamePlanner::addPatient(const SampleKey& key, const Lanes& lanes) {
    const std::string absolute = platform::absolutePath(m_directory);
    PlannedPatient patient;
    patient.sample = key.sample;
    patient.directory = m_directory;
    for (const auto& [number, lane] : lanes) {
        patient.lanes.push_back({absolute + "/" + lane.names[0], absolute + "/" + lane.names[1]});
    }
    patient.numberIsFromName = !key.hasNoNumber || m_only;
    if (patient.numberIsFromName) {
        patient.number = patientNumberOf(file1Of(patient)).value_or(std::string());
    }
    m_planned.plan.patients.push_back(std::move(patient));
    m_numbers.push_back(key.number);
}

/// A patient without number gets its place in the batch, or the next number that is free.
void NamePlanner::giveNumbers() {
    std::vector<PlannedPatient>& patients = m_planned.plan.patients;
    std::set<std::string> given(m_numbers.begin(), m_numbers.end());
    std::string list;
    std::size_t count = 0;
    for (std::size_t i = 0; i < patients.size(); ++i) {
        if (patients[i].numberIsFromName) {
            continue;
        }
        std::size_t number = i + 1;
        while (!given.insert(std::to_string(number)).second) {
            ++number;
        }
        patients[i].number = std::to_string(number);
        m_numbers[i] = patients[i].number;
        if (++count <= kPatientsNamed) {
            list += (count == 1 ? ": " : ", ") + patients[i].sample + " is " + patients[i].number;
        }
    }
    if (count > kPatientsNamed) {
        list += " and so on";
    }
    if (count > 0) {
        m_planned.plan.warnings.push_back(
            {run::Warning::Kind::doubtfulNumber,
             "Names without a number: such patients are numbered by their place in the batch" +
                 list});
    }
}

void NamePlanner::lookAtNumbers() {
    const std::vector<PlannedPatient>& patients = m_planned.plan.patients;
    std::map<std::string, std::size_t> owners;
    for (std::size_t i = 0; i < patients.size(); ++i) {
        const auto [owner, isNew] = owners.emplace(m_numbers[i], i);
        if (isNew) {
            continue;
        }
        const std::string text = file1Of(patients[owner->second]) + " and " + file1Of(patients[i]) +
                                 " are of two samples with the number " + m_numbers[i];
        if (m_rules.allowSharedNumbers) {
            m_planned.plan.warnings.push_back({run::Warning::Kind::doubtfulNames, text});
        } else {
            fault(text);
        }
    }
}

void NamePlanner::tellOfUnusedFiles() {
    AnalysisPlan& plan = m_planned.plan;
    plan.directory = m_directory;
    plan.unusedReads = unusedReads(m_names, namesUsedIn(m_directory, plan.patients));
    for (UnusedReads& file : plan.unusedReads) {
        file.isTold = m_told.count(file.name) > 0;
        if (!file.isUsual) {
            file.reason = reasonFor(file);
        }
    }
}

/// The reasons of a directory without options, where these rules have no other.
std::string NamePlanner::reasonFor(const UnusedReads& file) const {
    if (const auto known = m_reasons.find(file.name); known != m_reasons.end()) {
        return known->second;
    }
    if (isHidden(file.name)) {
        return file.reason;
    }
    const auto parts = readsNameOf(file.name);
    if (!parts) {
        return m_rules.anyName ? "the name is none of <sample>[_S<number>][_L<lane>]_R<1 or "
                                 "2>[_<part>].<fastq or fq>[.gz]"
                               : "the name is none of <sample>_S<1-1000>_L<lane>_R<1 or "
                                 "2>_001.fastq[.gz]";
    }
    if (!isTakenLane(*parts)) {
        return parts->lane.empty() ? file.reason
                                   : "lane L" + parts->lane +
                                         ": only lane L001 is read; --lanes all reads every lane";
    }
    if (!isTakenNumber(*parts)) {
        return parts->number.empty()
                   ? "the name tells no sample number; --any-name reads it"
                   : "sample number " + parts->number +
                         (m_rules.anyName ? ": no sample has it" : ": only 1 to 1000 are read");
    }
    return parts->part == "001" || !parts->hasR
               ? "names end in \".fastq\" or \".fastq.gz\" behind \"_R1_001\" or \"_R2_001\""
               : "the part is not 001, which alone is read";
}

} // namespace

Planned planByNames(const std::string& directory, const std::vector<std::string>& names,
                    const NameRules& rules) {
    return NamePlanner(directory, names, rules).plan();
}

Planned planOfEveryLane(const ReadPairFiles& pair, const std::vector<std::string>& names) {
    const std::string name = pair.file1.value_or(std::string());
    const auto parts = readsNameOf(name);
    if (!parts || !parts->hasR || parts->lane.empty()) {
        return {{},
                {name + ": the name tells no lane; names of lanes hold \"_L001_\" before "
                        "\"_R1\""}};
    }
    NamePlanner planner(pair.directory, names, {true, true, false, false});
    planner.restrictTo(*parts);
    Planned planned = planner.plan();
    if (planned.plan.patients.empty() && planned.faults.empty()) {
        planned.faults = {pair.directory + ": the lanes cannot be listed"};
    }
    if (planned.faults.empty()) {
        planned.plan = planOfPatient(std::move(planned.plan.patients.front()));
    }
    return planned;
}

} // namespace document
