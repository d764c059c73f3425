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

/// Who is told that the user asked to stop.
class CancelOperationReceiver {
public:
    virtual ~CancelOperationReceiver() = default;
    virtual void cancelOperation(QObject* sender) = 0;
};

/// The Stop button. Esc and a click pass on to whoever is its delegate at that moment.
class ButtonForwardingCancelOperationToDelegate : public QPushButton {
    Q_OBJECT

public:
    using QPushButton::QPushButton;

    /// Not owned; without one nothing happens.
    CancelOperationReceiver* delegate = nullptr;

    /// The command of the Esc key.
    void cancelOperation(QObject* sender);

protected:
    void keyPressEvent(QKeyEvent* event) override;
};

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

/// The progress of a run along the bottom of its window: which patient of how many, a bar, pairs so
/// far, their rate and the time left, or which working copy is being made. Hidden while nothing
/// runs. Looks at the run's counters about five times a second; shows forecasts after 5 seconds.
class RunProgressView : public QWidget {
    Q_OBJECT

public:
    /// Less than this says nothing about the time left.
    static constexpr double kLeastSeconds = 5.0;

    /// `routine` outlives the view.
    explicit RunProgressView(const run::MainRoutine& routine, QWidget* parent = nullptr)
        : RunProgressView(routine.progress(), parent) {}
    /// `reading` outlives the view.
    explicit RunProgressView(const run::ReadingProgress& reading, QWidget* parent = nullptr);

    /// An analysis was asked for.
    void begin();
    /// A working copy is being made, until prepared(). Its name is shown as plain text.
    void preparing(const document::Preparation& preparation);
    void prepared();
    void patientStarts(std::size_t position, std::size_t count);
    /// The analysis is over.
    void end();

    /// Shows the run as it is at `now`; called by the view's own clock.
    void refresh(document::ProgressMeter::Clock::time_point now);

private:
    void showPreparation();
    void showReading(const document::AnalysisProgress& progress);
    /// How much is done, 0 to 1; nullopt: a bar that only says that something goes on. Never goes
    /// back within a run.
    void showDone(std::optional<double> fraction);

    const run::ReadingProgress& m_reading;
    QLabel* m_patient;
    QProgressBar* m_bar;
    /// What goes on: pairs so far, or the copy that is made.
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
