// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include <iostream>

#include "platform/resources.h"

int main(int count, char** arguments) {
    if (count != 3) {
        return 2;
    }
    const auto path = platform::resourcePath(arguments[1], arguments[2]);
    std::cout << path.value_or("none");
    return std::cout.flush() ? 0 : 1;
}
