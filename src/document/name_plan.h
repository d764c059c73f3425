// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <vector>

#include "document/analysis_plan.h"
#include "document/input_discovery.h"

namespace document {

/// How a directory's files become patients beside the rule of planBatch().
struct NameRules {
    /// Takes every name of readsNameOf() but those of sample 0, and numbers samples without number.
    bool anyName = false;
    /// Takes all lanes, else lane 1 and, with `anyName`, names without lane.
    bool everyLane = false;
    /// Passes over a sample of which only one read is there; else it is a fault.
    bool skipUnpaired = false;
    /// Goes on where two samples have one number, or a pair's names differ in more than the mark.
    bool allowSharedNumbers = false;
};

/// The plan of a directory by those rules. By rising number, then by the samples' names.
///
/// A number that a name does not tell is the patient's place in the batch, or the next one that no
/// other patient has. Faults: a file that stands for the same read of one sample as another one, a
/// lane of which one read is missing while the sample has whole lanes, and what the rules do not
/// allow. A file and its compressed twin are no fault: the plain one is read.
Planned planByNames(const std::string& directory, const std::vector<std::string>& names,
                    const NameRules& rules);

/// The plan of the sample to which a pair belongs, with all lanes that the pair's directory holds:
/// the names that differ in the lane alone. A fault as in planByNames(), and a name without lane.
Planned planOfEveryLane(const ReadPairFiles& pair, const std::vector<std::string>& names);

} // namespace document
