// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>

#include "reads/read_source.h"

namespace reads {

/// A source of which too much was read: what was given back, then the rest of it. It has failed
/// only when its reader gets to where the source failed, or when the rest is not sound. How much
/// was read ahead is chance; so this is whom to ask, and not the source.
class ResumedReads final : public platform::ByteStream {
public:
    /// The source must outlive the stream.
    ResumedReads(std::string givenBack, ReadSource& source);

    /// As ReadSource::verifyRest(). REQUIRES: nobody reads on afterwards.
    bool verifyRest();

private:
    bool nextBlock() override;

    std::string m_givenBack;
    ReadSource& m_source;
    bool m_isInSource = false;
};

} // namespace reads
