// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include "cli/definition_choice.h"

#include "platform/files.h"
#include "platform/resources.h"

namespace cli {

platform::Result<std::optional<std::string>> chooseDefinitionFile(const Arguments& arguments) {
    if (!arguments.cataloguePath) {
        return platform::resourcePath("ReferenceNucleotideSequence", "txt");
    }
    const auto file = platform::openRegularFile(*arguments.cataloguePath);
    if (!file) {
        return platform::Error{"--catalogue: " + file.error().message};
    }
    return arguments.cataloguePath;
}

} // namespace cli
