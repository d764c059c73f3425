// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <memory>

#include <QList>
#include <QObject>
#include <QStringList>

#include "document/vexta_document.h"
#include "ui/application/application_commands.h"
#include "ui/application/open_documents.h"
#include "ui/application/quitting.h"
#include "ui/application/recent_files.h"
#include "ui/widgets/files_to_open.h"

namespace ui {

class InformationWindow;
class OpenDocument;
class PreferencesWindow;
class QtCallerHold;
class StartWindow;

/// The application's delegate: first-run values, opening of files, the windows that belong to no
/// document, and quitting. Main thread only.
class AppDelegate : public QObject {
    Q_OBJECT

public:
    /// Stores the first-run values that are missing. `callerHold` is the one in `services`. It and
    /// everything that `services` names must outlive the delegate.
    AppDelegate(const document::DocumentServices& services, const QtCallerHold& callerHold,
                QObject* parent = nullptr);
    ~AppDelegate() override;

    /// Deliberate: false. There is no empty document to open, and the start window is none.
    static constexpr bool applicationShouldOpenUntitledFile() { return false; }

    /// Opens the files that the program was started with, and shows the start window if that leaves
    /// no document.
    void applicationDidFinishLaunching(const QStringList& files);

    /// Opens a file or a folder's first pair as a document, or brings its window forward. False,
    /// after an alert, when it is no document; false also while the program quits.
    bool openFile(const QString& path);
    void openFiles(const QStringList& paths);
    /// Opens the files that another start of the program was given; without files, brings the last
    /// document or the start window forward. Waits while a caller is held: a file that is no
    /// document would put an alert above windows that take no input.
    void filesHandedOver(const QStringList& paths);

    /// Makes `preferenceWindow` key and orders it front.
    void showPreferenceWindow();
    /// Made when it is first asked for.
    PreferencesWindow& preferenceWindow();
    /// Whether the application's command of that title is enabled. Deliberate: a title that
    /// contains "Preferences" always is, whatever state the program is in.
    bool validateMenuItem(const QString& title) const;

    void showAbout();
    void showLicences();
    void showHelp();

    /// Quits; during a run it asks first and then waits for the patient. See readyToQuit().
    void quit();
    /// Quits without a question, as when the desktop session ends. False during a run: somebody
    /// would have to wait for the patient, so the caller ends the program at once.
    bool quitWithoutAsking();

    /// The documents with a window on screen.
    QList<OpenDocument*> documents() const { return m_documents.shown(); }
    const ApplicationActions& actions() const { return m_commands.actions(); }
    StartWindow& startWindow() { return *m_startWindow; }
    RecentFiles& recentFiles() { return m_recentFiles; }

Q_SIGNALS:
    /// Nothing keeps the program from ending now.
    void readyToQuit();

private:
    void connectCommands();
    void connectStartWindow();
    void choose(FileChooser::Kind kind);
    void showStartWindowAsNeeded();
    void takeWhatWasHandedOver();
    void sayNotOpened(const QStringList& paths);
    void endAll();
    void quitWhenAllEnded();

    document::DocumentServices m_services;
    const QtCallerHold& m_callerHold;
    /// What filesHandedOver() got while a caller was held.
    QList<QStringList> m_handedOver;
    bool m_launched = false;
    bool m_quitting = false;
    RecentFiles m_recentFiles;
    ApplicationCommands m_commands;
    OpenDocuments m_documents;
    FileChooser m_fileChooser;
    QuitQuestion m_quitQuestion;
    std::unique_ptr<StartWindow> m_startWindow;
    std::unique_ptr<PreferencesWindow> m_preferenceWindow;
    std::unique_ptr<InformationWindow> m_aboutWindow;
    std::unique_ptr<InformationWindow> m_licencesWindow;
    std::unique_ptr<InformationWindow> m_helpWindow;
    std::unique_ptr<EndingWindow> m_endingWindow;
};

} // namespace ui
