// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <memory>
#include <string>

#include <QList>
#include <QObject>
#include <QStringList>

#include "document/vexta_document.h"
#include "ui/window/document_files.h"
#include "ui/window/window_menus.h"

namespace ui {

class WindowController;

/// One open document with its window.
///
/// Closing the window while a run goes on hides it at once and tells the batch to stop. The
/// document itself stays until the running patient is done: its end would wait for that on the
/// thread of the windows.
class OpenDocument : public QObject {
    Q_OBJECT

public:
    /// `services` and what `actions` names must outlive the document.
    OpenDocument(const document::DocumentServices& services, const ApplicationActions& actions,
                 DirectoriesInUse directoriesInUse, QObject* parent = nullptr);
    ~OpenDocument() override;

    /// Opens the file; false, after an alert, when it is no document.
    bool read(const DocumentFile& file);
    /// Makes the window and shows it, as the setting "windowSizeMidi" has it. REQUIRES: a document
    /// was read.
    void makeWindowControllers();

    /// Brings the window forward; also back, when it was closed and its run is still ending.
    void raiseWindow();
    /// What the user's closing of the window does.
    void close();

    /// See DocumentFile.
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

/// The documents of the application: no two of the same file.
class OpenDocuments : public QObject {
    Q_OBJECT

public:
    /// `services` and what `actions` names must outlive the documents.
    OpenDocuments(const document::DocumentServices& services, const ApplicationActions& actions,
                  QObject* parent = nullptr);
    /// Waits for runs that still go on.
    ~OpenDocuments() override;

    /// Opens the file, or brings forward the window of the document that it is. Null, after an
    /// alert, when it is no document.
    OpenDocument* open(const std::string& path);

    /// The documents with a window on screen, in the order opened.
    QList<OpenDocument*> shown() const;
    bool analysisIsRunning() const;
    /// Whether no document is left, not even one without a window whose last patient still runs.
    bool isEmpty() const { return m_documents.isEmpty(); }

    /// Closes every window, as the user would.
    void closeAll();

Q_SIGNALS:
    void openRequested(const QStringList& paths);
    /// A document's window came or went.
    void shownChanged();
    /// A document ended; see isEmpty().
    void ended();

private:
    OpenDocument* find(const std::string& key) const;
    void add(OpenDocument* document);
    void remove(OpenDocument* document);

    document::DocumentServices m_services;
    ApplicationActions m_actions;
    DirectoriesInUse m_directoriesInUse;
    QList<OpenDocument*> m_documents;
};

} // namespace ui
