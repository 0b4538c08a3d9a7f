// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "support/Clips.h"
#include "support/Command.h"
#include "support/TempFolder.h"

#include <QFile>
#include <QJsonObject>
#include <QList>
#include <QMap>

#include <gtest/gtest.h>

/// Runs morvix-batch as a program of its own, in a folder of films and with a temporary directory
/// of its own.
class BatchFixture : public ::testing::Test
{
protected:
    static constexpr auto openToAll = QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner |
                                      QFile::ReadOther | QFile::WriteOther | QFile::ExeOther;
    static constexpr auto readableByAll =
        QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner | QFile::ReadOther | QFile::ExeOther;

    BatchFixture();

    /// A film of two seconds and some 600 kB unless the recipe says otherwise; gives its path.
    QString makeFilm(const QString &name, const Clips::Recipe &recipe = {.noise = 20});

    /// Runs it with the folder of films as the current one.
    CommandResult batch(const QStringList &args, const QMap<QString, QString> &environment = {});
    /// The same behind another command, such as `setpriv …`.
    CommandResult batchBehind(const QStringList &command, const QStringList &args);

    /// Gives the program an ffmpeg of its own, a shell script: it lists an encoder when asked for
    /// them and otherwise does what the body says. "$out" is its last argument, "$attempt" counts
    /// these calls from 1, "$ffmpeg" is the real one. The ffprobe beside it is the real one.
    void installFFmpeg(const QByteArray &body);

    /// The words that run the program as somebody who may read the folders of the test, and write
    /// the temporary one only: root may do everything. None where the tests don't run as root.
    QStringList asNobody() const;

    /// Writes the user's settings, one "key=value" a line.
    void writeSettings(const QByteArray &lines);

    static QByteArray checksum(const QString &path);
    /// The lines of a JSON report; the test fails when one doesn't read.
    static QList<QJsonObject> objects(const QByteArray &out);
    static QList<QJsonObject> objectsOfType(const QByteArray &out, const QString &type);

    const TempFolder m_films;
    const TempFolder m_temporary;
    // The user's settings, which are none at first.
    const TempFolder m_configuration;
    // The program is a copy: tools in ../libexec/morvix go before those of the machine.
    const TempFolder m_installation;
    const QString m_program;
};
