// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
//
// Reopening a result: read the document, then write the outputs. No run takes part, so there is no
// document object and no catalogue. The places of the outputs are checked first, against the
// input's own too: no output can replace the result that it comes from. Tested by
// show_program_test.cpp.
#include "cli/commands.h"
#include "cli/inputs.h"
#include "cli/outputs.h"
#include "document/result_document.h"
#include "report/result_digest.h"
#include "report/run_record.h"

namespace cli {

Outcome show(const Arguments& arguments, const Streams& streams) {
    Console console(streams.err, arguments.quiet);
    const std::string path = normalPath(arguments.input);
    if (const auto places = checkOutputPaths(arguments.outputs, {path}); !places) {
        console.error(places.error().message);
        return Outcome::unusable;
    }
    const auto results = document::readResultDocument(path);
    if (!results) {
        console.error(document::kCannotOpenResult);
        console.error(results.error().message);
        return Outcome::unusable;
    }
    RunTexts run;
    const auto record = report::findRecord(path);
    if (record.state == report::RecordBeside::State::missing) {
        console.note(record.message);
    } else if (!record.message.empty()) {
        console.warning(record.message);
    }
    run.record = record.run;
    const auto outputs =
        resultOutputs(arguments.outputs, results.value(), run, streams.outIsTerminal);
    if (const auto written = writeOutputs(outputs, streams.out); !written) {
        console.error(written.error().message);
        return Outcome::failed;
    }
    return Outcome::success;
}

Outcome digest(const Arguments& arguments, const Streams& streams) {
    Console console(streams.err, arguments.quiet);
    Outcome outcome = Outcome::success;
    for (const std::string& given : arguments.documents) {
        const auto results = document::readResultDocument(normalPath(given));
        if (!results) {
            console.error(given + ": " + results.error().message);
            outcome = Outcome::unusable;
            continue;
        }
        streams.out << report::resultDigest(results.value().summaryForEachPatientMutAr) << "  "
                    << given << '\n';
    }
    streams.out.flush();
    if (!streams.out) {
        console.error("cannot write standard output");
        return Outcome::failed;
    }
    return outcome;
}

} // namespace cli
