// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>

#include "document/vexta_document.h"
#include "platform/work_queues.h"
#include "ui/application/desktop_settings.h"
#include "ui/application/qt_caller_hold.h"
#include "ui/application/qt_ports.h"

namespace ui {

/// What the desktop lends to every document. Made on the main thread after the application object;
/// outlives the application delegate.
class DesktopServices {
public:
    /// `definitionFilePath` is empty when no catalogue is named and the one that ships was not
    /// found.
    DesktopServices(std::string definitionFilePath, run::DefinitionOrigin definitionOrigin);

    document::DocumentServices documentServices();
    const QtCallerHold& callerHold() const { return m_callerHold; }

private:
    std::string m_definitionFilePath;
    run::DefinitionOrigin m_definitionOrigin;
    QtMainQueue m_mainQueue;
    DesktopSettings m_settings;
    platform::WorkerPool m_workers;
    QtClipboard m_clipboard;
    MessageAlerts m_alerts;
    QtCallerHold m_callerHold;
};

} // namespace ui
