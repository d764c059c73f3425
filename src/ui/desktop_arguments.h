// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <optional>
#include <string>
#include <vector>

namespace ui {

/// What the command line of the desktop program asks for.
struct DesktopArguments {
    enum class Wish {
        window,
        help,
        version,
        fault, ///< it cannot be understood; `fault` says why
    };
    Wish wish = Wish::window;
    std::string fault;
    /// The definition file of --catalogue instead of the one that ships.
    std::optional<std::string> cataloguePath;
    /// Files to open, as given: paths or file URLs.
    std::vector<std::string> files;
};

/// Reads the arguments after the program's name. Options of the toolkit are expected to be gone.
DesktopArguments parseDesktopArguments(const std::vector<std::string>& arguments);

/// Whether "--help" or "--version" is asked for: they are answered without a display, and so before
/// the toolkit takes its own options.
bool wantsNoWindow(const std::vector<std::string>& arguments);

std::string desktopHelp();
/// "vexta-desktop 0.1.0", without a line feed.
std::string desktopVersionLine();

} // namespace ui
