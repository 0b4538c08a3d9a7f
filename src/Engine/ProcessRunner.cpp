// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Engine/ProcessRunner.h"

#include "Engine/ChildSpawner.h"
#include "Engine/EngineError.h"
#include "Engine/LineBuffer.h"
#include "Engine/Text.h"
#include "Models/Utf8.h"

#include <array>
#include <cerrno>
#include <poll.h>
#include <unistd.h>

namespace {

constexpr std::size_t chunkBytes = 65536;

enum class StreamState { open, ended };

/// One stream of the child on its way into a line buffer.
class StreamReader
{
public:
    StreamReader(int descriptor, ProcessRunner::OnStdoutLine onLine)
        : m_descriptor(descriptor)
        , m_onLine(std::move(onLine))
    {
    }

    /// What poll() is to watch: -1, which it passes over, once the stream has ended.
    int watched() const { return m_state == StreamState::open ? m_descriptor : -1; }

    /// Takes what is there, waiting for it if there is nothing yet.
    void readAvailable()
    {
        const ssize_t count = ::read(m_descriptor, m_chunk.data(), m_chunk.size());
        if (count < 0 && errno == EINTR) {
            return;
        }
        if (count <= 0) {
            m_state = StreamState::ended;
            return;
        }
        const QStringList lines = m_buffer.append(QByteArrayView(m_chunk.data(), count));
        if (m_onLine) {
            for (const QString &line : lines) {
                m_onLine(line);
            }
        }
    }

    void drain()
    {
        while (m_state == StreamState::open) {
            readAvailable();
        }
    }

    const QString &collected() const { return m_buffer.collected(); }

private:
    int m_descriptor;
    ProcessRunner::OnStdoutLine m_onLine;
    StreamState m_state = StreamState::open;
    LineBuffer m_buffer;
    std::array<char, chunkBytes> m_chunk;
};

// Feeds both readers until the child has ended; what it wrote last may still be in the pipes.
void pumpUntilExit(const ChildProcess &child, StreamReader &output, StreamReader &errors)
{
    while (true) {
        std::array<pollfd, 3> watched{pollfd{output.watched(), POLLIN, 0},
                                      pollfd{errors.watched(), POLLIN, 0},
                                      pollfd{child.pidFd(), POLLIN, 0}};
        if (::poll(watched.data(), watched.size(), -1) < 0) {
            if (errno == EINTR) {
                continue;
            }
            // The drain and the wait behind it still end the run in order.
            return;
        }
        if (watched[0].revents != 0) {
            output.readAvailable();
        }
        if (watched[1].revents != 0) {
            errors.readAvailable();
        }
        if (watched[2].revents != 0) {
            return;
        }
    }
}

std::shared_ptr<ChildProcess> launch(const ChildCommand &command)
{
    try {
        return ChildSpawner::spawn(command);
    } catch (const LaunchError &error) {
        throw EngineError::processFailed(-1, error.reason());
    }
}

QString readToEnd(int descriptor)
{
    QByteArray all;
    std::array<char, chunkBytes> chunk;
    while (true) {
        const ssize_t count = ::read(descriptor, chunk.data(), chunk.size());
        if (count < 0 && errno == EINTR) {
            continue;
        }
        if (count <= 0) {
            break;
        }
        all.append(chunk.data(), count);
    }
    return all.isValidUtf8() ? decodedUtf8(all) : QString();
}

} // namespace

ProcessResult ProcessRunner::runAsync(const QUrl &url, const QStringList &args,
                                      const OnSpawn &onSpawn, const OnStdoutLine &onStdoutLine)
{
    const std::shared_ptr<ChildProcess> child =
        launch({Text::path(url), args, StandardInput::null});
    StreamReader output(child->standardOutput(), onStdoutLine);
    StreamReader errors(child->standardError(), {});
    if (onSpawn) {
        onSpawn(child);
    }
    pumpUntilExit(*child, output, errors);
    output.drain();
    errors.drain();
    const qint32 status = child->wait();
    if (status != 0) {
        throw EngineError::processFailed(status, errors.collected());
    }
    return {0, output.collected(), errors.collected()};
}

ProcessResult ProcessRunner::runSync(const QUrl &url, const QStringList &args,
                                     const OnSpawn &onSpawn)
{
    try {
        const std::shared_ptr<ChildProcess> child =
            ChildSpawner::spawn({Text::path(url), args, StandardInput::inherited});
        if (onSpawn) {
            onSpawn(child);
        }
        QString output = readToEnd(child->standardOutput());
        QString errors = readToEnd(child->standardError());
        return {child->wait(), output, errors};
    } catch (const LaunchError &error) {
        return {-1, {}, error.reason()};
    }
}
