// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <string_view>

namespace platform {

/// The text with every invalid UTF-8 sequence replaced by U+FFFD, one for each maximal part of a
/// sequence (Unicode 15, section 3.9, "U+FFFD Substitution of Maximal Subparts").
std::string toValidUtf8(std::string_view bytes);

} // namespace platform
