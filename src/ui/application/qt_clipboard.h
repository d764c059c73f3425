// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>

#include "platform/clipboard.h"

namespace ui {

/// The desktop's clipboard. Main thread only.
class QtClipboard : public platform::Clipboard {
public:
    void setPlainText(const std::string& text) override;
};

} // namespace ui
