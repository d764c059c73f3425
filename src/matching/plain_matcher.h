// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "catalogue/mut_domain.h"
#include "matching/matcher.h"

namespace matching {

/// The matcher that is written to be read: each pair is compared with the catalogue's entries in
/// their order. It is the reference for faster ones. Its time per pair grows with the catalogue.
class PlainMatcher : public Matcher {
public:
    /// Shares `domains`, which must not change while this lives.
    explicit PlainMatcher(const catalogue::MutDomains& domains);
    void match(const reads::ReadPairBatch& batch, BatchResult& result) const override;

private:
    catalogue::MutDomains m_domains;
};

} // namespace matching
