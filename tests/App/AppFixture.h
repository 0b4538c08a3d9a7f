// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "App/AppModel.h"
#include "Models/Job.h"
#include "Models/JobParams.h"
#include "Models/VideoFile.h"
#include "Platform/PlatformServices.h"
#include "support/TempFolder.h"

#include <QStringList>

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <optional>

/// What the application asked the desktop for, and how the desktop answers.
struct DesktopRecord {
    // How it answers.
    bool hasSound = true;
    bool isActive = false;

    // What it was asked for.
    int sounds = 0;
    int beeps = 0;
    /// Title, a line break, body.
    QStringList messages;
    /// "hold", a blank and the reason; "release".
    QStringList sleepCalls;

    /// Called as a sound is asked for.
    std::function<void()> onSound;
};

/// Services that do nothing but note it.
PlatformServices recordingServices(const std::shared_ptr<DesktopRecord> &record);

/// The states that a job goes through from now on, in words: "analyzing", "running 0.25",
/// "finished".
class StateLog
{
public:
    explicit StateLog(const std::shared_ptr<Job> &job);

    const QStringList &words() const { return *m_words; }

private:
    std::shared_ptr<QStringList> m_words = std::make_shared<QStringList>();
};

/// Counts the jobs that run, from now on.
class RunningCount
{
public:
    explicit RunningCount(const AppModel::JobList &jobs);

    /// The most that ran at once.
    int most() const { return m_count->most; }
    int now() const { return m_count->now; }

private:
    struct Count {
        int now = 0;
        int most = 0;
    };

    const std::shared_ptr<Count> m_count = std::make_shared<Count>();
};

/// Keeps the fake ffmpeg at work on a film until it is opened, once for each run.
class Gate
{
public:
    explicit Gate(const VideoFile &film);
    Gate(const Gate &) = delete;
    Gate &operator=(const Gate &) = delete;
    ~Gate();

    void open() const;

private:
    int m_descriptor;
};

/// The application object with tools, settings, a desktop and a temporary directory of its own.
class AppFixture : public ::testing::Test
{
protected:
    AppFixture();
    ~AppFixture() override;

    /// Puts a shell script in ffmpeg's place, and one in ffprobe's that knows every film (a film
    /// may have what ffprobe would say of it beside it, under its name and ".json"). The script
    /// lists libx264 among the encoders when it is asked for them and otherwise does what the body
    /// says. There, "$in" is the input, "$out" the last argument and "$run" the number of the run,
    /// counted from 1 (of use to jobs that run one by one); `progress 2500000` reports
    /// microseconds, `await_gate` waits for the film's Gate where there is one, and `result 950000`
    /// writes an output of so many bytes.
    void installFFmpeg(const QByteArray &body);
    /// An ffmpeg whose results keep a limit of one megabyte: a quarter of the way before the gate,
    /// a half behind it.
    void installObedientFFmpeg();
    /// Puts an ffmpeg with those encoders in place, whose every other run does what the body says.
    void installEncoders(const QStringList &names, const QByteArray &body = "exit 1");
    /// Has ffmpeg wait at that film's Gate before it tells its encoders, libx264 alone.
    void holdEncoders(const VideoFile &film);
    /// The ffmpegs that are asked for their encoders.
    QList<qint64> askedForEncoders() const;
    /// As on a machine without ffmpeg.
    void removeTools();
    /// The ones of this machine.
    void useRealTools();

    struct Start {
        qint64 concurrency = 1;
        AppLanguage language = AppLanguage::english;
        AppModel::Collections collections = {};
    };
    /// Makes the application object with these settings in its store.
    void start(const Start &settings);
    void start() { start(Start()); }

    /// A film of ten seconds in the folder of films, that exists for the fake tools only.
    VideoFile film(const QString &name, qint64 bytes = 2'150'000) const;
    /// The limit is a megabyte.
    static TargetSizeParams oneMegabyte();
    /// Two steps.
    static TargetSizeParams oneMegabyteExactly();
    /// Adds a job for the film.
    std::shared_ptr<Job> enqueue(const VideoFile &film, const JobMode &mode = oneMegabyte());
    QList<std::shared_ptr<Job>> enqueueAll(const QList<VideoFile> &films);
    /// Has the application object take in a file or folder.
    void takeIn(const QUrl &url);

    /// Runs the event loop until the condition holds, which is asked whenever something changes in
    /// the application object or in one of the jobs that it now has. The test fails when that takes
    /// too long.
    void waitUntil(const std::function<bool()> &holds);
    void waitFor(const std::shared_ptr<Job> &job, Job::Outcome outcome);
    void waitForProgress(const std::shared_ptr<Job> &job, double progress);
    /// Until no job waits or runs.
    void waitForAllToEnd();
    /// Lets happen what is already due.
    static void turnTheLoop();

    static QList<Job::Outcome> outcomesOf(const AppModel::JobList &jobs);
    /// The text that a failed job shows.
    static QString messageOf(const std::shared_ptr<Job> &job);
    static Job::Finished resultOf(const std::shared_ptr<Job> &job);

    const TempFolder m_films;
    const TempFolder m_tools;
    const TempFolder m_noTools;
    const TempFolder m_temporary;
    const TempFolder m_store;
    const std::shared_ptr<DesktopRecord> m_desktop = std::make_shared<DesktopRecord>();
    std::unique_ptr<AppModel> m_model;

private:
    ScopedEnvironment m_temporaryDirectory{"TMPDIR", m_temporary.path().toUtf8()};
    const QByteArray m_realPath = qgetenv("PATH");
    std::optional<ScopedEnvironment> m_path;
};

void PrintTo(Job::Outcome outcome, std::ostream *out);
