// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "Platform/FakeBus.h"
#include "support/Clips.h"
#include "support/Command.h"
#include "support/TempFolder.h"

#include <QProcess>
#include <QStringList>

#include <gtest/gtest.h>

/// A start of the program, which ends with the test.
class Start : public QProcess
{
public:
    ~Start() override
    {
        kill();
        waitForFinished();
    }
};

/// The program itself, off the screen, on a session bus and with a home of its own. Its ffmpeg and
/// ffprobe are the real ones behind scripts that note each call.
class ProgramFixture : public ::testing::Test
{
protected:
    static constexpr int patienceMs = 30'000;

    ProgramFixture();

    /// A film of two seconds unless the recipe says otherwise; gives its path.
    QString makeFilm(const QString &name, const Clips::Recipe &recipe = {});

    /// Has every encode read its input no faster than it plays.
    void slowEncodesDown();

    /// Starts the program in the folder of films.
    void start(Start &program, const QStringList &args = {}) const;
    /// Starts it and waits until it holds the name on the bus.
    void startFirst(Start &program, const QStringList &args = {});
    /// Runs a start to its end; -1 when that doesn't come by itself.
    int exitCodeOf(const QStringList &args) const;
    bool isNameTaken() const;

    /// Calls a method of the program's by gdbus, whose exit code it gives.
    CommandResult call(const QString &method, const QStringList &arguments) const;

    /// How often a file was probed.
    int probesOf(const QString &path) const;
    /// The ffmpegs that work on a file.
    static QList<qint64> encodersOf(const QString &path);
    /// The names in the folder of films, once there are so many; those at the end of our patience
    /// otherwise.
    QStringList namesOnceThereAre(qsizetype count) const;

    FakeBus m_bus;
    QString m_busAddress = m_bus.address();
    const TempFolder m_films;
    const TempFolder m_temporary;

private:
    QProcessEnvironment environment() const;

    const TempFolder m_home;
    const TempFolder m_runtime;
    const TempFolder m_tools;
};
