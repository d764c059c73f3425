// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "platform/result.h"
#include "run/main_routine.h"

namespace document {

/// The document type of a saved result, and the one extension of its files.
inline constexpr std::string_view kResultDocumentType = "VEXtAFile";
inline constexpr std::string_view kResultDocumentExtension = "vexta";
/// The document type of FASTQ files; any other word opens as one.
inline constexpr std::string_view kReadsDocumentType = "FASTQ";

/// Bytes. A document of 50,000 patients with a hundred mutations each is about as large.
inline constexpr std::size_t kLargestResultDocument = std::size_t{1} << 30U;

/// The bytes of a result document: a keyed archive whose root dictionary holds the patients under
/// "summaryForEachPatientMutAr" and the shown row under "selectedPatientRowNo", and nothing else.
/// Fails for a record that holds a number that is not finite.
platform::Result<std::string> encodeResultDocument(const run::MainMutDictionary& dictionary);

/// Decodes a result document that this system or another keyed archiver of these records wrote. A
/// missing list reads as an empty one and a missing row as 0; the row may lie beyond the list. The
/// message of an error says what is wrong, without the file's name.
///
/// Records may be shared, so a file of a few kilobytes can stand for billions of rows. One whose
/// Expansion is more than ten times its objects, or than a multiple of its bytes for texts, beyond
/// an allowance that no honest small document reaches, is an error. Whatever encodeResultDocument()
/// makes of an analysis is far from it.
platform::Result<run::MainMutDictionary> decodeResultDocument(std::string_view bytes);

/// What an alert says of a document that readResultDocument() cannot read, above the reason.
inline constexpr const char* kCannotOpenResult = "The result document cannot be opened.";

/// Reads and decodes the file. The message of an error names it.
platform::Result<run::MainMutDictionary> readResultDocument(const std::string& path);

/// What tables and exports make of a document, in which each record stands as often as the lists
/// reach it.
struct Expansion {
    /// Patients, domains, mutations and rows. A row's domain is not followed.
    std::size_t records = 0;
    /// Bytes of their texts, the name of a row's domain among them.
    std::size_t textBytes = 0;
};

/// A document may expand to this many records whatever its size.
inline constexpr std::size_t kRecordsOfAnyDocument = 100'000;

/// Counts, and stops as soon as one of the numbers is above that in `most`: what was counted by
/// then is returned.
Expansion expansionOf(const run::PatientList& patients, const Expansion& most);

} // namespace document
