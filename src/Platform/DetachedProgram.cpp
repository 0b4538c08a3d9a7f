// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Platform/DetachedProgram.h"

#include <QByteArrayList>
#include <QCoreApplication>
#include <QFile>
#include <QSocketNotifier>

#include <csignal>
#include <fcntl.h>
#include <spawn.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

namespace {

// What this program changed of the signals is not for others.
class Attributes
{
public:
    Attributes()
    {
        sigset_t set{};
        ::posix_spawnattr_init(&m_attributes);
        ::posix_spawnattr_setflags(&m_attributes, POSIX_SPAWN_SETSID | POSIX_SPAWN_SETSIGMASK |
                                                      POSIX_SPAWN_SETSIGDEF);
        ::sigemptyset(&set);
        ::posix_spawnattr_setsigmask(&m_attributes, &set);
        ::sigfillset(&set);
        ::posix_spawnattr_setsigdefault(&m_attributes, &set);
    }
    Attributes(const Attributes &) = delete;
    Attributes &operator=(const Attributes &) = delete;
    ~Attributes() { ::posix_spawnattr_destroy(&m_attributes); }

    const posix_spawnattr_t *get() const { return &m_attributes; }

private:
    posix_spawnattr_t m_attributes{};
};

class NoTerminal
{
public:
    NoTerminal()
    {
        ::posix_spawn_file_actions_init(&m_actions);
        for (const int descriptor : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
            ::posix_spawn_file_actions_addopen(&m_actions, descriptor, "/dev/null", O_RDWR, 0);
        }
    }
    NoTerminal(const NoTerminal &) = delete;
    NoTerminal &operator=(const NoTerminal &) = delete;
    ~NoTerminal() { ::posix_spawn_file_actions_destroy(&m_actions); }

    const posix_spawn_file_actions_t *get() const { return &m_actions; }

private:
    posix_spawn_file_actions_t m_actions{};
};

// Its end has to be taken note of, or the system keeps it as a dead process. A system too old to
// tell of ends keeps it until this program's own.
void reapAtItsEnd(pid_t child)
{
    const int descriptor = static_cast<int>(::syscall(SYS_pidfd_open, child, 0));
    if (descriptor < 0) {
        return;
    }
    auto *end =
        new QSocketNotifier(descriptor, QSocketNotifier::Read, QCoreApplication::instance());
    QObject::connect(end, &QSocketNotifier::activated, end, [end, descriptor, child] {
        end->setEnabled(false);
        ::waitpid(child, nullptr, WNOHANG);
        ::close(descriptor);
        end->deleteLater();
    });
}

} // namespace

bool DetachedProgram::start(const QString &program, const QStringList &arguments)
{
    QByteArrayList words{QFile::encodeName(program)};
    for (const QString &argument : arguments) {
        words += QFile::encodeName(argument);
    }
    std::vector<char *> pointers;
    for (QByteArray &word : words) {
        pointers.push_back(word.data());
    }
    pointers.push_back(nullptr);

    pid_t child = 0;
    if (::posix_spawnp(&child, pointers.front(), NoTerminal().get(), Attributes().get(),
                       pointers.data(), ::environ) != 0) {
        return false;
    }
    reapAtItsEnd(child);
    return true;
}
