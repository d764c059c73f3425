// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
//
// Runs one window test by its name; options of Qt Test may follow: window_tests popover_test -v2
#include <cstdlib>
#include <filesystem>
#include <iostream>

#include "ui/window_test.h"

namespace support {

namespace {

std::map<std::string, WindowTest>& knownTests() {
    static std::map<std::string, WindowTest> tests; // tests make themselves known before main()
    return tests;
}

} // namespace

const std::map<std::string, WindowTest>& windowTests() {
    return knownTests();
}

bool addWindowTest(const std::string& path, WindowTest test) {
    if (!knownTests().emplace(std::filesystem::path(path).stem().string(), test).second) {
        std::cerr << path << ": another test has this name\n";
        std::abort();
    }
    return true;
}

} // namespace support

int main(int argc, char** argv) {
    const auto& tests = support::windowTests();
    const auto chosen = argc > 1 ? tests.find(argv[1]) : tests.end();
    if (chosen == tests.end()) {
        std::cerr << "Usage: window_tests TEST [OPTION OF QT TEST]...\nTests:\n";
        for (const auto& [name, test] : tests) {
            std::cerr << "  " << name << '\n';
        }
        return EXIT_FAILURE;
    }
    argv[1] = argv[0];
    return chosen->second(argc - 1, argv + 1);
}
