// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "platform/byte_stream.h"
#include "platform/file_identity.h"
#include "platform/result.h"

namespace reads {

/// How the bytes of an input become FASTQ text.
enum class ReadsEncoding {
    /// Plain text, whatever the name says: working copies.
    plain,
    /// Gzip for a name with the extension "gz", else plain: inputs read where they are.
    byFileName,
};

/// A source of FASTQ text that can say how far it is.
class ReadSource : public platform::ByteStream {
public:
    /// Bytes of the file on disk (compressed ones for gzip) and how many of them were taken.
    virtual std::uint64_t fileSize() const noexcept = 0;
    virtual std::uint64_t fileBytesTaken() const noexcept = 0;
    /// Members of a gzip file that were begun; 0 for a plain one.
    virtual std::uint64_t gzipMembers() const noexcept { return 0; }
    /// What the run should tell although reading succeeded ("3 zero bytes between or after gzip
    /// members are ignored"); empty when there is nothing.
    virtual std::string warning() const { return {}; }
    /// Whether the bytes that nobody asked for are sound as well; reads on to the end if they can
    /// be verified. A gzip file is sound only if every member is, a plain file has nothing to
    /// verify.
    virtual platform::Status verifyRest() { return {}; }

    /// The files that it reads, one after the other. A single file is its own only part. warning()
    /// and status() of a part tell of that file alone.
    virtual std::size_t partCount() const noexcept { return 1; }
    /// REQUIRES: index < partCount().
    virtual const ReadSource& part(std::size_t) const noexcept { return *this; }
};

/// Opens a regular file as a source of reads. Gzip input is decoded member by member; every
/// member's CRC-32 and length are verified, and truncated or damaged data make the stream fail (its
/// error() says what and where). Zero bytes after a member are padding and give a warning; any
/// other byte there may be what damage left of a further member, so the file counts as damaged.
/// With `expected`, any other file under the path is refused.
platform::Result<std::unique_ptr<ReadSource>>
openReads(const std::string& path, ReadsEncoding encoding,
          const std::optional<platform::FileIdentity>& expected = {});

/// A gzip decoder over `compressed`: ISA-L's where it was built in, else zlib's.
enum class GzipBackend { isal, zlib };
bool gzipBackendAvailable(GzipBackend backend) noexcept;
/// REQUIRES: gzipBackendAvailable(backend). For openReads() and for tests that hold both to one
/// rule.
platform::Result<std::unique_ptr<ReadSource>> openGzipReads(const std::string& path,
                                                            GzipBackend backend);

} // namespace reads
