// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
// How the program ends is decided here alone. Qt's own end with the last window is off, since the
// start window comes back when the last document goes. quit() asks only during a run; the documents
// then close, but one whose patient still runs stays until that is done, behind the EndingWindow.
// The last one to end emits readyToQuit(). A signal takes the short way, quitWithoutAsking().
// Tested by app_delegate_test.cpp, and by ending_signals_test.cpp in a process of its own.
#include "ui/application/app_delegate.h"

#include <utility>

#include <QAction>
#include <QApplication>

#include "settings/settings_table.h"
#include "ui/application/catalogue_facts.h"
#include "ui/application/information_windows.h"
#include "ui/application/open_documents.h"
#include "ui/application/preferences_window.h"
#include "ui/application/qt_caller_hold.h"
#include "ui/application/start_window.h"
#include "ui/widgets/shown_texts.h"
#include "ui/window/document_files.h"

namespace ui {

namespace {

void bringForward(QWidget& window) {
    window.show();
    window.raise();
    window.activateWindow();
}

} // namespace

AppDelegate::AppDelegate(const document::DocumentServices& services, const QtCallerHold& callerHold,
                         QObject* parent)
    : QObject(parent), m_services(services), m_callerHold(callerHold), m_commands(m_recentFiles),
      m_documents(services, m_commands.actions()),
      m_startWindow(std::make_unique<StartWindow>(m_commands.actions(), m_recentFiles)) {
    QGuiApplication::setQuitOnLastWindowClosed(false);
    settings::key::writeFirstRunValues(m_services.run.settings);
    connectCommands();
    connectStartWindow();
    connect(&m_documents, &OpenDocuments::openRequested, this, &AppDelegate::openFiles);
    connect(&m_documents, &OpenDocuments::shownChanged, this,
            &AppDelegate::showStartWindowAsNeeded);
    connect(&m_documents, &OpenDocuments::ended, this, &AppDelegate::quitWhenAllEnded);
    connect(&m_fileChooser, &FileChooser::chosen, this, &AppDelegate::openFiles);
    // Queued, so that the caller that was held goes on first.
    connect(&m_callerHold, &QtCallerHold::over, this, &AppDelegate::takeWhatWasHandedOver,
            Qt::QueuedConnection);
    connect(&m_quitQuestion, &QuitQuestion::confirmed, this, &AppDelegate::endAll);
}

AppDelegate::~AppDelegate() = default;

void AppDelegate::connectCommands() {
    const ApplicationActions& commands = actions();
    connect(&m_commands, &ApplicationCommands::openRequested, this, &AppDelegate::openFiles);
    connect(commands.open, &QAction::triggered, this,
            [this] { choose(FileChooser::Kind::anything); });
    connect(commands.preferences, &QAction::triggered, this, &AppDelegate::showPreferenceWindow);
    connect(commands.quit, &QAction::triggered, this, &AppDelegate::quit);
    connect(commands.about, &QAction::triggered, this, &AppDelegate::showAbout);
    connect(commands.licences, &QAction::triggered, this, &AppDelegate::showLicences);
    connect(commands.help, &QAction::triggered, this, &AppDelegate::showHelp);
}

void AppDelegate::connectStartWindow() {
    const StartWindow* window = m_startWindow.get();
    connect(window, &StartWindow::openReadsRequested, this,
            [this] { choose(FileChooser::Kind::reads); });
    connect(window, &StartWindow::openFolderRequested, this,
            [this] { choose(FileChooser::Kind::folder); });
    connect(window, &StartWindow::openResultRequested, this,
            [this] { choose(FileChooser::Kind::result); });
    connect(window, &StartWindow::openRequested, this, &AppDelegate::openFiles);
    connect(window, &StartWindow::closeRequested, this, &AppDelegate::quit);
}

void AppDelegate::applicationDidFinishLaunching(const QStringList& files) {
    m_startWindow->setNotice(catalogueNotice(m_services.run.definitionFilePath));
    openFiles(files);
    m_launched = true;
    showStartWindowAsNeeded();
}

void AppDelegate::choose(FileChooser::Kind kind) {
    m_fileChooser.ask(kind, QApplication::activeWindow());
}

// --- Opening

bool AppDelegate::openFile(const QString& path) {
    const std::string file = fileStandingFor(enginePath(pathOfArgument(path)));
    if (m_quitting || m_documents.open(file) == nullptr) {
        return false;
    }
    m_recentFiles.add(shownPath(file));
    return true;
}

void AppDelegate::openFiles(const QStringList& paths) {
    for (const QString& path : paths) {
        openFile(path);
    }
}

void AppDelegate::takeWhatWasHandedOver() {
    for (const QStringList& paths : std::exchange(m_handedOver, {})) {
        filesHandedOver(paths);
    }
}

void AppDelegate::filesHandedOver(const QStringList& paths) {
    if (m_callerHold.isHolding()) {
        m_handedOver.append(paths);
        return;
    }
    if (m_quitting) {
        sayNotOpened(paths);
        return;
    }
    openFiles(paths);
    if (!paths.isEmpty()) {
        return;
    }
    if (documents().isEmpty()) {
        bringForward(*m_startWindow);
    } else {
        documents().last()->raiseWindow();
    }
}

void AppDelegate::sayNotOpened(const QStringList& paths) {
    if (!m_endingWindow) {
        return; // nothing keeps the program: it ends now
    }
    if (!paths.isEmpty()) {
        m_endingWindow->sayNotOpened(paths);
    }
    bringForward(*m_endingWindow);
}

void AppDelegate::showStartWindowAsNeeded() {
    const bool needed = m_launched && !m_quitting && documents().isEmpty();
    if (needed && !m_startWindow->isVisible()) {
        bringForward(*m_startWindow);
    } else if (!needed) {
        m_startWindow->hide();
    }
}

// --- Windows that belong to no document

PreferencesWindow& AppDelegate::preferenceWindow() {
    if (!m_preferenceWindow) {
        m_preferenceWindow = std::make_unique<PreferencesWindow>(m_services.run.settings);
    }
    return *m_preferenceWindow;
}

void AppDelegate::showPreferenceWindow() {
    bringForward(preferenceWindow());
}

bool AppDelegate::validateMenuItem(const QString& title) const {
    if (title.contains(QStringLiteral("Preferences"))) {
        return true;
    }
    const QAction* action = m_commands.titled(title);
    return action != nullptr && action->isEnabled();
}

void AppDelegate::showAbout() {
    m_aboutWindow = makeAboutWindow(m_services.run.definitionFilePath);
    connect(m_aboutWindow.get(), &InformationWindow::licencesRequested, this,
            &AppDelegate::showLicences);
    bringForward(*m_aboutWindow);
}

void AppDelegate::showLicences() {
    if (!m_licencesWindow) {
        m_licencesWindow = makeLicencesWindow();
    }
    bringForward(*m_licencesWindow);
}

void AppDelegate::showHelp() {
    if (!m_helpWindow) {
        m_helpWindow = makeHelpWindow();
    }
    bringForward(*m_helpWindow);
}

// --- Quitting

void AppDelegate::quit() {
    if (m_quitting) {
        return;
    }
    if (m_documents.analysisIsRunning()) {
        m_quitQuestion.ask(QApplication::activeWindow());
    } else {
        endAll();
    }
}

bool AppDelegate::quitWithoutAsking() {
    const bool breaksOff = m_callerHold.isHolding() || m_documents.analysisIsRunning();
    endAll();
    return !breaksOff;
}

void AppDelegate::endAll() {
    m_quitting = true;
    m_startWindow->hide();
    if (m_documents.isEmpty()) {
        Q_EMIT readyToQuit();
        return;
    }
    m_documents.closeAll();
    if (!m_documents.isEmpty()) {
        m_endingWindow = std::make_unique<EndingWindow>();
        m_endingWindow->show();
    }
}

void AppDelegate::quitWhenAllEnded() {
    if (m_quitting && m_documents.isEmpty()) {
        Q_EMIT readyToQuit();
    }
}

} // namespace ui
