// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <string_view>

#include "archive/archive_graph.h"
#include "platform/result.h"

namespace archive {

/// The bytes of a keyed archive: a binary property list with "$archiver", "$version", "$top" and
/// "$objects", as the platforms' standard unarchivers read it. The same graph gives the same bytes.
/// Texts leave as valid UTF-8 does (an invalid sequence becomes U+FFFD). Fails for a graph that
/// holds a number that is not finite: it has no use in a document.
platform::Result<std::string> writeKeyedArchive(const ArchiveGraph& graph);

/// Reads a keyed archive, binary or XML, that any standard keyed archiver wrote: lists,
/// dictionaries and texts in their growable and fixed forms, unknown keys, any order of objects.
/// Damaged and foreign input is an error whose message says what is wrong, without the file's name.
/// Never crashes; memory stays within a small multiple of the input.
platform::Result<ArchiveGraph> readKeyedArchive(std::string_view bytes);

} // namespace archive
