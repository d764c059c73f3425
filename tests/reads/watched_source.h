// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <utility>

#include "support/text_source.h"

namespace reads {

/// Calls before each block, with how many bytes it has given.
class WatchedSource : public support::TextSource {
public:
    using Watcher = std::function<void(std::size_t)>;

    WatchedSource(const std::string& text, Watcher beforeBlock, std::string errorAtEnd = "")
        : TextSource(text, 1000, std::move(errorAtEnd)), m_beforeBlock(std::move(beforeBlock)) {}

private:
    bool nextBlock() override {
        m_beforeBlock(fileBytesTaken());
        return TextSource::nextBlock();
    }
    Watcher m_beforeBlock;
};

} // namespace reads
