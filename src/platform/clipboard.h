// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>

namespace platform {

/// The general pasteboard, as far as this system uses it: one plain text that replaces the content.
class Clipboard {
public:
    virtual ~Clipboard() = default;
    virtual void setPlainText(const std::string& text) = 0;
};

} // namespace platform
