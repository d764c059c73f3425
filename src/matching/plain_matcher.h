// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "catalogue/mut_domain.h"
#include "matching/matcher.h"

namespace matching {

/// The matcher that is written to be read: every pair walks the catalogue in its order. It is the
/// judge of faster ones.
class PlainMatcher : public Matcher {
public:
    /// Keeps `domains` by shared reference; nothing that it reads may change while it lives.
    explicit PlainMatcher(const catalogue::MutDomains& domains);
    void match(const ReadPairBatch& batch, BatchResult& result) const override;

private:
    catalogue::MutDomains m_domains;
};

} // namespace matching
