// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include "platform/setting_keys.h"

#include <string>

namespace platform::setting {

namespace {

void storeIfMissing(SettingsStore& store, std::string_view key, const SettingValue& value) {
    if (!store.value(key)) {
        store.setValue(key, value);
    }
}

} // namespace

void writeFirstRunValues(SettingsStore& store) {
    storeIfMissing(store, kLeaveIntermediateFiles, false);
    storeIfMissing(store, kCalculateFalsePositiveRate, false);
    storeIfMissing(store, kND1Threshold, std::string("500"));
    storeIfMissing(store, kND2Threshold, std::string("10"));
    storeIfMissing(store, kWindowSizeMidi, false);
}

void writeFirstWindowValues(SettingsStore& store) {
    storeIfMissing(store, kCopyNumberOfInternalControl, std::string("100000"));
}

} // namespace platform::setting
