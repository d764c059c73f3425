// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
//
// The program `vexta-desktop`, step by step. What needs no display is answered first. The toolkit
// then takes its options out of the arguments, and only what is left is judged. A second start
// hands its files over before it opens or stores anything. Signals are handled last, since they ask
// the delegate to quit. Tested by desktop_arguments_test.cpp, single_instance_test.cpp and
// ending_signals_test.cpp.
#include <iostream>
#include <string>
#include <vector>

#include "platform/files.h"
#include "platform/resources.h"
#include "ui/application/app_delegate.h"
#include "ui/application/desktop_arguments.h"
#include "ui/application/desktop_services.h"
#include "ui/application/ending_signals.h"
#include "ui/application/single_instance.h"
#include "ui/application/vexta_application.h"
#include "ui/widgets/shown_texts.h"

namespace {

constexpr int kSuccess = 0;
constexpr int kFailed = 1;
constexpr int kUnusable = 2;

std::vector<std::string> withoutProgramName(int argc, char** argv) {
    return {argv + (argc > 0 ? 1 : 0), argv + argc};
}

/// The arguments that the toolkit left.
std::vector<std::string> ownArguments() {
    std::vector<std::string> arguments;
    for (const QString& argument : QCoreApplication::arguments().mid(1)) {
        arguments.push_back(ui::enginePath(argument));
    }
    return arguments;
}

int refuse(const std::string& reason) {
    std::cerr << "vexta-desktop: " << reason << '\n';
    return kUnusable;
}

/// The definition file of --catalogue, else the one that ships; empty when that is missing.
std::string definitionFileOf(const ui::DesktopArguments& arguments) {
    return arguments.cataloguePath ? *arguments.cataloguePath
                                   : platform::resourcePath("ReferenceNucleotideSequence", "txt")
                                         .value_or(std::string());
}

QStringList filesOf(const ui::DesktopArguments& arguments) {
    QStringList files;
    for (const std::string& file : arguments.files) {
        // Absolute, since another process may open them.
        files.append(ui::pathOfArgument(ui::shownPath(file)));
    }
    return files;
}

int runWindows(const ui::DesktopArguments& arguments) {
    const std::string definition = definitionFileOf(arguments);
    const QStringList files = filesOf(arguments);
    const ui::SingleInstance instance(ui::sessionDirectory(), ui::sessionName(definition));
    if (!instance.isFirst() && instance.handOver(files)) {
        return kSuccess;
    }
    ui::DesktopServices services(definition, arguments.cataloguePath
                                                 ? run::DefinitionOrigin::named
                                                 : run::DefinitionOrigin::shipped);
    ui::AppDelegate delegate(services.documentServices(), services.callerHold());
    QObject::connect(&instance, &ui::SingleInstance::handedOver, &delegate,
                     &ui::AppDelegate::filesHandedOver);
    QObject::connect(
        &delegate, &ui::AppDelegate::readyToQuit, qApp, [] { QCoreApplication::exit(kSuccess); },
        Qt::QueuedConnection);
    const ui::EndingSignals endingSignals(delegate);
    delegate.applicationDidFinishLaunching(files);
    return QCoreApplication::exec();
}

} // namespace

int main(int argc, char** argv) {
    if (const auto answer = ui::answerWithoutWindow(withoutProgramName(argc, argv))) {
        std::cout << *answer;
        return std::cout.flush() ? kSuccess : kFailed;
    }
    const ui::VextaApplication application(argc, argv);
    const auto arguments = ui::parseDesktopArguments(ownArguments());
    if (!arguments) {
        return refuse(arguments.error().message);
    }
    if (arguments.value().cataloguePath) {
        const auto file = platform::openRegularFile(*arguments.value().cataloguePath);
        if (!file) {
            return refuse("--catalogue: " + file.error().message);
        }
    }
    return runWindows(arguments.value());
}
