// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
// literal_reference CATALOGUE READ1 READ2: the rules taken at their word on one thread, as
// something to measure a run against. Prints the number of pairs, those that nothing claimed, and
// the pairs of every mutation in the catalogue's order, one to a line. Plain files only; both are
// held in memory.
#include <exception>
#include <iostream>

#include "catalogue/definition_file.h"
#include "support/literal_matching.h"
#include "support/temp_dir.h"

namespace {

int run(const std::string& cataloguePath, const std::string& read1, const std::string& read2) {
    const auto loaded = catalogue::loadDefinitionFile(cataloguePath);
    if (!loaded) {
        std::cerr << loaded.error().message << '\n';
        return 2;
    }
    support::LiteralMatching matching(support::readFile(read1), support::readFile(read2), read1,
                                      loaded.value().domains);
    const support::LiteralOutcome outcome = matching.run();
    if (!outcome.succeeded) {
        std::cerr << outcome.error;
        return 1;
    }
    std::cout << outcome.total << '\n' << outcome.failed << '\n';
    for (const std::int64_t count : outcome.counts) {
        std::cout << count << '\n';
    }
    return 0;
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 4) {
        std::cerr << "usage: literal_reference CATALOGUE READ1 READ2\n";
        return 2;
    }
    try {
        return run(argv[1], argv[2], argv[3]);
    } catch (const std::exception& failure) {
        std::cerr << "literal_reference: " << failure.what() << '\n';
        return 1;
    }
}
