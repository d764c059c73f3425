// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "platform/result.h"

namespace ui {

/// What the command line of the desktop program asks for.
struct DesktopArguments {
    /// The definition file of --catalogue instead of the one that ships.
    std::optional<std::string> cataloguePath;
    /// Files to open, as given: paths or file URLs.
    std::vector<std::string> files;
};

/// Reads the arguments that the toolkit left, without the program's name. Fails for an option that
/// is not known or lacks its value; "--" ends the options. REQUIRES: answerWithoutWindow() had no
/// answer.
platform::Result<DesktopArguments> parseDesktopArguments(const std::vector<std::string>& arguments);

/// The answer to "--help" or "--version", anywhere among all arguments before "--"; nullopt when
/// neither is there. It needs no display, so ask it before the toolkit takes its own options.
std::optional<std::string> answerWithoutWindow(const std::vector<std::string>& arguments);

} // namespace ui
