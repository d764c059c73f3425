// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include "cli/terminal_text.h"

#include <memory>
#include <ostream>
#include <sstream>
#include <string>

#include <gtest/gtest.h>

namespace {

using cli::showable;

TEST(TerminalText, ShowsControlCharactersEscaped) {
    EXPECT_EQ(showable("a\x1b[31m\a\b\x7f\r", ""), "a\\u001b[31m\\u0007\\u0008\\u007f\\u000d");
    EXPECT_EQ(showable(std::string(1, '\0'), ""), "\\u0000");
    EXPECT_EQ(showable("\xC2\x80\xC2\x9B[2J\xC2\xA0", ""), "\\u0080\\u009b[2J\xC2\xA0");
}

TEST(TerminalText, KeepsWhatItIsTold) {
    EXPECT_EQ(showable("a\tb\n", "\t\n"), "a\tb\n");
    EXPECT_EQ(showable("a\tb\n", "\t"), "a\tb\\u000a");
}

TEST(TerminalText, ShowsWhatTurnsTheDirectionOfWritingAndWhatEndsLines) {
    EXPECT_EQ(showable("\xE2\x80\xAE"
                       "evitisoP",
                       ""),
              "\\u202eevitisoP");
    EXPECT_EQ(showable("\xD8\x9C|\xE2\x80\x8E|\xE2\x80\xA8|\xE2\x81\xA6|\xE2\x81\xA9", ""),
              "\\u061c|\\u200e|\\u2028|\\u2066|\\u2069");
}

TEST(TerminalText, ShowsBytesThatAreNoUtf8) {
    EXPECT_EQ(showable("\x9b[2J\xff\xE2\x80", ""), "\\x9b[2J\\xff\\xe2\\x80");
}

TEST(TerminalText, LeavesEveryLetterAsItIs) {
    const std::string text = "Z\xC3\xBCrich \xE6\x97\xA5\xE6\x9C\xAC \xF0\x9F\xA7\xAC \\ \"%n\"";
    EXPECT_EQ(showable(text, ""), text);
}

TEST(TerminalBuffer, ShowsTheSameHoweverTheBytesAreCut) {
    const std::string text = "Z\xC3\xBC\x1b[0m\xE2\x80\xAE\xF0\x9F\xA7\xAC\xff\n\t\xE2\x80";
    const std::string expected = "Z\xC3\xBC\\u001b[0m\\u202e\xF0\x9F\xA7\xAC\\xff\n\t\\xe2\\x80";
    for (std::size_t size = 1; size <= text.size(); ++size) {
        std::ostringstream terminal;
        cli::TerminalBuffer buffer(*terminal.rdbuf());
        std::ostream stream(&buffer);
        for (std::size_t at = 0; at < text.size(); at += size) {
            const std::string piece = text.substr(at, size);
            stream.write(piece.data(), static_cast<std::streamsize>(piece.size()));
        }
        stream.flush();
        EXPECT_EQ(terminal.str(), expected) << "cut into pieces of " << size;
    }
}

TEST(TerminalBuffer, TakesSingleCharacters) {
    std::ostringstream terminal;
    cli::TerminalBuffer buffer(*terminal.rdbuf());
    std::ostream(&buffer) << 'a' << '\x1b' << '\n' << std::flush;
    EXPECT_EQ(terminal.str(), "a\\u001b\n");
}

/// Takes nothing.
class ClosedBuffer : public std::streambuf {};

TEST(TerminalBuffer, FailsWhereTheTerminalDoes) {
    ClosedBuffer closed;
    cli::TerminalBuffer buffer(closed);
    std::ostream stream(&buffer);
    EXPECT_FALSE(stream << "text" << std::flush);
}

TEST(TerminalText, OfRecordsIsACopyWithoutCellsOrLinesOfItsOwn) {
    auto row = std::make_shared<calling::ReportSomaticDNA>();
    row->areaSearched = "KRAS\nP2\tNegative";
    auto patient = std::make_shared<run::SummaryForEachPatient>();
    patient->file1 = "a\x1b.fastq";
    patient->somaticDNAResultMutAr = archive::RecordList<calling::ReportSomaticDNA>::of({row, row});
    const run::PatientList patients =
        archive::RecordList<run::SummaryForEachPatient>::of({patient});
    const run::PatientList shown = cli::withShowableTexts(patients);
    const auto& rows = *(*shown)[0]->somaticDNAResultMutAr;
    EXPECT_EQ((*shown)[0]->file1, "a\\u001b.fastq");
    EXPECT_EQ(rows[0]->areaSearched, "KRAS\\u000aP2\\u0009Negative");
    EXPECT_EQ(rows[0], rows[1]);
    EXPECT_EQ(rows[0]->diagnosis, std::nullopt);
    EXPECT_EQ(patient->file1, "a\x1b.fastq");
}

} // namespace
