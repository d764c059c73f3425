// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include "ui/window/progress_texts.h"

#include <cmath>

#include <QCoreApplication>

namespace ui {
namespace {

constexpr double kMinute = 60.0;
constexpr double kHour = 3600.0;
constexpr double kDay = 24.0 * kHour;
/// Beyond this a forecast is worth nothing.
constexpr double kLongestForecast = 4.0 * kDay;

QString progressText(const char* text) {
    return QCoreApplication::translate("ui::ProgressTexts", text);
}

/// `number` to two digits from 10 on, and to one decimal below: 1.9, 12, 640.
QString threeDigits(double number, const QLocale& locale) {
    return locale.toString(number, 'f', number < 10.0 ? 1 : 0);
}

double roundedUpTo(double step, double number) {
    return std::ceil(number / step) * step;
}

QString minutes(double number, const QLocale& locale) {
    return progressText("%1 min").arg(locale.toString(static_cast<int>(number)));
}

} // namespace

QString patientText(std::size_t position, std::size_t count, const QLocale& locale) {
    if (position == 0 || count <= 1) {
        return {};
    }
    return progressText("patient %1 of %2")
        .arg(locale.toString(static_cast<qulonglong>(position)),
             locale.toString(static_cast<qulonglong>(count)));
}

QString pairsText(std::int64_t pairs, const QLocale& locale) {
    return progressText("%1 pairs").arg(locale.toString(static_cast<qlonglong>(pairs)));
}

QString rateText(std::optional<double> pairsPerSecond, const QLocale& locale) {
    constexpr double kThousand = 1e3;
    constexpr double kMillion = 1e6;
    if (!pairsPerSecond || !std::isfinite(*pairsPerSecond)) {
        return {};
    }
    const double rate = *pairsPerSecond;
    // What would round up to a thousand of one unit is shown in the next.
    if (rate < kThousand - 0.5) {
        return progressText("%1 pairs/s").arg(locale.toString(rate, 'f', 0));
    }
    if (rate < kMillion - kThousand / 2) {
        return progressText("%1 k pairs/s").arg(threeDigits(rate / kThousand, locale));
    }
    return progressText("%1 M pairs/s").arg(threeDigits(rate / kMillion, locale));
}

QString timeLeftText(std::optional<double> seconds, const QLocale& locale) {
    constexpr double kSecondsStep = 10.0;
    if (!seconds || !std::isfinite(*seconds)) {
        return {};
    }
    if (*seconds < kSecondsStep) {
        return progressText("a few seconds left");
    }
    if (*seconds <= kMinute - kSecondsStep) {
        return progressText("about %1 s left")
            .arg(locale.toString(static_cast<int>(roundedUpTo(kSecondsStep, *seconds))));
    }
    if (*seconds <= kHour - kMinute) {
        return progressText("about %1 left").arg(minutes(std::ceil(*seconds / kMinute), locale));
    }
    if (*seconds > kLongestForecast) {
        return progressText("more than %1 days left")
            .arg(locale.toString(static_cast<int>(kLongestForecast / kDay)));
    }
    const double inSteps = roundedUpTo(10.0 * kMinute, *seconds);
    const double hours = std::floor(inSteps / kHour);
    return progressText("about %1 h %2 left")
        .arg(locale.toString(static_cast<int>(hours)),
             minutes((inSteps - hours * kHour) / kMinute, locale));
}

QString copiedText(std::optional<std::uint64_t> bytes, const QLocale& locale) {
    if (!bytes) {
        return {};
    }
    return progressText("%1 so far")
        .arg(locale.formattedDataSize(static_cast<qint64>(*bytes), 1, QLocale::DataSizeSIFormat));
}

} // namespace ui
