// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "ProgramFixture.h"

#include "support/Processes.h"

#include <QDBusConnectionInterface>
#include <QProcessEnvironment>

#include <sys/prctl.h>

using namespace Qt::StringLiterals;

namespace {

const QString serviceName = u"app.morvix.Morvix"_s;

} // namespace

ProgramFixture::ProgramFixture()
{
    m_tools.writeExecutable(u"ffmpeg"_s, "#!/bin/sh\nexec '" +
                                             Clips::tools().ffmpegURL.toLocalFile().toUtf8() +
                                             "' \"$@\"\n");
    m_tools.writeExecutable(u"ffprobe"_s, "#!/bin/sh\n"
                                          "printf '%s\\n' \"$*\" >> '" +
                                              m_tools.path(u"probes"_s).toUtf8() + "'\nexec '" +
                                              Clips::tools().ffprobeURL.toLocalFile().toUtf8() +
                                              "' \"$@\"\n");
}

QString ProgramFixture::makeFilm(const QString &name, const Clips::Recipe &recipe)
{
    const QString path = m_films.path(name);
    Clips::make(path, recipe);
    return path;
}

void ProgramFixture::slowEncodesDown()
{
    const QByteArray ffmpeg = Clips::tools().ffmpegURL.toLocalFile().toUtf8();
    // A pipe that nobody reads any more doesn't end it: that it ends must have another reason.
    m_tools.writeExecutable(u"ffmpeg"_s, "#!/bin/sh\ncase \"$*\" in *-encoders*) exec '" + ffmpeg +
                                             "' \"$@\";; esac\ntrap '' PIPE\nexec '" + ffmpeg +
                                             "' -re \"$@\"\n");
}

QProcessEnvironment ProgramFixture::environment() const
{
    QProcessEnvironment variables = QProcessEnvironment::systemEnvironment();
    variables.insert(u"QT_QPA_PLATFORM"_s, u"offscreen"_s);
    variables.insert(u"DBUS_SESSION_BUS_ADDRESS"_s, m_busAddress);
    variables.insert(u"XDG_CONFIG_HOME"_s, m_home.path(u"config"_s));
    variables.insert(u"XDG_DATA_HOME"_s, m_home.path(u"data"_s));
    variables.insert(u"XDG_RUNTIME_DIR"_s, m_runtime.path());
    variables.insert(u"TMPDIR"_s, m_temporary.path());
    variables.insert(u"PATH"_s, m_tools.path() + u":/usr/bin:/bin"_s);
    return variables;
}

void ProgramFixture::start(Start &program, const QStringList &args) const
{
    program.setProcessEnvironment(environment());
    program.setWorkingDirectory(m_films.path());
    program.setChildProcessModifier([] { ::prctl(PR_SET_PDEATHSIG, SIGKILL); });
    program.start(QStringLiteral(MORVIX_PROGRAM), args);
    ASSERT_TRUE(program.waitForStarted(patienceMs));
}

void ProgramFixture::startFirst(Start &program, const QStringList &args)
{
    ASSERT_NO_FATAL_FAILURE(m_bus.start());
    ASSERT_NO_FATAL_FAILURE(start(program, args));
    ASSERT_TRUE(Processes::eventually([this] { return isNameTaken(); }));
}

bool ProgramFixture::isNameTaken() const
{
    return m_bus.connection().interface()->isServiceRegistered(serviceName);
}

int ProgramFixture::exitCodeOf(const QStringList &args) const
{
    Start program;
    start(program, args);
    const bool hasEnded = program.waitForFinished(patienceMs);
    return hasEnded && program.exitStatus() == QProcess::NormalExit ? program.exitCode() : -1;
}

CommandResult ProgramFixture::call(const QString &method, const QStringList &arguments) const
{
    return runCommand(u"gdbus"_s,
                      QStringList{u"call"_s, u"--session"_s, u"--dest"_s, serviceName,
                                  u"--object-path"_s, u"/app/morvix/Morvix"_s, u"--method"_s,
                                  u"org.freedesktop.Application."_s + method} +
                          arguments,
                      {{u"DBUS_SESSION_BUS_ADDRESS"_s, m_busAddress}});
}

int ProgramFixture::probesOf(const QString &path) const
{
    return static_cast<int>(
        QString::fromUtf8(contentOf(m_tools.path(u"probes"_s))).count(path + u'\n'));
}

QList<qint64> ProgramFixture::encodersOf(const QString &path)
{
    return Processes::withWords({u"-progress"_s, path});
}

QStringList ProgramFixture::namesOnceThereAre(qsizetype count) const
{
    Processes::eventually([&] { return m_films.names().size() >= count; });
    return m_films.names();
}
