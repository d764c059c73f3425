// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
//
// A file made anew under a name that others may know: a working copy, the unassigned reads of a
// run. What stands there is removed first, and O_EXCL with O_NOFOLLOW make the file. So nothing is
// ever written through a link, or into a file that another process put there in between. Writes are
// gathered in 64 KiB. Tested by fresh_file_test.cpp.
#include "platform/files.h"

#include <cerrno>
#include <utility>

#include <fcntl.h>

#include "platform/descriptor.h"
#include "platform/program_end.h"

namespace platform {
namespace {

constexpr std::size_t kBufferSize = std::size_t{64} * 1024;

} // namespace

struct FreshFile::State {
    std::string path;
    Descriptor file;
    std::string buffer;
    Status outcome;

    ~State() {
        if (file.isOpen()) {
            flush();
        }
    }

    void writeNow(std::string_view bytes) {
        if (!outcome) {
            return;
        }
        if (const Status written = file.write(bytes); !written) {
            outcome = systemError("write", path, written.error());
        }
    }

    void flush() {
        writeNow(buffer);
        buffer.clear();
    }
};

FreshFile::FreshFile(std::unique_ptr<State> state) : m_state(std::move(state)) {}
FreshFile::FreshFile(FreshFile&&) noexcept = default;
FreshFile& FreshFile::operator=(FreshFile&&) noexcept = default;
FreshFile::~FreshFile() = default;

Result<FreshFile> FreshFile::create(const std::string& path) {
    if (const Status removed = unlinkIfThere(path); !removed) {
        return removed.error();
    }
    const EndPutOff untilOurs; // no file comes into being once the program is ending
    // O_EXCL: what another process puts there in this moment is refused, not written through.
    Descriptor file(
        ::open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, 0666));
    if (!file.isOpen()) {
        return systemError("create", path, errno);
    }
    auto state = std::make_unique<State>();
    state->path = path;
    state->file = std::move(file);
    state->buffer.reserve(kBufferSize);
    return FreshFile(std::move(state));
}

Result<FileIdentity> FreshFile::identity() const {
    return identityOf(m_state->file, m_state->path);
}

Status FreshFile::write(std::string_view bytes) {
    State& state = *m_state;
    if (state.buffer.size() + bytes.size() > kBufferSize) {
        state.flush();
    }
    if (bytes.size() > kBufferSize) {
        state.writeNow(bytes);
    } else {
        state.buffer.append(bytes);
    }
    return state.outcome;
}

Status FreshFile::close() {
    State& state = *m_state;
    if (!state.file.isOpen()) {
        return state.outcome;
    }
    state.flush();
    if (const Status closed = state.file.close(); !closed && state.outcome) {
        state.outcome = systemError("write", state.path, closed.error());
    }
    return state.outcome;
}

} // namespace platform
