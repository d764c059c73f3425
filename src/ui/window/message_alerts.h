// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>

#include "document/document_window.h"

namespace ui {

/// Alerts as modal message boxes. Their texts may name files, so they are shown as plain text.
/// Main thread only.
class MessageAlerts : public document::Alerts {
public:
    void showAlert(const std::string& message, const std::string& informativeText) override;
};

} // namespace ui
