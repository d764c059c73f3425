// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <memory>
#include <string>

#include <QObject>
#include <QStringList>

#include "platform/descriptor.h"
#include "platform/program_end.h"

class QSocketNotifier;

namespace ui {

/// Keeps one program in a desktop session: a second start hands its files to the first and ends. So
/// a file that is open brings its window forward, and two processes never work on the same pair.
/// They meet at a socket in the session's private directory; without one, each process works alone.
class SingleInstance : public QObject {
    Q_OBJECT

public:
    /// Processes with the same `directory` and `name` meet; with an empty `directory` none do. The
    /// lock is on a file beside the socket and ends with the process, however that ends.
    SingleInstance(const std::string& directory, const std::string& name);
    ~SingleInstance() override;

    /// Whether this process is the first of its name. One that is not first and cannot hand over
    /// works alone.
    bool isFirst() const { return m_lock.isOpen(); }
    /// Hands the files to the first process, which comes forward. False when nobody took them.
    bool handOver(const QStringList& files) const;

Q_SIGNALS:
    /// Another process started with these files, which may be none.
    void handedOver(const QStringList& files);

private:
    void listen();
    void receive();

    std::string m_path;
    /// Released last: whoever gets the lock then makes a socket under the same path, which nothing
    /// here may remove any more.
    platform::Descriptor m_lock;
    platform::Descriptor m_socket;
    platform::UnfinishedFiles m_socketFile;
    std::unique_ptr<QSocketNotifier> m_notifier;
};

/// The session's private directory; empty if there is none or if other users can read it.
std::string sessionDirectory();
/// The name under which processes with the same catalogue, settings and display meet.
std::string sessionName(const std::string& definitionFilePath);

} // namespace ui
