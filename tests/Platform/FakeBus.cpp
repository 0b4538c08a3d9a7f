// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Platform/FakeBus.h"

#include <QCoreApplication>
#include <QTimer>

#include <gtest/gtest.h>

#include <chrono>
#include <csignal>
#include <sys/prctl.h>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

FakeBus::FakeBus()
{
    static int count = 0;
    m_connectionName = u"fake-bus-"_s + QString::number(++count);
    m_daemon.setChildProcessModifier([] { ::prctl(PR_SET_PDEATHSIG, SIGKILL); });
    m_daemon.setStandardErrorFile(QProcess::nullDevice());
}

FakeBus::~FakeBus()
{
    QDBusConnection::disconnectFromBus(m_connectionName);
    stop();
}

void FakeBus::stop()
{
    m_daemon.kill();
    m_daemon.waitForFinished();
}

QString FakeBus::address() const
{
    return u"unix:path="_s + m_folder.path(u"the%20bus"_s);
}

QString FakeBus::abstractAddress() const
{
    return u"unix:abstract="_s + m_folder.path(u"no%20file"_s);
}

void FakeBus::offer(const QString &service, const QString &program) const
{
    const QString text = u"[D-BUS Service]\nName=%1\nExec=%2\n"_s.arg(service, program);
    m_folder.write(u"services/"_s + service + u".service"_s, text.toUtf8());
}

void FakeBus::start()
{
    const QString file = m_folder.write(u"bus.conf"_s, configuration().toUtf8());
    m_daemon.start(u"dbus-daemon"_s,
                   {u"--nofork"_s, u"--print-address"_s, u"--config-file="_s + file});
    ASSERT_TRUE(m_daemon.waitForReadyRead()) << "is dbus-daemon installed?";
    ASSERT_TRUE(QDBusConnection::connectToBus(address(), m_connectionName).isConnected());
}

void FakeBus::freeze() const
{
    ::kill(static_cast<pid_t>(m_daemon.processId()), SIGSTOP);
}

QString FakeBus::configuration() const
{
    return u"<busconfig><type>session</type><listen>%1</listen><listen>%2</listen>"
           "<auth>EXTERNAL</auth><servicedir>%3</servicedir><policy context='default'><allow "
           "own='*'/>"
           "<allow send_destination='*'/><allow receive_sender='*'/></policy></busconfig>"_s.arg(
               address(), abstractAddress(), m_folder.path(u"services"_s));
}

bool happens(const std::function<bool()> &condition)
{
    QTimer deadline;
    deadline.setSingleShot(true);
    deadline.start(10s);
    while (!condition()) {
        if (!deadline.isActive()) {
            return false;
        }
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        // Outside exec() nobody else does this.
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
    return true;
}
