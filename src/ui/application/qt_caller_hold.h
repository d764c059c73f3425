// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QObject>

#include "platform/work_queues.h"

namespace ui {

/// A hold during which the windows go on painting and the main queue's tasks run: the work has a
/// thread of its own while the caller's event loop turns. The pointer says that the program is
/// busy.
///
/// Clicks, keys, drops and the window manager's requests to close are dropped meanwhile. They do
/// not wait for the end of the hold: it may last minutes, and what comes then in one burst was
/// meant for what the window showed before, such as a second click on the button that holds. A
/// message box that holds everything up is answered all the same: the hold could not end before.
class QtCallerHold : public QObject, public platform::CallerHold {
    Q_OBJECT

public:
    void hold(const platform::Task& work) override;
    /// Whether a caller is held.
    bool isHolding() const { return m_holds > 0; }

Q_SIGNALS:
    /// No caller is held any more; the last one goes on when this returns.
    void over();

private:
    int m_holds = 0;
};

} // namespace ui
