// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>

#include "platform/byte_stream.h"

namespace platform {

/// Reads one line into `buffer`, NUL-terminated, without its line end. The one line reader of the
/// system: definition files and FASTQ files are read by the same rules.
///
/// `buffer` has room for `limit` + 1 bytes. LF, CR LF and a lone CR end a line. Returns `buffer`,
/// or nullptr when there is no line to give:
/// - `limit` is below 1 (an empty text is stored);
/// - the stream has ended (or failed: ask it) before a byte of the line was stored;
/// - the count of stored bytes reached `limit` before a line end; the text stored so far stands in
///   `buffer`, and the rest of the line stays in the stream.
/// A lone CR that is the last byte of the stream ends its line as the end of the stream does, so an
/// empty line ended that way is no line. NUL bytes are stored and counted like any other.
char* readLineFromStream(char* buffer, std::ptrdiff_t limit, ByteStream& stream);

} // namespace platform
