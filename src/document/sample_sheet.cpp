// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
//
// A table says which files are whose reads, where names do not. It is written by people and
// spreadsheets, so everything that is wrong with it is told at once, with the line, before anything
// runs: a number that two samples share, or a file that stands in two lines, would mix up people.
// Tested by sample_sheet_test.cpp.
#include "document/sample_sheet.h"

#include <algorithm>
#include <array>
#include <map>
#include <utility>

#include "document/reads_name.h"
#include "platform/files.h"

namespace document {
namespace {

constexpr std::size_t kLargestSheet = std::size_t{64} * 1024 * 1024;
constexpr std::size_t kColumns = 4;
constexpr std::array<const char*, kColumns> kColumnNames = {"sample", "number", "r1", "r2"};
constexpr std::size_t kMissing = std::string_view::npos;

using Fields = std::vector<std::string_view>;

/// Without blanks at its ends, which spreadsheets leave and nobody sees.
std::string_view trimmed(std::string_view text) {
    constexpr std::string_view kBlanks = " \r";
    const std::size_t begin = text.find_first_not_of(kBlanks);
    if (begin == std::string_view::npos) {
        return {};
    }
    return text.substr(begin, text.find_last_not_of(kBlanks) - begin + 1);
}

Fields fieldsOf(std::string_view line) {
    Fields fields;
    std::size_t begin = 0;
    for (std::size_t tab = line.find('\t'); tab != std::string_view::npos;
         tab = line.find('\t', begin)) {
        fields.push_back(trimmed(line.substr(begin, tab - begin)));
        begin = tab + 1;
    }
    fields.push_back(trimmed(line.substr(begin)));
    return fields;
}

bool isBlank(std::string_view line) {
    return line.find_first_not_of(" \t\r") == std::string_view::npos;
}

std::string inQuotes(std::string_view text) {
    return "\"" + std::string(text) + "\"";
}

/// Reads the lines one by one.
class SheetParser {
public:
    SampleSheet parse(std::string_view text) {
        if (text.substr(0, 2) == "\xff\xfe" || text.substr(0, 2) == "\xfe\xff") {
            fault(0, "the file is UTF-16; expected UTF-8");
            return std::move(m_sheet);
        }
        if (text.substr(0, 3) == "\xef\xbb\xbf") {
            text.remove_prefix(3);
        }
        std::size_t number = 0;
        while (!text.empty()) {
            const std::size_t end = std::min(text.find('\n'), text.size());
            readLine(++number, text.substr(0, end));
            text.remove_prefix(std::min(end + 1, text.size()));
        }
        if (!m_headWasRead) {
            fault(0, "no head line; expected the columns sample, number, r1 and r2");
        } else if (m_sheet.rows.empty() && m_sheet.faults.empty()) {
            fault(0, "no sample stands under the head line");
        }
        return std::move(m_sheet);
    }

private:
    void fault(std::size_t line, std::string text) {
        m_sheet.faults.push_back({line, std::move(text)});
    }
    void readLine(std::size_t number, std::string_view line);
    void readHead(std::size_t number, const Fields& names);
    void readRow(std::size_t number, const Fields& fields);

    SampleSheet m_sheet;
    bool m_headWasRead = false;
    std::array<std::size_t, kColumns> m_columns{};
};

void SheetParser::readLine(std::size_t number, std::string_view line) {
    if (isBlank(line) || line.front() == '#') {
        return;
    }
    if (line.find('\0') != std::string_view::npos) {
        fault(number, "the line holds a zero byte");
    } else if (!m_headWasRead) {
        m_headWasRead = true;
        readHead(number, fieldsOf(line));
    } else {
        readRow(number, fieldsOf(line));
    }
}

void SheetParser::readHead(std::size_t number, const Fields& names) {
    for (std::size_t i = 0; i < kColumns; ++i) {
        const auto found = std::find(names.begin(), names.end(), kColumnNames[i]);
        m_columns[i] =
            found == names.end() ? kMissing : static_cast<std::size_t>(found - names.begin());
        if (found == names.end()) {
            fault(number, "the head line names no column " + inQuotes(kColumnNames[i]) +
                              (names.size() == 1 ? "; columns are separated by tabs" : ""));
        } else if (std::find(found + 1, names.end(), kColumnNames[i]) != names.end()) {
            fault(number, "the head line names the column " + inQuotes(kColumnNames[i]) + " twice");
        }
    }
}

void SheetParser::readRow(std::size_t number, const Fields& fields) {
    const std::size_t faultsBefore = m_sheet.faults.size();
    std::array<std::string, kColumns> values;
    for (std::size_t i = 0; i < kColumns; ++i) {
        if (m_columns[i] == kMissing) {
            continue;
        }
        if (m_columns[i] < fields.size()) {
            values[i] = fields[m_columns[i]];
        }
        if (values[i].empty()) {
            fault(number, std::string(kColumnNames[i]) + " is empty");
        }
    }
    const auto& [sample, patient, read1, read2] = values;
    if (!patient.empty() && !isPatientNumber(patient)) {
        fault(number, "number " + inQuotes(patient) + ": expected a whole number from 1");
    }
    const bool isComplete =
        std::find(m_columns.begin(), m_columns.end(), kMissing) == m_columns.end();
    if (isComplete && m_sheet.faults.size() == faultsBefore) {
        m_sheet.rows.push_back({number, sample, patient, read1, read2});
    }
}

/// Makes the plan of rows that can be read, and looks at their files.
class SheetPlanner {
public:
    SheetPlanner(std::string directory, SampleSheet sheet)
        : m_directory(std::move(directory)), m_sheet(std::move(sheet)) {}

    AnalysisPlan plan() {
        for (const SampleSheetRow& row : m_sheet.rows) {
            lookAtNumber(row);
            const std::string read1 = fileOf(row, "r1", row.read1);
            const std::string read2 = fileOf(row, "r2", row.read2);
            addLane(row, {read1, read2});
        }
        AnalysisPlan plan;
        plan.directory = m_directory;
        plan.patients = std::move(m_patients);
        return plan;
    }
    /// By rising line. REQUIRES: plan() was called.
    const std::vector<SampleSheetFault>& faults() {
        std::stable_sort(m_sheet.faults.begin(), m_sheet.faults.end(),
                         [](const auto& one, const auto& other) { return one.line < other.line; });
        return m_sheet.faults;
    }

private:
    struct NamedFile {
        std::size_t line = 0;
        const char* column = "";
    };
    void fault(const SampleSheetRow& row, std::string text) {
        m_sheet.faults.push_back({row.line, std::move(text)});
    }
    void lookAtNumber(const SampleSheetRow& row);
    std::string fileOf(const SampleSheetRow& row, const char* column, const std::string& given);
    void addLane(const SampleSheetRow& row, run::LaneFiles lane);

    const std::string m_directory;
    SampleSheet m_sheet;
    std::vector<PlannedPatient> m_patients;
    std::map<std::string, std::size_t> m_patientOfSample;
    /// The first rows of each.
    std::map<std::string, SampleSheetRow> m_samples;
    std::map<std::string, SampleSheetRow> m_numbers;
    std::map<FileKey, NamedFile> m_files;
};

void SheetPlanner::lookAtNumber(const SampleSheetRow& row) {
    const SampleSheetRow& sample = m_samples.emplace(row.sample, row).first->second;
    if (sample.number != row.number) {
        fault(row, "sample " + inQuotes(row.sample) + " has the number " + row.number +
                       " here and " + sample.number + " in line " + std::to_string(sample.line));
        return;
    }
    const SampleSheetRow& number = m_numbers.emplace(row.number, row).first->second;
    if (number.sample != row.sample) {
        fault(row, "number " + row.number + " is that of sample " + inQuotes(number.sample) +
                       " in line " + std::to_string(number.line));
    }
}

/// The full path of a file that can be read and that no other place of the sheet names.
std::string SheetPlanner::fileOf(const SampleSheetRow& row, const char* column,
                                 const std::string& given) {
    std::string full = given.front() == '/' ? given : m_directory + "/" + given;
    if (const auto file = platform::openRegularFile(full); !file) {
        fault(row, std::string(column) + ": " + file.error().message);
        return full;
    }
    const auto key = keyOfFile(full);
    if (!key) {
        return full;
    }
    const auto [known, isNew] = m_files.emplace(*key, NamedFile{row.line, column});
    if (isNew) {
        return full;
    }
    fault(row, known->second.line == row.line
                   ? "r1 and r2 are one file, " + given
                   : std::string(column) + ": " + given + " is " + known->second.column +
                         " of line " + std::to_string(known->second.line) + ", too");
    return full;
}

void SheetPlanner::addLane(const SampleSheetRow& row, run::LaneFiles lane) {
    const auto [place, isNew] = m_patientOfSample.emplace(row.sample, m_patients.size());
    if (isNew) {
        PlannedPatient patient;
        patient.sample = row.sample;
        patient.number = row.number;
        patient.numberIsFromName = false;
        patient.directory = platform::directoryOf(lane.read1Path);
        m_patients.push_back(std::move(patient));
    }
    PlannedPatient& patient = m_patients[place->second];
    patient.lanes.push_back(std::move(lane));
    if (patient.lanes.size() == kMostLanes + 1) {
        fault(row, "sample " + inQuotes(row.sample) + " has more than " +
                       std::to_string(kMostLanes) + " lanes");
    }
}

void tellOfUnusedFiles(AnalysisPlan& plan) {
    const auto names = platform::namesInDirectory(plan.directory);
    if (!names) {
        return;
    }
    plan.unusedReads = unusedReads(names.value(), namesUsedIn(plan.directory, plan.patients));
    for (UnusedReads& file : plan.unusedReads) {
        if (!file.isUsual) {
            file.reason = "the sample sheet does not name it";
        }
    }
}

} // namespace

SampleSheet parseSampleSheet(std::string_view text) {
    return SheetParser().parse(text);
}

Planned planOfSampleSheet(const std::string& path, const std::optional<std::string>& directory) {
    const auto text = platform::readWholeFile(path, kLargestSheet);
    if (!text) {
        return {{}, {text.error().message}};
    }
    SheetPlanner planner(directory.value_or(platform::directoryOf(platform::absolutePath(path))),
                         parseSampleSheet(text.value()));
    Planned planned{planner.plan(), {}};
    for (const SampleSheetFault& fault : planner.faults()) {
        planned.faults.push_back(path + (fault.line == 0 ? "" : ":" + std::to_string(fault.line)) +
                                 ": " + fault.text);
    }
    if (planned.faults.empty()) {
        tellOfUnusedFiles(planned.plan);
    }
    return planned;
}

} // namespace document
