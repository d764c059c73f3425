// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include "ui/vexta_application.h"

#include <clocale>

namespace ui {

VextaApplication::VextaApplication(int& argc, char** argv) : QApplication(argc, argv) {
    // The application object adopted the user's locale.
    std::setlocale(LC_NUMERIC, "C");
    setOrganizationName(QStringLiteral("vexta"));
    setApplicationName(QStringLiteral("vexta-desktop"));
    setApplicationDisplayName(QStringLiteral("Vexta"));
    setApplicationVersion(QStringLiteral(VEXTA_VERSION));
    setDesktopFileName(QStringLiteral("vexta-desktop"));
}

int VextaApplication::requestUserAttention(UserAttention) {
    return kAttentionRequest;
}

} // namespace ui
