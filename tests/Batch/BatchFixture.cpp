// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "BatchFixture.h"

#include "support/FakeTool.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QJsonDocument>

#include <unistd.h>

using namespace Qt::StringLiterals;

BatchFixture::BatchFixture() : m_program(m_installation.path(u"bin/morvix-batch"_s))
{
    QDir().mkpath(m_installation.path(u"bin"_s));
    EXPECT_TRUE(QFile::copy(QStringLiteral(MORVIX_BATCH_PROGRAM), m_program));
}

QString BatchFixture::makeFilm(const QString &name, const Clips::Recipe &recipe)
{
    const QString path = m_films.path(name);
    Clips::make(path, recipe);
    return path;
}

CommandResult BatchFixture::batch(const QStringList &args,
                                  const QMap<QString, QString> &environment)
{
    QMap<QString, QString> variables = environment;
    variables.insert(u"TMPDIR"_s, m_temporary.path());
    variables.insert(u"XDG_CONFIG_HOME"_s, m_configuration.path());
    return runCommand(u"/usr/bin/env"_s, QStringList{u"-C"_s, m_films.path(), m_program} + args,
                      variables);
}

CommandResult BatchFixture::batchBehind(const QStringList &command, const QStringList &args)
{
    return runCommand(
        u"/usr/bin/env"_s,
        QStringList{u"-C"_s, m_films.path()} + command + QStringList{m_program} + args,
        {{u"TMPDIR"_s, m_temporary.path()}, {u"XDG_CONFIG_HOME"_s, m_configuration.path()}});
}

void BatchFixture::installFFmpeg(const QByteArray &body)
{
    const FFmpegToolset &tools = Clips::tools();
    const QByteArray head = "case \"$*\" in *-encoders*) echo ' V....D libx264 x'; exit 0;; esac\n"
                            "attempt=$((run - 1))\n"
                            "ffmpeg='" +
                            tools.ffmpegURL.toLocalFile().toUtf8() + "'\n";
    const FakeTool ffmpeg(m_installation, head + body + '\n', u"libexec/morvix/ffmpeg"_s);
    m_installation.writeExecutable(u"libexec/morvix/ffprobe"_s,
                                   "#!/bin/sh\nexec '" + tools.ffprobeURL.toLocalFile().toUtf8() +
                                       "' \"$@\"\n");
}

QStringList BatchFixture::asNobody() const
{
    QFile::setPermissions(m_installation.path(), readableByAll);
    QFile::setPermissions(m_films.path(), readableByAll);
    QFile::setPermissions(m_temporary.path(), openToAll);
    if (::geteuid() != 0) {
        return {};
    }
    return {u"setpriv"_s, u"--reuid=65534"_s, u"--regid=65534"_s, u"--clear-groups"_s};
}

void BatchFixture::writeSettings(const QByteArray &lines)
{
    m_configuration.write(u"Morvix/Morvix.conf"_s, "[General]\n" + lines);
}

QByteArray BatchFixture::checksum(const QString &path)
{
    return QCryptographicHash::hash(contentOf(path), QCryptographicHash::Sha256).toHex();
}

QList<QJsonObject> BatchFixture::objects(const QByteArray &out)
{
    EXPECT_TRUE(out.isEmpty() || out.endsWith('\n')) << out.toStdString();
    QList<QJsonObject> objects;
    for (const QByteArray &line : out.chopped(out.isEmpty() ? 0 : 1).split('\n')) {
        const QJsonDocument document = QJsonDocument::fromJson(line);
        EXPECT_TRUE(document.isObject()) << line.toStdString();
        objects.append(document.object());
    }
    return objects;
}

QList<QJsonObject> BatchFixture::objectsOfType(const QByteArray &out, const QString &type)
{
    QList<QJsonObject> found = objects(out);
    found.removeIf(
        [&](const QJsonObject &object) { return object.value(u"type"_s).toString() != type; });
    return found;
}
