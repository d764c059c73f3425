// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>

#include <QString>

#include "document/document_window.h"
#include "settings/settings_store.h"

namespace ui {

/// The request behind a run, as far as the words at its end depend on it.
struct RunRequest {
    bool batch = false;
    /// The patients of the batch; 0 until it has begun.
    std::size_t planned = 0;
    QString directory;
};

/// What the window says at the end of an analysis: "10 analysed, 1 failed, 1 skipped".
struct OutcomeLine {
    QString text; ///< empty if the tables say enough
    bool problem = false;
};
OutcomeLine outcomeLine(const document::AnalysisOutcome& outcome, const RunRequest& request);

/// A window title for a file: "name - folder", since names alone repeat.
QString titleOfFile(const QString& path);

/// The two thresholds as stored, and what they mean.
QString thresholdsText(const settings::SettingsStore& settings);

/// "78.8 % of the read pairs"; empty without read pairs.
QString mappedShare(std::int64_t mapped, std::int64_t total);

} // namespace ui
