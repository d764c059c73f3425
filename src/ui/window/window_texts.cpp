// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
//
// The sentences of a document window, as functions of plain values: every wording can be tested
// without a window. The line at the end of a run says what the tables do not show, and the way out
// where the controls stay off. Tested by window_texts_test.cpp.
#include "ui/window/window_texts.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QStringList>

#include "settings/settings_table.h"

namespace ui {
namespace {

using End = document::AnalysisOutcome::End;

QString windowText(const char* text) {
    return QCoreApplication::translate("ui::WindowTexts", text);
}

/// The way out when the controls stay disabled.
QString openAgain() {
    return windowText("Close this document and open it again to analyse.");
}

OutcomeLine failedSingleRun() {
    return {windowText("The analysis failed; the error log (F8) says why.") + QLatin1Char(' ') +
                openAgain(),
            true};
}

OutcomeLine batchSummary(const document::AnalysisOutcome& outcome, std::size_t planned) {
    const std::size_t analysed = outcome.patientsRun - outcome.patientsFailed;
    QStringList parts{windowText("%1 analysed").arg(analysed)};
    if (outcome.patientsFailed > 0) {
        parts.append(windowText("%1 failed").arg(outcome.patientsFailed));
    }
    if (planned > outcome.patientsRun) {
        parts.append(windowText("%1 skipped").arg(planned - outcome.patientsRun));
    }
    QString text = parts.join(QStringLiteral(", "));
    if (outcome.patientsFailed > 0) {
        text += windowText("; the error log (F8) says why");
    }
    return {text, outcome.patientsFailed > 0};
}

QString thresholdLine(const settings::SettingsStore& settings, const char* name,
                      const settings::Setting& setting) {
    const std::int64_t value = settings::integerSetting(settings, setting);
    QString line = windowText("%1 threshold: %2").arg(QLatin1String(name)).arg(value);
    if (setting.needsRepair(value)) {
        line += QLatin1Char(' ') +
                windowText("(below 1: becomes %1 at the next call)").arg(setting.repaired(value));
    }
    return line;
}

} // namespace

OutcomeLine outcomeLine(const document::AnalysisOutcome& outcome, const RunRequest& request) {
    switch (outcome.end) {
    case End::finished:
        if (request.batch) {
            return batchSummary(outcome, request.planned);
        }
        return outcome.patientsFailed > 0 ? failedSingleRun() : OutcomeLine();
    case End::cancelled:
    case End::changed:
        return outcome.patientsRun > 0
                   ? batchSummary(outcome, request.planned)
                   : OutcomeLine{windowText("Stopped before the first patient."), false};
    case End::unpaired:
        return {windowText("Nobody was analysed: a patient has only one of its two files."), true};
    case End::noPatients:
        return {
            windowText("There is no pair of FASTQ files to analyse in %1.").arg(request.directory) +
                QLatin1Char(' ') + openAgain(),
            true};
    case End::noPatientNumber:
        return {windowText("Nobody was analysed: the file name holds no patient number."), true};
    case End::catalogueFaulty:
        break;
    }
    return {windowText("Nobody was analysed: the catalogue cannot be used; the error log (F8) says "
                       "why."),
            true};
}

QString titleOfFile(const QString& path) {
    const QFileInfo file(path);
    // Doubled, since in a window title a single one is the place for the mark of unsaved changes.
    QString title = file.fileName() + QStringLiteral(" - ") + file.path();
    return title.replace(QStringLiteral("[*]"), QStringLiteral("[*][*]"));
}

QString thresholdsText(const settings::SettingsStore& settings) {
    using namespace settings::key;
    return thresholdLine(settings, "ND1", kND1Threshold) + QLatin1Char('\n') +
           windowText("The least number of informative reads, normal and mutant together, for a "
                      "point mutation to be called. Below it the call is \"ND *1\".") +
           QStringLiteral("\n\n") + thresholdLine(settings, "ND2", kND2Threshold) +
           QLatin1Char('\n') + windowText("Kept with the settings; no call depends on it.") +
           QStringLiteral("\n\n") +
           windowText("Both can be changed in the preferences, at once also for patients of a run "
                      "that is going on.");
}

QString mappedShare(std::int64_t mapped, std::int64_t total) {
    if (total <= 0) {
        return {};
    }
    const double share = 100.0 * static_cast<double>(mapped) / static_cast<double>(total);
    return windowText("%1 % of the read pairs").arg(QString::number(share, 'f', 1));
}

} // namespace ui
