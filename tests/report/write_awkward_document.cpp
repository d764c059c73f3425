// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
//
// Writes the result document of AwkwardPatients, for check_digest_page.py.
// Usage: write_awkward_document FILE.vexta
#include <cstdio>

#include "awkward_patients.h"
#include "document/result_document.h"
#include "platform/files.h"

int main(int argc, char** argv) {
    if (argc != 2) {
        return 2;
    }
    const run::MainMutDictionary document{report::AwkwardPatients::make(), 0};
    const auto bytes = document::encodeResultDocument(document);
    const auto written = bytes ? platform::writeFileAtomically(argv[1], bytes.value())
                               : platform::Status(bytes.error());
    if (!written) {
        std::fprintf(stderr, "%s\n", written.error().message.c_str());
        return 1;
    }
    return 0;
}
