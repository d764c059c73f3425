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

/// Bytes. A document of 50,000 patients with a hundred mutations each is about as large.
inline constexpr std::size_t kLargestResultDocument = std::size_t{1} << 30U;

/// The bytes of a result document: a keyed archive whose root dictionary holds the patients under
/// "summaryForEachPatientMutAr" and the shown row under "selectedPatientRowNo", and nothing else.
/// Fails for a record that holds a number that is not finite.
platform::Result<std::string> encodeResultDocument(const run::MainMutDictionary& dictionary);

/// Reads a result document that this system or another keyed archiver of these records wrote. A
/// missing list reads as an empty one and a missing row as 0; the row may lie beyond the list. The
/// message of an error says what is wrong, without the file's name.
platform::Result<run::MainMutDictionary> decodeResultDocument(std::string_view bytes);

} // namespace document
