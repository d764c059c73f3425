// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "document/analysis_account.h"
#include "document/vexta_document.h"
#include "platform/result.h"
#include "run/summary_for_each_patient.h"

namespace report {

/// How the program ran, as far as no account of a document knows it.
struct RunConditions {
    std::size_t threads = 0;
    document::InputMode inputMode = document::InputMode::direct;
};

/// The record of a run, which stands under "run" in --json and beside a saved document: program,
/// catalogue, settings, and each patient with files, outcome and fingerprint. Keys are only ever
/// added; docs/formats/json.md says what each means. The JSON text of one object.
std::string runRecord(const document::AnalysisAccount& account, const RunConditions& conditions);

/// Where the record of the document under `path` lies.
std::string recordPathOf(const std::string& path);

/// The text of a record's file: the record, and the digests that tie it to the bytes of its
/// document and that show whether somebody edited it. A key on each line.
std::string recordText(const std::string& run, std::string_view documentBytes);

/// A record that was looked for beside a result document.
struct RecordBeside {
    enum class State {
        missing,    ///< there is none
        unreadable, ///< there is a file, and it is no record
        differs,    ///< the record is that of other results
        fits,       ///< it is this document's
    };
    State state = State::missing;
    /// A sentence that says so, without a full stop; empty where it fits.
    std::string message;
    /// The record as JSON text; empty unless it fits.
    std::string run;
};

/// Looks for the record of the document under `path`. It fits when it is as it was written, and was
/// written beside these very bytes.
RecordBeside findRecord(const std::string& path);

} // namespace report
