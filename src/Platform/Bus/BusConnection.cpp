// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Platform/Bus/BusConnection.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <optional>
#include <sys/socket.h>
#include <sys/un.h>

using namespace Qt::StringLiterals;

namespace {

// The leading null byte belongs to the protocol. Asking which ways to log in there are is
// answered by every bus and commits to nothing.
constexpr std::array knockBytes{'\0', 'A', 'U', 'T', 'H', '\r', '\n'};

struct SocketAddress {
    sockaddr_un address{};
    socklen_t length = 0;
};

/// Absent for a name that is empty or too long for the system.
std::optional<SocketAddress> namedSocket(const QByteArray &name)
{
    SocketAddress socket;
    const auto size = static_cast<size_t>(name.size());
    if (size == 0 || size >= sizeof(socket.address.sun_path)) {
        return std::nullopt;
    }
    socket.address.sun_family = AF_UNIX;
    std::ranges::copy(name, socket.address.sun_path);
    // An abstract name counts as long as it is; that of a file ends with a null byte.
    const size_t ending = name.front() == '\0' ? 0 : 1;
    socket.length = static_cast<socklen_t>(offsetof(sockaddr_un, sun_path) + size + ending);
    return socket;
}

std::optional<SocketAddress> localSocket(const QString &entry)
{
    if (!entry.startsWith("unix:"_L1)) {
        return std::nullopt;
    }
    for (const QString &pair : entry.sliced(5).split(QChar(u','))) {
        const QByteArray value =
            QByteArray::fromPercentEncoding(pair.section(QChar(u'='), 1).toUtf8());
        if (pair.startsWith("path="_L1)) {
            return namedSocket(value);
        }
        if (pair.startsWith("abstract="_L1)) {
            return namedSocket('\0' + value);
        }
    }
    return std::nullopt;
}

// Of a list the first entry that is a local socket counts. The other kinds would start a program
// or go over a network.
QString firstLocalEntry(const QString &address)
{
    const QStringList entries = address.split(QChar(u';'));
    const auto found = std::ranges::find_if(
        entries, [](const QString &entry) { return localSocket(entry).has_value(); });
    return found == entries.end() ? QString() : *found;
}

// QtDBus shares connections by name; this one is to be nobody else's.
QString freshName()
{
    static int count = 0;
    return u"morvix-bus-"_s + QString::number(++count);
}

} // namespace

BusConnection::BusConnection(const QString &address, std::chrono::milliseconds limit)
    : m_address(firstLocalEntry(address))
    , m_name(freshName())
{
    m_limit.setSingleShot(true);
    m_limit.setInterval(limit);
    connect(&m_limit, &QTimer::timeout, this, [this] {
        stopKnocking();
        Q_EMIT failed();
    });
}

BusConnection::~BusConnection()
{
    QDBusConnection::disconnectFromBus(m_name);
}

void BusConnection::open()
{
    if (!knock()) {
        Q_EMIT failed();
        return;
    }
    m_notifier =
        std::make_unique<QSocketNotifier>(m_socket.fileDescriptor(), QSocketNotifier::Read);
    connect(m_notifier.get(), &QSocketNotifier::activated, this, &BusConnection::readAnswer);
    m_limit.start();
}

// Local sockets connect at once or not at all: a queue that is full is a bus that hangs.
bool BusConnection::knock()
{
    const std::optional<SocketAddress> place = localSocket(m_address);
    if (!place) {
        return false;
    }
    m_socket.giveFileDescriptor(::socket(AF_UNIX, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0));
    const int socket = m_socket.fileDescriptor();
    return socket >= 0 &&
           ::connect(socket, reinterpret_cast<const sockaddr *>(&place->address), place->length) ==
               0 &&
           ::send(socket, knockBytes.data(), knockBytes.size(), MSG_NOSIGNAL) ==
               static_cast<ssize_t>(knockBytes.size());
}

void BusConnection::readAnswer()
{
    std::array<char, 256> answer{};
    const bool isAlive = ::recv(m_socket.fileDescriptor(), answer.data(), answer.size(), 0) > 0;
    stopKnocking();
    if (isAlive) {
        connectToBus();
    } else {
        Q_EMIT failed();
    }
}

void BusConnection::stopKnocking()
{
    m_limit.stop();
    if (m_notifier != nullptr) {
        m_notifier->setEnabled(false);
        // This may be one of its own calls.
        m_notifier.release()->deleteLater();
    }
    m_socket = {};
}

void BusConnection::connectToBus()
{
    if (QDBusConnection::connectToBus(m_address, m_name).isConnected()) {
        Q_EMIT opened();
    } else {
        Q_EMIT failed();
    }
}
