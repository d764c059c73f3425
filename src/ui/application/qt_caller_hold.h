// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QObject>

#include "platform/work_queues.h"

namespace ui {

/// Holds its caller while the windows go on painting and the main queue's tasks run. The work gets
/// a thread of its own, and the caller turns an event loop. The pointer says that the program is
/// busy.
///
/// The hold drops clicks, keys, drops and the window manager's requests to close. It does not keep
/// them for later: a hold may last minutes, and the user meant them for what the window showed
/// then, such as a second click on the same button. A modal message box still takes its answer: the
/// hold could not end without it.
class QtCallerHold : public QObject, public platform::CallerHold {
    Q_OBJECT

public:
    void hold(const platform::Task& work) override;
    /// Whether a caller is held.
    bool isHolding() const { return m_holds > 0; }

Q_SIGNALS:
    /// The last hold is over; its caller goes on when the receivers return.
    void over();

private:
    int m_holds = 0;
};

} // namespace ui
