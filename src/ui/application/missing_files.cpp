// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#include "ui/application/missing_files.h"

#include <mutex>
#include <thread>
#include <utility>

#include <QFileInfo>

namespace ui {

/// Who is told the answer; null once nobody listens.
struct MissingFiles::Listener {
    std::mutex mutex;
    MissingFiles* files = nullptr;
};

namespace {

QStringList missingOf(const QStringList& paths) {
    QStringList missing;
    for (const QString& path : paths) {
        if (!QFileInfo::exists(path)) {
            missing.append(path);
        }
    }
    return missing;
}

} // namespace

MissingFiles::MissingFiles(QObject* parent)
    : QObject(parent), m_listener(std::make_shared<Listener>()) {
    m_listener->files = this;
}

MissingFiles::~MissingFiles() {
    const std::lock_guard lock(m_listener->mutex);
    m_listener->files = nullptr;
}

void MissingFiles::lookFor(const QStringList& paths) {
    if (m_looking) {
        m_next = paths;
        return;
    }
    if (paths.isEmpty()) {
        return;
    }
    m_looking = true;
    std::thread([listener = m_listener, paths] {
        const QStringList missing = missingOf(paths);
        const std::lock_guard lock(listener->mutex);
        if (MissingFiles* files = listener->files) {
            QMetaObject::invokeMethod(
                files, [files, missing] { files->take(missing); }, Qt::QueuedConnection);
        }
    }).detach();
}

void MissingFiles::take(const QStringList& missing) {
    m_looking = false;
    if (missing != m_missing) {
        m_missing = missing;
        Q_EMIT changed();
    }
    lookFor(std::exchange(m_next, {}));
}

} // namespace ui
