// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>

#include <QLocale>
#include <QPushButton>
#include <QString>
#include <QTimer>
#include <QWidget>

#include "document/analysis_progress.h"
#include "document/document_window.h"
#include "run/main_routine.h"

class QLabel;
class QProgressBar;

namespace ui {

/// Whoever hears that the user asked to stop.
class CancelOperationReceiver {
public:
    virtual ~CancelOperationReceiver() = default;
    virtual void cancelOperation(QObject* sender) = 0;
};

/// The Stop button. It passes Esc and clicks on to whoever is its delegate at that moment.
class ButtonForwardingCancelOperationToDelegate : public QPushButton {
    Q_OBJECT

public:
    using QPushButton::QPushButton;

    /// Not owned. With null nothing happens.
    CancelOperationReceiver* delegate = nullptr;

    /// The command of the Esc key.
    void cancelOperation(QObject* sender);

protected:
    void keyPressEvent(QKeyEvent* event) override;
};

// The texts of the progress. They are empty when there is nothing to say, and write numbers as
// `locale` does.

/// "patient 3 of 12"; empty for a single patient and before the first.
QString patientText(std::size_t position, std::size_t count, const QLocale& locale);

/// "1,234,567 pairs".
QString pairsText(std::int64_t pairs, const QLocale& locale);

/// "640 pairs/s", "1.9 M pairs/s": at most three digits, so that a steady run shows a steady text.
QString rateText(std::optional<double> pairsPerSecond, const QLocale& locale);

/// "about 2 min left": rounded up, in steps that are coarser the longer it takes, and so do not
/// flicker.
QString timeLeftText(std::optional<double> seconds, const QLocale& locale);

/// "1.2 GB so far".
QString copiedText(std::optional<std::uint64_t> bytes, const QLocale& locale);

/// The progress of a run along the bottom of its window: which patient of how many, a bar, the
/// pairs so far, their rate and the time left, or the working copy in the making. Hidden while
/// nothing runs. It reads the run's counters five times a second and forecasts after kLeastSeconds.
class RunProgressView : public QWidget {
    Q_OBJECT

public:
    /// Shorter reading says nothing about the time left.
    static constexpr double kLeastSeconds = 5.0;

    /// `routine` must outlive the view.
    explicit RunProgressView(const run::MainRoutine& routine, QWidget* parent = nullptr)
        : RunProgressView(routine.progress(), parent) {}
    /// `reading` must outlive the view.
    explicit RunProgressView(const run::ReadingProgress& reading, QWidget* parent = nullptr);

    /// The user asked for an analysis.
    void begin();
    /// The run makes this working copy, until prepared(). The view shows its name as plain text.
    void preparing(const document::Preparation& preparation);
    void prepared();
    void patientStarts(std::size_t position, std::size_t count);
    /// The analysis is over.
    void end();

    /// Shows the run as it stands at `now`. The view's own clock calls it.
    void refresh(document::ProgressMeter::Clock::time_point now);

private:
    void showPreparation();
    void showReading(const document::AnalysisProgress& progress);
    /// Shows how much is done, 0 to 1, and never goes back within a run; with nullopt a bar that
    /// only says that something goes on.
    void showDone(std::optional<double> fraction);

    const run::ReadingProgress& m_reading;
    QLabel* m_patient;
    QProgressBar* m_bar;
    /// The pairs so far, or the copy in the making.
    QLabel* m_activity;
    QLabel* m_pace;
    QTimer m_clock;
    std::optional<document::ProgressMeter> m_meter;
    std::optional<document::Preparation> m_preparation;
    std::size_t m_position = 0;
    std::size_t m_count = 0;
    double m_done = 0.0;
};

} // namespace ui
