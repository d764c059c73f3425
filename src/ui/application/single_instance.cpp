// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
// Who is first? Whoever holds the lock: flock() ends with its process, even a killed one, so a lock
// file that was left behind means nothing. The first process then binds a socket beside it. A later
// one sends all its files in one packet (SOCK_SEQPACKET keeps packets whole) and waits for one
// byte, which says that they were taken. Any failure on the way means "work alone": the worst that
// a broken meeting may do is a second program. The directory is private to the user, which is all
// the protection that the socket has. Tested by single_instance_test.cpp.
#include "ui/application/single_instance.h"

#include <cstdlib>
#include <cstring>
#include <utility>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/time.h>
#include <sys/un.h>
#include <unistd.h>

#include <QCryptographicHash>
#include <QSocketNotifier>

#include "settings/json_settings_store.h"

namespace ui {

namespace {

/// Bytes of one message. A process with more files than fit works alone.
constexpr std::size_t kLongestMessage = 60'000;
/// Seconds that the other side has to answer; it answers also while it makes working copies.
constexpr int kPatience = 5;
constexpr char kTaken = 'k';

/// False for a path that is too long for a socket.
bool setAddress(sockaddr_un& address, const std::string& path) {
    address.sun_family = AF_UNIX;
    if (path.size() >= sizeof address.sun_path) {
        return false;
    }
    std::memcpy(static_cast<char*>(address.sun_path), path.c_str(), path.size() + 1);
    return true;
}

int withSocket(int (*call)(int, const sockaddr*, socklen_t), int socket, const std::string& path) {
    sockaddr_un address = {};
    if (!setAddress(address, path)) {
        return -1;
    }
    return call(socket, reinterpret_cast<const sockaddr*>(&address), sizeof address);
}

void setPatience(int socket) {
    timeval patience = {};
    patience.tv_sec = kPatience;
    setsockopt(socket, SOL_SOCKET, SO_RCVTIMEO, &patience, sizeof patience);
    setsockopt(socket, SOL_SOCKET, SO_SNDTIMEO, &patience, sizeof patience);
}

/// A first byte, so that it is never empty, then each file and a zero byte, which no path holds.
QByteArray messageOf(const QStringList& files) {
    QByteArray message(1, kTaken);
    for (const QString& file : files) {
        message += file.toUtf8() + '\0';
    }
    return message;
}

QStringList filesOf(const QByteArray& message) {
    QStringList files;
    for (const QByteArray& file : message.mid(1).split('\0')) {
        if (!file.isEmpty()) {
            files.append(QString::fromUtf8(file));
        }
    }
    return files;
}

std::string environmentText(const char* name) {
    const char* value = std::getenv(name);
    return value == nullptr ? std::string() : value;
}

} // namespace

SingleInstance::SingleInstance(const std::string& directory, const std::string& name)
    : m_path(directory.empty() ? std::string() : directory + "/" + name) {
    if (m_path.empty()) {
        return;
    }
    platform::Descriptor lock(
        open((m_path + ".lock").c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, 0600));
    if (lock.isOpen() && flock(lock.number(), LOCK_EX | LOCK_NB) == 0) {
        m_lock = std::move(lock);
        listen();
    }
}

SingleInstance::~SingleInstance() {
    m_notifier.reset();
    if (m_socket.isOpen()) {
        unlink(m_path.c_str());
    }
}

void SingleInstance::listen() {
    unlink(m_path.c_str()); // left by a killed process: the lock says that none lives
    m_socket =
        platform::Descriptor(socket(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC | SOCK_NONBLOCK, 0));
    constexpr int kWaiting = 16;
    if (withSocket(bind, m_socket.number(), m_path) != 0 ||
        ::listen(m_socket.number(), kWaiting) != 0) {
        return; // others reach nobody and work alone
    }
    m_socketFile.add(m_path);
    m_notifier = std::make_unique<QSocketNotifier>(m_socket.number(), QSocketNotifier::Read);
    connect(m_notifier.get(), &QSocketNotifier::activated, this, &SingleInstance::receive);
}

void SingleInstance::receive() {
    const platform::Descriptor peer(accept4(m_socket.number(), nullptr, nullptr, SOCK_CLOEXEC));
    if (!peer.isOpen()) {
        return;
    }
    setPatience(peer.number());
    QByteArray message(static_cast<int>(kLongestMessage), '\0');
    const ssize_t length =
        recv(peer.number(), message.data(), static_cast<std::size_t>(message.size()), 0);
    if (length < 1) {
        return;
    }
    message.truncate(static_cast<int>(length));
    send(peer.number(), &kTaken, 1, MSG_NOSIGNAL);
    Q_EMIT handedOver(filesOf(message));
}

bool SingleInstance::handOver(const QStringList& files) const {
    const QByteArray message = messageOf(files);
    if (m_path.empty() || message.size() > static_cast<int>(kLongestMessage)) {
        return false;
    }
    const platform::Descriptor peer(socket(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC, 0));
    setPatience(peer.number());
    if (withSocket(::connect, peer.number(), m_path) != 0 ||
        send(peer.number(), message.constData(), static_cast<std::size_t>(message.size()),
             MSG_NOSIGNAL) != message.size()) {
        return false;
    }
    char answer = 0;
    return recv(peer.number(), &answer, 1, 0) == 1 && answer == kTaken;
}

std::string sessionDirectory() {
    const std::string directory = environmentText("XDG_RUNTIME_DIR");
    struct stat facts = {};
    const bool isPrivate = directory.rfind('/', 0) == 0 && stat(directory.c_str(), &facts) == 0 &&
                           S_ISDIR(facts.st_mode) && facts.st_uid == getuid() &&
                           (facts.st_mode & 0077U) == 0;
    return isPrivate ? directory : std::string();
}

std::string sessionName(const std::string& definitionFilePath) {
    std::string what = definitionFilePath + '\n' + settings::JsonSettingsStore::perUserPath();
    for (const char* name : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"}) {
        what += '\n' + environmentText(name);
    }
    const QByteArray hash =
        QCryptographicHash::hash(QByteArray::fromStdString(what), QCryptographicHash::Sha256);
    return "vexta-desktop-" + hash.toHex().left(16).toStdString();
}

} // namespace ui
