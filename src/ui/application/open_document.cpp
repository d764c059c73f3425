// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include "ui/application/open_document.h"

#include <utility>

#include <QMainWindow>

#include "document/result_document.h"
#include "platform/files.h"
#include "settings/settings_table.h"
#include "ui/widgets/file_paths.h"
#include "ui/window/document_files.h"
#include "ui/window/window_controller.h"

namespace ui {

OpenDocument::OpenDocument(const document::DocumentServices& services,
                           const ApplicationActions& actions, DirectoriesInUse directoriesInUse,
                           QObject* parent)
    : QObject(parent), m_settings(services.run.settings), m_actions(actions),
      m_directoriesInUse(std::move(directoriesInUse)), m_document(services) {}

OpenDocument::~OpenDocument() = default;

bool OpenDocument::readFromPath(const std::string& path) {
    m_key = documentKeyOf(path);
    m_path = platform::absolutePath(path);
    return m_document.readFromURL(path, documentTypeOf(path));
}

void OpenDocument::makeWindowControllers() {
    const bool midi = settings::isOn(m_settings, settings::key::kWindowSizeMidi);
    m_controller = std::make_unique<WindowController>(
        m_document, midi ? QStringLiteral("VextaDocumentMidi") : QStringLiteral("VextaDocument"),
        m_settings, m_actions, m_directoriesInUse);
    if (m_document.fileType() == document::kResultDocumentType) {
        m_controller->showResultPath(shownPath(m_path));
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
    const bool isForAnalysis = m_document.fileType() != document::kResultDocumentType;
    if (isForAnalysis && !driver.catalogueOpened()) {
        const QString consequence =
            driver.catalogueUsable()
                ? tr("The catalogue cannot be read: no target would be searched, every result "
                     "would "
                     "be empty. %1.")
                : tr("The catalogue cannot be read: no analysis can start. %1.");
        m_controller->showCatalogueNotice(
            consequence.arg(QString::fromStdString(driver.catalogueOpenError())).toStdString());
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

} // namespace ui
