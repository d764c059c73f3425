// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include "matching/gzip_source.h"

namespace matching {

std::unique_ptr<Inflater> makeIsalInflater() {
    return nullptr;
}

bool isalIsBuiltIn() noexcept {
    return false;
}

} // namespace matching
