// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <memory>

#include <QObject>
#include <QStringList>

namespace ui {

/// Which of some files are missing. The disks are asked on a thread that nobody waits for: of a
/// server that is gone the answer may take minutes or never come. Main thread only.
class MissingFiles : public QObject {
    Q_OBJECT

public:
    explicit MissingFiles(QObject* parent = nullptr);
    ~MissingFiles() override;

    /// Asks for these files, after an earlier question was answered.
    void lookFor(const QStringList& paths);
    /// As far as it is known: false for a file that was never asked for.
    bool contains(const QString& path) const { return m_missing.contains(path); }

Q_SIGNALS:
    void changed();

private:
    struct Listener;

    void take(const QStringList& missing);

    /// Shared with the thread, which may live longer than this object.
    std::shared_ptr<Listener> m_listener;
    bool m_looking = false;
    QStringList m_next;
    QStringList m_missing;
};

} // namespace ui
