// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>

#include <QList>
#include <QObject>
#include <QStringList>

#include "document/vexta_document.h"
#include "ui/window/document_files.h"
#include "ui/window/window_menus.h"

namespace ui {

class OpenDocument;

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
