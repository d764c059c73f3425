// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include "ui/ending_window.h"

#include <QLabel>
#include <QProgressBar>
#include <QVBoxLayout>

namespace ui {

EndingWindow::EndingWindow() {
    setObjectName(QStringLiteral("endingWindow"));
    setWindowTitle(tr("Vexta"));
    auto* busy = new QProgressBar;
    busy->setRange(0, 0);
    busy->setAccessibleName(tr("Finishing the running patient"));
    auto* rows = new QVBoxLayout(this);
    rows->addWidget(
        new QLabel(tr("The running patient is being finished. Vexta then quits by itself.")));
    rows->addWidget(busy);
}

} // namespace ui
