// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include "ui/window/run_progress_view.h"

#include <algorithm>
#include <chrono>

#include <QHBoxLayout>
#include <QLabel>
#include <QLocale>
#include <QProgressBar>

#include "platform/files.h"
#include "ui/window/progress_texts.h"

namespace ui {
namespace {

using document::AnalysisProgress;
using document::ProgressMeter;

constexpr auto kInterval = std::chrono::milliseconds(200);
/// Parts of the bar: it moves smoothly also where one patient of many runs.
constexpr int kBarSteps = 10000;
/// Names of files are shortened to about as many letters.
constexpr int kLettersOfName = 40;

QLabel* plainLabel(const QString& objectName, QWidget* parent) {
    auto* label = new QLabel(parent);
    label->setObjectName(objectName);
    label->setTextFormat(Qt::PlainText);
    return label;
}

/// The parts that say something, with room between them.
QString joined(const QString& first, const QString& second) {
    return first.isEmpty() || second.isEmpty() ? first + second
                                               : first + QStringLiteral("   ") + second;
}

/// A label that only grows while a run goes on: the bar beside it must not tremble with each digit.
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
