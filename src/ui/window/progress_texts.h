// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>

#include <QLocale>
#include <QString>

namespace ui {

// What the progress of a run says. Texts are empty where there is nothing to say; numbers are
// written as `locale` writes them.

/// "patient 3 of 12"; empty for a single patient and before the first.
QString patientText(std::size_t position, std::size_t count, const QLocale& locale);

/// "1,234,567 pairs".
QString pairsText(std::int64_t pairs, const QLocale& locale);

/// "640 pairs/s", "1.9 M pairs/s": three digits at most change while a run goes steadily.
QString rateText(std::optional<double> pairsPerSecond, const QLocale& locale);

/// "about 2 min left", in steps that do not flicker: rounded up, and coarser the longer it is.
QString timeLeftText(std::optional<double> seconds, const QLocale& locale);

/// "1.2 GB so far".
QString copiedText(std::optional<std::uint64_t> bytes, const QLocale& locale);

} // namespace ui
