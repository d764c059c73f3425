// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <memory>
#include <string>

#include <QObject>
#include <QStringList>

#include "platform/program_end.h"

class QSocketNotifier;

namespace ui {

/// One program for a desktop session: files that a file manager opens come to the program that runs
/// already, so that a file that is open there brings its window forward and two processes never
/// work on the same pair. They meet at a socket in the session's private directory; without such a
/// directory each process is a program of its own.
class SingleInstance : public QObject {
    Q_OBJECT

public:
    /// Programs meet that give the same `name`. An empty `directory` has nobody meet. The lock lies
    /// in a file beside the socket and ends with the process, however that ends.
    SingleInstance(const std::string& directory, const std::string& name);
    ~SingleInstance() override;

    /// Whether this process is the first of its name. One that is not, and can hand nothing over,
    /// goes on by itself.
    bool isFirst() const { return m_lock >= 0; }
    /// Hands the files to the first process, which brings itself forward. False when nobody took
    /// them.
    bool handOver(const QStringList& files) const;

Q_SIGNALS:
    /// Another process was started with these files; none when it was started without.
    void handedOver(const QStringList& files);

private:
    void listen();
    void receive();

    std::string m_path;
    int m_lock = -1;
    int m_socket = -1;
    platform::UnfinishedFiles m_socketFile;
    std::unique_ptr<QSocketNotifier> m_notifier;
};

/// The session's private directory; empty where there is none or others may look into it.
std::string sessionDirectory();
/// The name under which programs with the same catalogue, settings and display meet.
std::string sessionName(const std::string& definitionFilePath);

} // namespace ui
