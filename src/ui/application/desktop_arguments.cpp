// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
//
// The desktop program's arguments: one option, and file names, in any order.
//
// The toolkit takes options of its own out of the same line, so it goes first, and what is left is
// read here; --help and --version alone are looked for before, as they must work without a display.
// A file name counts as it stands. An argument library would read a folder's name such as "[1,2]"
// as a list of two names, and two wrong files would open; hence this loop.
//
// Tested by desktop_arguments_test.cpp.
#include "ui/application/desktop_arguments.h"

#include <algorithm>
#include <string_view>

namespace ui {

namespace {

constexpr std::string_view kCatalogue = "--catalogue";
constexpr std::string_view kCatalogueWithValue = "--catalogue=";

bool isOption(const std::string& argument) {
    return argument.size() > 1 && argument.front() == '-';
}

bool isHelp(const std::string& argument) {
    return argument == "--help" || argument == "-h";
}

platform::Error faultOf(const std::string& reason) {
    return {reason + "\nRun vexta-desktop --help for the options."};
}

constexpr const char* kHelp =
    "Usage: vexta-desktop [options] [FILE...]\n"
    "\n"
    "Finds read pairs that carry the target sequences of a catalogue, and calls each target.\n"
    "Each FILE is opened as a document: either FASTQ file of a pair (.fastq or .gz), a\n"
    "directory that holds pairs, or a saved result (.vexta).\n"
    "\n"
    "Options:\n"
    "  --catalogue FILE   definition file instead of the one that ships\n"
    "  --version          the program's version\n"
    "  -h, --help         this text\n"
    "\n"
    "Options of the Qt toolkit, such as -style and -platform, are taken as well.\n"
    "The command line program is vexta.\n";

constexpr const char* kVersion = "vexta-desktop " VEXTA_VERSION "\n";

} // namespace

platform::Result<DesktopArguments>
parseDesktopArguments(const std::vector<std::string>& arguments) {
    DesktopArguments parsed;
    bool optionsEnded = false;
    for (auto argument = arguments.begin(); argument != arguments.end(); ++argument) {
        if (optionsEnded || !isOption(*argument)) {
            parsed.files.push_back(*argument);
        } else if (*argument == "--") {
            optionsEnded = true;
        } else if (argument->starts_with(kCatalogueWithValue)) {
            parsed.cataloguePath = argument->substr(kCatalogueWithValue.size());
        } else if (*argument == kCatalogue) {
            if (++argument == arguments.end()) {
                return faultOf("--catalogue: expected a file after it");
            }
            parsed.cataloguePath = *argument;
        } else {
            return faultOf("The option \"" + *argument + "\" is not known.");
        }
    }
    return parsed;
}

std::optional<std::string> answerWithoutWindow(const std::vector<std::string>& arguments) {
    const auto end = std::find(arguments.begin(), arguments.end(), "--");
    if (std::any_of(arguments.begin(), end, isHelp)) {
        return kHelp;
    }
    return std::find(arguments.begin(), end, "--version") != end
               ? std::optional<std::string>(kVersion)
               : std::nullopt;
}

} // namespace ui
