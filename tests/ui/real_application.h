// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <filesystem>
#include <iostream>
#include <stdexcept>
#include <string>

#include <QMainWindow>
#include <QtTest>

#include "document/result_document.h"
#include "platform/files.h"
#include "platform/resources.h"
#include "support/temp_dir.h"
#include "ui/application/app_delegate.h"
#include "ui/application/desktop_services.h"
#include "ui/application/open_documents.h"
#include "ui/window/window_controller.h"

namespace support {

inline void require(bool holds, const std::string& what) {
    if (!holds) {
        throw std::runtime_error(what);
    }
}

/// A home for one process, away from a user's settings, and a screen of usual size. Make it before
/// the application object.
class ProgramHome {
public:
    ProgramHome() {
        for (const char* place :
             {"HOME", "XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_CACHE_HOME", "XDG_RUNTIME_DIR"}) {
            qputenv(place, QByteArray::fromStdString(dir.path()));
        }
        qInstallMessageHandler(printMessage);
        const std::string screen =
            dir.write("screen.json",
                      R"({"screens": [{"name": "screen", "x": 0, "y": 0, "width": 1920, )"
                      R"("height": 1200, "logicalDpi": 96, "logicalBaseDpi": 96, "dpr": 1}]})");
        qputenv("QT_QPA_PLATFORM", QByteArray::fromStdString("offscreen:configfile=" + screen));
    }

    TempDir dir;

private:
    static void printMessage(QtMsgType, const QMessageLogContext&, const QString& message) {
        // The platform without a screen tells of every wish that it cannot fulfil.
        if (!message.startsWith(QStringLiteral("This plugin does not support"))) {
            std::cerr << message.toStdString() << '\n';
        }
    }
};

/// The application with the services of the program, the shipped catalogue and the user's settings.
struct RealApplication {
    ui::WindowController& open(const std::string& path) {
        require(delegate.openFile(QString::fromStdString(path)), "cannot open " + path);
        ui::WindowController& window = *delegate.documents().last()->windowController();
        require(QTest::qWaitForWindowActive(window.mainWindow), "the window did not come up");
        return window;
    }

    ui::DesktopServices services{
        platform::resourcePath("ReferenceNucleotideSequence", "txt").value(),
        run::DefinitionOrigin::shipped};
    ui::AppDelegate delegate{services.documentServices(), services.callerHold()};
};

inline void waitForEndOfRun(const ui::WindowController& window, int milliseconds) {
    require(QTest::qWaitFor([&window] { return !window.analysisIsRunning(); }, milliseconds),
            "the run did not end");
}

/// Writes a result document of those patients and returns its path.
inline std::string saveResult(const run::PatientList& patients, const std::string& path) {
    const auto bytes = document::encodeResultDocument({patients, 0});
    require(bytes.ok() && platform::writeFileAtomically(path, bytes.value()).ok(),
            "cannot write " + path);
    return path;
}

} // namespace support
