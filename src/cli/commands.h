// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>

#include "cli/arguments.h"
#include "cli/console.h"

/// The commands of the program. Results go to `streams.out`, everything else to `streams.err`.
namespace cli {

/// Analyses the pair of which the input is either file.
Outcome analyze(const Arguments& arguments, const Streams& streams);
/// Analyses every complete pair in the input directory, one after the other.
Outcome analyzeAll(const Arguments& arguments, const Streams& streams);

/// Reopens the result document that is the input and writes its exports. It needs no settings and
/// no catalogue: everything that is shown stands in the document.
Outcome show(const Arguments& arguments, const Streams& streams);

/// Prints the fingerprint of each result document and its path.
Outcome digest(const Arguments& arguments, const Streams& streams);

/// Prints every mutation of the catalogue as a tab-separated table with a head line.
Outcome listCatalogue(const Arguments& arguments, const Streams& streams);
/// Prints every finding as "PATH:LINE: error: TEXT" or "PATH:LINE: warning: TEXT" and a last line
/// that counts them. Fails when there is an error.
Outcome checkCatalogue(const Arguments& arguments, const Streams& streams);

/// "catalogue ReferenceNucleotideSequence.txt, sha256 …", with its line end: the definition file
/// that analyses use where no option names one.
std::string catalogueLine();

} // namespace cli
