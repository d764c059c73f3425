// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>

#include "platform/result.h"

namespace ui {

/// What a saved result consists of.
struct ResultFiles {
    std::string document; ///< the bytes of the result document
    std::string record;   ///< the text of its record; empty: it gets none
};

/// Writes the document under `path` and the record beside it, each whole and both together: where
/// one cannot be written, neither is. Without a record, one that lies there stays; it does not fit
/// the new document, and whoever opens that is told.
platform::Status writeResultFiles(const std::string& path, const ResultFiles& files);

} // namespace ui
