// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <optional>
#include <string>
#include <vector>

namespace ui {

/// What the command line of the desktop program asks for.
struct DesktopArguments {
    /// Why the arguments cannot be understood; nullopt when they can.
    std::optional<std::string> fault;
    /// The definition file of --catalogue instead of the one that ships.
    std::optional<std::string> cataloguePath;
    /// Files to open, as given: paths or file URLs.
    std::vector<std::string> files;
};

/// Reads the arguments after the program's name. The toolkit has taken its own options, and
/// answerWithoutWindow() had none.
DesktopArguments parseDesktopArguments(const std::vector<std::string>& arguments);

/// The answer to "--help" or "--version" anywhere among all arguments; nullopt when neither is
/// asked for. It needs no display, and so comes before the toolkit takes its own options.
std::optional<std::string> answerWithoutWindow(const std::vector<std::string>& arguments);

} // namespace ui
