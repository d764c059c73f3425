// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace document {

/// What to say of a single run without a catalogue. `reason` is why it could not be read.
std::string missingCatalogueNotice(const std::string& reason);

/// The patients of a batch that ran without a catalogue. Each patient's run reads the file anew, so
/// it may go away and come back within a batch. The results of these patients look like those of
/// patients in whom nothing was found; only their numbers tell them apart.
class CatalogueGap {
public:
    /// Adds the patient at that place of the batch. REQUIRES: places rise.
    void add(std::size_t place, const std::string& patientNo, const std::string& reason);
    /// Names the patients added so far: the first stretches of them, and of the others how many,
    /// and why the catalogue could not be read for the last one. REQUIRES: there is one.
    std::string notice() const;

private:
    /// Patients that follow each other in the batch.
    struct Stretch {
        std::size_t lastPlace = 0;
        std::size_t count = 0;
        std::string firstNo;
        std::string lastNo;
    };

    std::vector<Stretch> m_stretches;
    std::string m_reason;
};

} // namespace document
