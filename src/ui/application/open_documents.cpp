// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
// A file that is open must not open twice: two runs over one pair would write the same working
// copies. So every file is looked up by its key before it is read. A document whose window is
// closed stays in the list while its patient runs, and opening its file shows that window again.
// Tested by app_delegate_test.cpp.
#include "ui/application/open_documents.h"

#include <algorithm>
#include <iterator>
#include <memory>
#include <utility>

#include <QMainWindow>

#include "document/result_document.h"
#include "settings/settings_table.h"
#include "ui/widgets/shown_texts.h"
#include "ui/window/document_files.h"
#include "ui/window/window_controller.h"

namespace ui {

// --- One document

OpenDocument::OpenDocument(const document::DocumentServices& services,
                           const ApplicationActions& actions, DirectoriesInUse directoriesInUse,
                           QObject* parent)
    : QObject(parent), m_settings(services.run.settings), m_actions(actions),
      m_directoriesInUse(std::move(directoriesInUse)), m_document(services) {}

OpenDocument::~OpenDocument() = default;

bool OpenDocument::read(const DocumentFile& file) {
    m_key = file.key;
    m_path = file.path;
    return file.type == document::kResultDocumentType ? m_document.readFromURL(file.path, file.type)
                                                      : m_document.openReads(file.reads);
}

void OpenDocument::makeWindowControllers() {
    const bool midi = settings::booleanSetting(m_settings, settings::key::kWindowSizeMidi);
    m_controller = std::make_unique<WindowController>(
        m_document, midi ? QStringLiteral("VextaDocumentMidi") : QStringLiteral("VextaDocument"),
        m_settings, m_actions, m_directoriesInUse);
    if (m_document.isSavedResult()) {
        m_controller->showResultPath(shownPath(m_path));
        m_controller->takeRecordBeside(m_path);
    }
    connectController();
    warnOfMissingCatalogue();
    raiseWindow();
}

void OpenDocument::connectController() {
    connect(m_controller.get(), &WindowController::openRequested, this,
            &OpenDocument::openRequested);
    connect(m_controller.get(), &WindowController::windowClosed, this, &OpenDocument::close);
    connect(m_controller.get(), &WindowController::analysisOver, this, [this] {
        if (!m_shown) {
            Q_EMIT ended();
        }
    });
}

void OpenDocument::warnOfMissingCatalogue() {
    const run::MainRoutine& driver = m_document.mainRoutine();
    if (!m_document.isSavedResult() && !driver.catalogueStatus()) {
        const QString consequence =
            driver.catalogueUsable()
                ? tr("The catalogue cannot be read: no target would be searched, every result "
                     "would be empty. %1.")
                : tr("The catalogue cannot be read: no analysis can start. %1.");
        m_controller->showCatalogueNotice(
            consequence.arg(QString::fromStdString(driver.catalogueStatus().error().message))
                .toStdString());
    }
}

void OpenDocument::raiseWindow() {
    m_shown = true;
    QMainWindow* window = m_controller->mainWindow;
    window->setWindowState(window->windowState() & ~Qt::WindowMinimized);
    window->show();
    window->raise();
    window->activateWindow();
}

/// The window and those that belong to it, such as the error log.
void OpenDocument::hideWindows() {
    for (QWidget* widget : m_controller->mainWindow->findChildren<QWidget*>()) {
        if (widget->isWindow()) {
            widget->hide();
        }
    }
    m_controller->mainWindow->hide();
}

void OpenDocument::close() {
    if (!m_shown) {
        return;
    }
    m_shown = false;
    hideWindows();
    const bool running = analysisIsRunning();
    if (running) {
        m_controller->cancelOperation(this);
    }
    Q_EMIT closed();
    if (!running) {
        Q_EMIT ended();
    }
}

bool OpenDocument::analysisIsRunning() const {
    return m_controller && m_controller->analysisIsRunning();
}

// --- All of them

OpenDocuments::OpenDocuments(const document::DocumentServices& services,
                             const ApplicationActions& actions, QObject* parent)
    : QObject(parent), m_services(services), m_actions(actions) {}

OpenDocuments::~OpenDocuments() = default;

OpenDocument* OpenDocuments::open(const std::string& path) {
    const DocumentFile file = documentFileAt(path);
    if (OpenDocument* document = file.key.empty() ? nullptr : find(file.key)) {
        document->raiseWindow();
        Q_EMIT shownChanged();
        return document;
    }
    auto document = std::make_unique<OpenDocument>(m_services, m_actions, m_directoriesInUse);
    if (!document->read(file)) {
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
