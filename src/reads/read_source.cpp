// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
//
// Opens an input and picks its decoder: gzip by the name's extension, never by the content, so a
// working copy that happens to begin like gzip stays text. A plain file's bytes are handed on from
// the file's own blocks; its position is counted here, for the progress. Tested by
// gzip_source_test.cpp and batch_reader_test.cpp.
#include "reads/read_source.h"

#include <utility>

#include "platform/files.h"
#include "reads/gzip_source.h"

namespace reads {
namespace {

/// The bytes of a file as they are.
class PlainSource final : public ReadSource {
public:
    PlainSource(std::unique_ptr<platform::ByteStream> file, std::uint64_t fileSize)
        : m_file(std::move(file)), m_fileSize(fileSize) {}

    std::uint64_t fileSize() const noexcept override { return m_fileSize; }
    std::uint64_t fileBytesTaken() const noexcept override {
        return m_given - static_cast<std::uint64_t>(m_blockEnd - next());
    }

private:
    bool nextBlock() override {
        const std::size_t size = m_file->available();
        if (size == 0) {
            setStatus(m_file->status());
            return false;
        }
        setBlock(m_file->next(), size);
        m_blockEnd = m_file->next() + size;
        m_given += size;
        m_file->skip(size);
        return true;
    }

    std::size_t readPastBlock(char* to, std::size_t size) override {
        const std::size_t count = m_file->read(to, size);
        m_given += count;
        if (count == 0) {
            setStatus(m_file->status());
        }
        return count;
    }

    std::unique_ptr<platform::ByteStream> m_file;
    std::uint64_t m_fileSize;
    std::uint64_t m_given = 0;
    const char* m_blockEnd = nullptr;
};

struct OpenedFile {
    std::unique_ptr<platform::ByteStream> stream;
    std::uint64_t size = 0;
};

platform::Result<OpenedFile> openFile(const std::string& path,
                                      const std::optional<platform::FileIdentity>& expected = {}) {
    auto stream = platform::openRegularFile(path, expected);
    if (!stream) {
        return stream.error();
    }
    const auto size = platform::regularFileSize(path);
    if (!size) {
        return size.error();
    }
    return OpenedFile{std::move(stream).value(), size.value()};
}

GzipBackend preferredBackend() noexcept {
    return gzipBackendAvailable(GzipBackend::isal) ? GzipBackend::isal : GzipBackend::zlib;
}

std::unique_ptr<Inflater> makeInflater(GzipBackend backend) {
    return backend == GzipBackend::isal ? makeIsalInflater() : makeZlibInflater();
}

std::unique_ptr<ReadSource> gzipReads(OpenedFile file, GzipBackend backend) {
    return std::make_unique<GzipSource>(std::move(file.stream), file.size, makeInflater(backend));
}

} // namespace

platform::Result<std::unique_ptr<ReadSource>>
openReads(const std::string& path, ReadsEncoding encoding,
          const std::optional<platform::FileIdentity>& expected) {
    auto file = openFile(path, expected);
    if (!file) {
        return file.error();
    }
    if (encoding == ReadsEncoding::byFileName && platform::pathExtension(path) == "gz") {
        return gzipReads(std::move(file).value(), preferredBackend());
    }
    return std::unique_ptr<ReadSource>(
        std::make_unique<PlainSource>(std::move(file.value().stream), file.value().size));
}

platform::Result<std::unique_ptr<ReadSource>> openGzipReads(const std::string& path,
                                                            GzipBackend backend) {
    auto file = openFile(path);
    return file ? gzipReads(std::move(file).value(), backend)
                : platform::Result<std::unique_ptr<ReadSource>>(file.error());
}

bool gzipBackendAvailable(GzipBackend backend) noexcept {
    return backend == GzipBackend::zlib || isalIsBuiltIn();
}

} // namespace reads
