// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include "settings/settings_table.h"

#include <string>

namespace settings::key {

void writeFirstRunValues(SettingsStore& store) {
    store.setMissing({{std::string(kLeaveIntermediateFiles), false},
                      {std::string(kCalculateFalsePositiveRate), false},
                      {std::string(kND1Threshold), std::string("500")},
                      {std::string(kND2Threshold), std::string("10")},
                      {std::string(kWindowSizeMidi), false}});
}

void writeFirstWindowValues(SettingsStore& store) {
    store.setMissing({{std::string(kCopyNumberOfInternalControl), std::string("100000")}});
}

} // namespace settings::key
