// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include "matching/read_codes.h"

namespace matching {

bool mayHoldReadCode(std::string_view read) noexcept {
    return mayHoldReadCodePortably(read);
}

bool mayHoldReadCodePortably(std::string_view read) noexcept {
    unsigned char odd = 0;
    for (const char letter : read) {
        const auto byte = static_cast<unsigned char>(letter);
        // A, C and G, and E, which is no code.
        const bool usual = (byte & 0xF9) == 0x41 || byte == 'T' || byte == 'N';
        odd = static_cast<unsigned char>(odd | (usual ? 0 : 1));
    }
    return odd != 0;
}

} // namespace matching
