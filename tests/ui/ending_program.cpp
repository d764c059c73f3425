// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
//
// The application as its program makes it, with a document on which a command is given at once:
//     ending_program CATALOGUE READ-1-FILE (idle | analyze | analyze-all | busy | "signal twice")
// "idle" says "ready" when the event loop turns, "busy" when it turns no more. "signal twice" sends
// two signals to itself, has all the patience, and says "quit" when its event loop has ended.
#include <chrono>
#include <csignal>
#include <cstdio>
#include <string>
#include <thread>

#include <unistd.h>

#include <QTimer>

#include "platform/program_end.h"
#include "ui/application/app_delegate.h"
#include "ui/application/desktop_services.h"
#include "ui/application/ending_signals.h"
#include "ui/application/open_documents.h"
#include "ui/application/vexta_application.h"
#include "ui/window/window_controller.h"

namespace {

constexpr const char* kSignalTwice = "signal twice";

void say(const char* text) {
    std::puts(text);
    std::fflush(stdout);
}

void command(ui::AppDelegate& delegate, const std::string& name) {
    document::VextaDocument& document = delegate.documents().last()->document();
    if (name == "analyze-all") {
        delegate.documents().last()->windowController()->analyzeAll();
    } else if (name == "analyze") {
        delegate.documents().last()->windowController()->analyze();
    } else if (name == "idle") {
        say("ready");
    } else if (name == "busy") {
        platform::UnfinishedFiles files;
        files.add(*document.fastqFileDir + "/unfinished");
        say("ready");
        while (true) {
            ::pause();
        }
    } else if (name == kSignalTwice) {
        std::raise(SIGTERM);
        std::raise(SIGHUP);
        // Time enough for whoever would end the program at the second.
        std::this_thread::sleep_for(std::chrono::milliseconds(200));
    }
}

} // namespace

int main(int argc, char** argv) {
    const ui::VextaApplication application(argc, argv);
    ui::DesktopServices services(argv[1], run::DefinitionOrigin::shipped);
    ui::AppDelegate delegate(services.documentServices(), services.callerHold());
    QObject::connect(
        &delegate, &ui::AppDelegate::readyToQuit, qApp, [] { QCoreApplication::exit(0); },
        Qt::QueuedConnection);
    const std::string name = argv[3];
    const ui::EndingSignals endingSignals(delegate, name == kSignalTwice ? std::chrono::minutes(5)
                                                                         : std::chrono::seconds(1));
    delegate.applicationDidFinishLaunching({QString::fromLocal8Bit(argv[2])});
    QTimer::singleShot(0, &delegate, [&delegate, name] { command(delegate, name); });
    const int status = QCoreApplication::exec();
    if (name == kSignalTwice) {
        say("quit");
    }
    return status;
}
