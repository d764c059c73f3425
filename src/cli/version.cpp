// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include "cli/version.h"

#include "reads/read_source.h"

namespace cli {

std::string versionLine() {
    const bool withIsal = reads::gzipBackendAvailable(reads::GzipBackend::isal);
    return std::string("vexta ") + VEXTA_VERSION +
           (withIsal ? " (.gz by ISA-L)" : " (.gz by zlib)");
}

} // namespace cli
