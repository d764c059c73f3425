// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
//
// A batch may have a thousand patients, and each of them may run without a catalogue. The notice
// has to stay one line: it names stretches of patients that follow each other ("3 to 9"), the first
// few of them, and counts the rest. Tested by catalogue_gap_test.cpp.
#include "document/catalogue_gap.h"

namespace document {
namespace {

/// As many as one line says before it is no longer read.
constexpr std::size_t kStretchesNamed = 5;

std::string gapSentence(const std::string& whom, const std::string& consequence,
                        const std::string& reason) {
    return "The catalogue could not be read" + whom + ": no target was searched, " + consequence +
           " is empty. " + reason + ".";
}

} // namespace

std::string missingCatalogueNotice(const std::string& reason) {
    return gapSentence("", "every result", reason);
}

void CatalogueGap::add(std::size_t place, const std::string& patientNo, const std::string& reason) {
    if (m_stretches.empty() || m_stretches.back().lastPlace + 1 != place) {
        m_stretches.push_back({place, 0, patientNo, patientNo});
    }
    Stretch& stretch = m_stretches.back();
    stretch.lastPlace = place;
    stretch.lastNo = patientNo;
    ++stretch.count;
    m_reason = reason;
}

std::string CatalogueGap::notice() const {
    std::string named;
    std::size_t patients = 0;
    std::size_t others = 0;
    for (std::size_t i = 0; i < m_stretches.size(); ++i) {
        const Stretch& stretch = m_stretches[i];
        patients += stretch.count;
        if (i >= kStretchesNamed) {
            others += stretch.count;
            continue;
        }
        named += (i == 0 ? "" : ", ") + stretch.firstNo;
        if (stretch.count > 1) {
            named += (stretch.count == 2 ? ", " : " to ") + stretch.lastNo;
        }
    }
    if (others > 0) {
        named += " and " + std::to_string(others) + " more";
    }
    return gapSentence((patients == 1 ? " for patient " : " for patients ") + named,
                       "every result of theirs", m_reason);
}

} // namespace document
