// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include <QCoreApplication>
#include <QSettings>
#include <QtTest>

#include "document/result_document.h"
#include "support/small_run.h"
#include "support/temp_dir.h"
#include "ui/application/qt_caller_hold.h"
#include "ui/application/qt_ports.h"
#include "ui/window/window_controller.h"

namespace support {

/// Alerts that are only kept: a modal box would hold a test up.
struct KeptAlerts : document::Alerts {
    void showAlert(const std::string& message, const std::string&) override {
        messages.push_back(message);
    }
    std::vector<std::string> messages;
};

/// Settings that call back whenever a rule reads one: on the run's thread, while a patient runs.
struct WatchedSettings : settings::MemorySettingsStore {
    std::optional<settings::SettingValue> value(std::string_view key) const override {
        if (onRead) {
            onRead();
        }
        return settings::MemorySettingsStore::value(key);
    }
    std::function<void()> onRead;
};

/// A document in its real window, on services of its own.
class OpenWindow {
public:
    explicit OpenWindow(const QString& description = QStringLiteral("VextaDocument"))
        : m_description(description) {
        QCoreApplication::setOrganizationName(QStringLiteral("vexta"));
        QCoreApplication::setApplicationName(QStringLiteral("vexta-desktop"));
        QSettings().clear();
        dir.write("catalogue.txt", kSmallCatalogue);
        document = std::make_unique<document::VextaDocument>(document::DocumentServices{
            {settings, workers, dir.file("catalogue.txt")}, queue, &clipboard, alerts, callerHold});
        document->fastqFileDir = reads.path();
    }

    /// Opens a pair of that sample, which is written first.
    void openPair(int sample, int pairs = 3) {
        document->readFromURL(writePair(sample, pairs, pairs), "fastq");
    }
    std::string writePair(int sample, int pairs1, int pairs2) const {
        const std::string start = "p_S" + std::to_string(sample) + "_L001_R";
        reads.write(start + "2_001.fastq", support::reads(pairs2));
        return reads.write(start + "1_001.fastq", support::reads(pairs1));
    }

    /// Puts the patients into the document as if a run had made them.
    void give(const std::vector<std::shared_ptr<run::SummaryForEachPatient>>& patients) const {
        document->mainRoutine().summaryForEachPatientMutAr.emplace();
        for (const auto& patient : patients) {
            document->mainRoutine().summaryForEachPatientMutAr->append(patient);
        }
        if (controller) {
            controller->reloadPatientsTable();
        }
    }
    /// Opens the patients as a saved result.
    void openSaved(const std::vector<std::shared_ptr<run::SummaryForEachPatient>>& patients,
                   std::int64_t row) {
        const auto bytes = document::encodeResultDocument(
            {archive::RecordList<run::SummaryForEachPatient>::of(patients), row});
        document->readFromURL(dir.write("saved.vexta", bytes.value()), "VEXtAFile");
    }

    /// Makes the window and shows it.
    ui::WindowController& show() {
        controller = std::make_unique<ui::WindowController>(*document, m_description, settings,
                                                            ui::ApplicationActions());
        controller->mainWindow->show();
        activate();
        return *controller;
    }
    /// Gives the window the keyboard, as shortcuts need it.
    void activate() const {
        controller->mainWindow->activateWindow();
        if (!QTest::qWaitForWindowActive(controller->mainWindow)) {
            qFatal("the document window did not become active");
        }
    }

    TempDir dir;
    TempDir reads;
    WatchedSettings settings;
    platform::WorkerPool workers{2};
    ui::QtMainQueue queue;
    ui::QtClipboard clipboard;
    KeptAlerts alerts;
    ui::QtCallerHold callerHold;
    std::unique_ptr<document::VextaDocument> document;
    std::unique_ptr<ui::WindowController> controller;

private:
    QString m_description;
};

} // namespace support
