// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "catalogue/mut_domain.h"

namespace catalogue {

/// Whether in every read pair that holds the core of `later`, in the reads that its strand word
/// names, the core of `earlier` is found too. Standing before `later` in a domain, `earlier` then
/// takes the pair: within a domain the first match counts.
///
/// That is so when `earlier` asks for no read that `later` does not ask for, and there is a place
/// in the later core at which every base that agrees with it agrees with the earlier core as well;
/// reads of A, C, G, T and N are looked at. One way past `earlier` remains, and no catalogue can
/// exclude it: the quality gate looks at the leftmost place only and turns an entry down where its
/// core stands at the start of a read with low qualities, although it stands inside `later` as
/// well. Two equal cores with the same strand word do not even leave that.
bool shadows(const Mutation& earlier, const Mutation& later);

} // namespace catalogue
