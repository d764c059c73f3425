// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include "cli/show_command.h"

#include "cli/inputs.h"
#include "cli/outputs.h"
#include "cli/session.h"
#include "document/result_document.h"

namespace cli {

Outcome show(const Arguments& arguments, const Streams& streams) {
    Console console(streams.err, arguments.quiet);
    const std::string path = normalPath(arguments.input);
    if (const auto places = checkOutputPaths(arguments.outputs, {path}); !places) {
        console.error(places.error().message);
        return Outcome::unusable;
    }
    settings::MemorySettingsStore noSettings;
    Session session(arguments, std::string(), noSettings, console);
    if (!session.document().readFromURL(path, document::kResultDocumentType)) {
        return Outcome::unusable;
    }
    if (const auto written = writeOutputs(session.outputs(arguments.outputs, streams), streams.out);
        !written) {
        console.error(written.error().message);
        return Outcome::failed;
    }
    return Outcome::success;
}

} // namespace cli
