// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
// What a document window shows and offers while a run goes on. The view asks for the run's counters
// on a clock of its own; the run never waits for a window and posts nothing for each batch. The
// texts are rounded so that they change as seldom as they can: a number that flickers cannot be
// read, and a label that changes its width moves the bar beside it. Tested by
// progress_texts_test.cpp and run_progress_view_test.cpp; the Stop button by
// window_controller_test.cpp.
#include "ui/window/run_controls.h"

#include <algorithm>
#include <chrono>
#include <cmath>

#include <QCoreApplication>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLocale>
#include <QProgressBar>

#include "platform/files.h"

namespace ui {

// --- The Stop button

void ButtonForwardingCancelOperationToDelegate::cancelOperation(QObject* sender) {
    if (delegate != nullptr) {
        delegate->cancelOperation(sender);
    }
}

void ButtonForwardingCancelOperationToDelegate::keyPressEvent(QKeyEvent* event) {
    if (event->matches(QKeySequence::Cancel)) {
        cancelOperation(this);
        return;
    }
    QPushButton::keyPressEvent(event);
}

// --- The texts

namespace {

constexpr double kMinute = 60.0;
constexpr double kHour = 3600.0;
constexpr double kDay = 24.0 * kHour;
/// Beyond this a forecast is worth nothing.
constexpr double kLongestForecast = 4.0 * kDay;

QString progressText(const char* text) {
    return QCoreApplication::translate("ui::ProgressTexts", text);
}

/// `number` with one decimal below 10, with none from 10 on: 1.9, 12, 640.
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
    // A rate that would round up to a thousand of one unit is shown in the next.
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

// --- The view

namespace {

using document::AnalysisProgress;
using document::ProgressMeter;

constexpr auto kInterval = std::chrono::milliseconds(200);
/// Steps of the bar: so many that it moves smoothly even for one patient of many.
constexpr int kBarSteps = 10000;
/// File names are elided to about as many letters.
constexpr int kLettersOfName = 40;

QLabel* plainLabel(const QString& objectName, QWidget* parent) {
    auto* label = new QLabel(parent);
    label->setObjectName(objectName);
    label->setTextFormat(Qt::PlainText);
    return label;
}

/// The texts that are not empty, with room between them.
QString joined(const QString& first, const QString& second) {
    return first.isEmpty() || second.isEmpty() ? first + second
                                               : first + QStringLiteral("   ") + second;
}

/// Sets a text that only widens its label during a run: the bar beside it must not tremble with
/// each digit.
void setSteadyText(QLabel& label, const QString& text) {
    label.setText(text);
    label.setMinimumWidth(std::max(label.minimumWidth(), label.sizeHint().width()));
}

std::optional<std::uint64_t> sizeOf(const std::string& path) {
    const auto size = platform::regularFileSize(path);
    return size ? std::optional(size.value()) : std::nullopt;
}

} // namespace

RunProgressView::RunProgressView(const run::ReadingProgress& reading, QWidget* parent)
    : QWidget(parent), m_reading(reading),
      m_patient(plainLabel(QStringLiteral("runPatientLabel"), this)), m_bar(new QProgressBar(this)),
      m_activity(plainLabel(QStringLiteral("runActivityLabel"), this)),
      m_pace(plainLabel(QStringLiteral("runPaceLabel"), this)) {
    m_bar->setObjectName(QStringLiteral("runProgressBar"));
    m_bar->setAccessibleName(tr("Progress of the analysis"));
    m_bar->setFormat(tr("%p %"));
    setAccessibleName(tr("Progress"));
    auto* row = new QHBoxLayout(this);
    row->addWidget(m_patient);
    row->addWidget(m_bar, 1);
    row->addWidget(m_activity);
    row->addWidget(m_pace);
    m_clock.setInterval(kInterval);
    connect(&m_clock, &QTimer::timeout, this, [this] { refresh(ProgressMeter::Clock::now()); });
    hide();
}

void RunProgressView::begin() {
    m_meter.emplace(m_reading);
    m_preparation.reset();
    m_position = 0;
    m_count = 0;
    m_done = 0.0;
    m_activity->setMinimumWidth(0);
    m_pace->setMinimumWidth(0);
    m_clock.start();
    refresh(ProgressMeter::Clock::now());
    show();
}

void RunProgressView::preparing(const document::Preparation& preparation) {
    m_preparation = preparation;
    refresh(ProgressMeter::Clock::now());
}

void RunProgressView::prepared() {
    m_preparation.reset();
    refresh(ProgressMeter::Clock::now());
}

void RunProgressView::patientStarts(std::size_t position, std::size_t count) {
    m_position = position;
    m_count = count;
    refresh(ProgressMeter::Clock::now());
}

void RunProgressView::end() {
    m_clock.stop();
    m_meter.reset();
    hide();
}

void RunProgressView::refresh(ProgressMeter::Clock::time_point now) {
    if (!m_meter) {
        return;
    }
    const AnalysisProgress progress = m_meter->look(m_position, m_count, now);
    m_patient->setText(patientText(m_position, m_count, QLocale()));
    showDone(document::fractionOfRun(progress));
    if (m_preparation) {
        showPreparation();
    } else {
        showReading(progress);
    }
    const QString left = timeLeftText(document::secondsLeft(progress, kLeastSeconds), QLocale());
    const QString rate =
        m_preparation ? QString() : rateText(document::pairsPerSecond(progress), QLocale());
    setSteadyText(*m_pace, joined(rate, left));
}

void RunProgressView::showPreparation() {
    const QString name = QString::fromStdString(m_preparation->name);
    const int room = m_activity->fontMetrics().averageCharWidth() * kLettersOfName;
    const QString shown = m_activity->fontMetrics().elidedText(name, Qt::ElideMiddle, room);
    setSteadyText(*m_activity, joined(tr("Preparing %1").arg(shown),
                                      copiedText(sizeOf(m_preparation->copyPath), QLocale())));
    m_activity->setToolTip(Qt::convertFromPlainText(name));
}

void RunProgressView::showReading(const AnalysisProgress& progress) {
    setSteadyText(*m_activity,
                  m_position == 0 ? tr("Starting…") : pairsText(progress.pairs, QLocale()));
    m_activity->setToolTip(QString());
}

void RunProgressView::showDone(std::optional<double> fraction) {
    if (!fraction) {
        m_bar->setRange(0, 0);
        return;
    }
    m_done = std::max(m_done, *fraction);
    m_bar->setRange(0, kBarSteps);
    m_bar->setValue(static_cast<int>(m_done * kBarSteps));
}

} // namespace ui
