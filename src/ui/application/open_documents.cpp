// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include "ui/application/open_documents.h"

#include <algorithm>
#include <iterator>
#include <memory>

#include "ui/application/open_document.h"
#include "ui/window/document_files.h"

namespace ui {

OpenDocuments::OpenDocuments(const document::DocumentServices& services,
                             const ApplicationActions& actions, QObject* parent)
    : QObject(parent), m_services(services), m_actions(actions) {}

OpenDocuments::~OpenDocuments() = default;

OpenDocument* OpenDocuments::open(const std::string& path) {
    const std::string key = documentKeyOf(path);
    if (OpenDocument* document = key.empty() ? nullptr : find(key)) {
        document->raiseWindow();
        Q_EMIT shownChanged();
        return document;
    }
    auto document = std::make_unique<OpenDocument>(m_services, m_actions, m_directoriesInUse);
    if (!document->readFromPath(path)) {
        return nullptr;
    }
    document->makeWindowControllers();
    OpenDocument* opened = document.release();
    add(opened);
    return opened;
}

OpenDocument* OpenDocuments::find(const std::string& key) const {
    const auto found =
        std::find_if(m_documents.begin(), m_documents.end(),
                     [&](const OpenDocument* document) { return document->key() == key; });
    return found == m_documents.end() ? nullptr : *found;
}

void OpenDocuments::add(OpenDocument* document) {
    document->setParent(this);
    m_documents.append(document);
    connect(document, &OpenDocument::openRequested, this, &OpenDocuments::openRequested);
    connect(document, &OpenDocument::closed, this, &OpenDocuments::shownChanged);
    connect(document, &OpenDocument::ended, this, [this, document] { remove(document); });
    Q_EMIT shownChanged();
}

void OpenDocuments::remove(OpenDocument* document) {
    m_documents.removeOne(document);
    // Its own signal led here.
    document->deleteLater();
    Q_EMIT ended();
}

QList<OpenDocument*> OpenDocuments::shown() const {
    QList<OpenDocument*> documents;
    std::copy_if(m_documents.begin(), m_documents.end(), std::back_inserter(documents),
                 [](const OpenDocument* document) { return document->isShown(); });
    return documents;
}

bool OpenDocuments::analysisIsRunning() const {
    return std::any_of(m_documents.begin(), m_documents.end(),
                       [](const OpenDocument* document) { return document->analysisIsRunning(); });
}

void OpenDocuments::closeAll() {
    for (OpenDocument* document : shown()) {
        document->close();
    }
}

} // namespace ui
