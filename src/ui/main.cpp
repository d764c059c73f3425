// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include "ui/vexta_application.h"

int main(int argc, char** argv) {
    const ui::VextaApplication application(argc, argv);
    return ui::VextaApplication::exec();
}
