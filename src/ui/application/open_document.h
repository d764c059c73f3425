// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <memory>
#include <string>

#include <QObject>
#include <QStringList>

#include "document/vexta_document.h"
#include "ui/window/document_files.h"
#include "ui/window/window_menus.h"

namespace ui {

class WindowController;

/// One open document with its window.
///
/// A window that is closed while a run goes on is hidden at once, and the batch is told to stop;
/// the document itself stays until the running patient is done, since its end would wait for that
/// on the thread of the windows.
class OpenDocument : public QObject {
    Q_OBJECT

public:
    /// `services` and what `actions` names must outlive the document.
    OpenDocument(const document::DocumentServices& services, const ApplicationActions& actions,
                 DirectoriesInUse directoriesInUse, QObject* parent = nullptr);
    ~OpenDocument() override;

    /// Opens the file; false, after an alert, when it is no document.
    bool readFromPath(const std::string& path);
    /// Makes the window and shows it, as the setting "windowSizeMidi" has it. REQUIRES: a document
    /// was read.
    void makeWindowControllers();

    /// Brings the window forward; also back, when it was closed and its run is still ending.
    void raiseWindow();
    /// What the user's closing of the window does.
    void close();

    /// See documentKeyOf().
    const std::string& key() const { return m_key; }
    bool isShown() const { return m_shown; }
    bool analysisIsRunning() const;

    document::VextaDocument& document() { return m_document; }
    /// Null before makeWindowControllers().
    WindowController* windowController() { return m_controller.get(); }

Q_SIGNALS:
    /// Files were dropped on the window.
    void openRequested(const QStringList& paths);
    /// The window is gone; its run may still be ending.
    void closed();
    /// Nothing goes on any more: the document may be deleted.
    void ended();

private:
    void connectController();
    void hideWindows();
    void warnOfMissingCatalogue();

    settings::SettingsStore& m_settings;
    ApplicationActions m_actions;
    DirectoriesInUse m_directoriesInUse;
    std::string m_key;
    std::string m_path;
    bool m_shown = false;
    document::VextaDocument m_document;
    std::unique_ptr<WindowController> m_controller;
};

} // namespace ui
