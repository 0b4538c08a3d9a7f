// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "support/TempFolder.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <gtest/gtest.h>

TempFolder::TempFolder()
{
    EXPECT_TRUE(m_directory.isValid());
}

QString TempFolder::write(const QString &name, const QByteArray &content) const
{
    const QString place = path(name);
    QDir().mkpath(QFileInfo(place).path());
    QFile file(place);
    EXPECT_TRUE(file.open(QIODevice::WriteOnly)) << place.toStdString();
    EXPECT_EQ(file.write(content), content.size());
    return place;
}

QString TempFolder::writeExecutable(const QString &name, const QByteArray &content) const
{
    const QString place = write(name, content);
    QFile::setPermissions(place, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner |
                                     QFile::ReadOther | QFile::ExeOther);
    return place;
}

QStringList TempFolder::names() const
{
    return QDir(path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot,
                                  QDir::Name);
}

QByteArray contentOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

ScopedEnvironment::ScopedEnvironment(const char *name, const QByteArray &value)
    : m_name(name)
    , m_previous(qgetenv(name))
    , m_wasSet(qEnvironmentVariableIsSet(name))
{
    qputenv(name, value);
}

ScopedEnvironment::~ScopedEnvironment()
{
    if (m_wasSet) {
        qputenv(m_name, m_previous);
    } else {
        qunsetenv(m_name);
    }
}
