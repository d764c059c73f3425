// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include "reads/gzip_source.h"

namespace reads {

std::unique_ptr<Inflater> makeIsalInflater() {
    return nullptr;
}

bool isalIsBuiltIn() noexcept {
    return false;
}

} // namespace reads
