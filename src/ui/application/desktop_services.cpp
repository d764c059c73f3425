// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
//
// The engine's ports, put together for the desktop. Each member uses only those made before it:
// settings tell their problems through the main queue. There is one pool of workers, as wide as the
// machine, so two runs at once share it. Tested by desktop_settings_test.cpp and
// ending_signals_test.cpp.
#include "ui/application/desktop_services.h"

#include <utility>

namespace ui {

DesktopServices::DesktopServices(std::string definitionFilePath,
                                 run::DefinitionOrigin definitionOrigin)
    : m_definitionFilePath(std::move(definitionFilePath)), m_definitionOrigin(definitionOrigin),
      m_settings(m_mainQueue), m_workers(platform::WorkerPool::defaultThreadCount()) {}

document::DocumentServices DesktopServices::documentServices() {
    return {{m_settings.store(), m_workers, m_definitionFilePath, m_definitionOrigin},
            m_mainQueue,
            &m_clipboard,
            m_alerts,
            m_callerHold};
}

} // namespace ui
