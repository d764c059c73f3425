// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>

#include "matching/read_source.h"

namespace matching {

/// A source of which too much was read: what was given back, then the rest of it. It has failed
/// only when its reader gets to where the source failed.
class ResumedReads final : public platform::ByteStream {
public:
    /// The source must outlive the stream.
    ResumedReads(std::string givenBack, ReadSource& source);

private:
    bool nextBlock() override;

    std::string m_givenBack;
    ReadSource& m_source;
    bool m_isInSource = false;
};

} // namespace matching
