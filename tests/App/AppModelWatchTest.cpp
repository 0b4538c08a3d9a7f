// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "AppFixture.h"

#include "Engine/PresetStore.h"
#include "Engine/WatchFolderEngine.h"
#include "support/Clips.h"
#include "support/EventLoop.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <cstdio>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

using Outcome = Job::Outcome;

namespace {

constexpr qint64 tenMinutes = 600;
constexpr WatchTiming quick{.debounce = 100ms, .readiness = 3000ms};

TargetSizeParams under(double megabytes)
{
    TargetSizeParams params;
    params.targetMB = megabytes;
    return params;
}

// Films are made beside the watched folders and moved in, old enough to be ready. What must make no
// job comes before something that must make one: the scans end in that order.
class AppModelWatch : public AppFixture
{
protected:
    AppModelWatch()
    {
        for (const QString &name : {u"inbox"_s, u"other"_s, u"stock"_s}) {
            QDir().mkpath(m_films.path(name));
        }
        m_presets = std::make_shared<PresetStore>(m_data.url({}));
        m_engine = std::make_shared<WatchFolderEngine>(m_data.url({}), quick);
    }

    QUuid savePreset(const QString &name, const PresetSpec &spec,
                     const std::optional<QUrl> &outputDirectory = std::nullopt)
    {
        m_presets->upsert(name, spec, outputDirectory);
        return presetNamed(name).id;
    }

    UserPreset presetNamed(const QString &name) const
    {
        return *std::ranges::find(m_presets->presets(), name, &UserPreset::name);
    }

    void attach(const QString &folder, std::optional<QUuid> presetID)
    {
        m_engine->add(m_films.url(folder), presetID);
    }

    // Does it, and waits until the engine has begun to watch anew.
    void andWatch(const std::function<void()> &action)
    {
        bool isWatching = false;
        const auto connection =
            QObject::connect(m_engine.get(), &WatchFolderEngine::watching, m_engine.get(),
                             [&isWatching] { isWatching = true; });
        action();
        EXPECT_TRUE(EventLoop::waitFor([&] { return isWatching; }, m_engine.get(),
                                       &WatchFolderEngine::watching));
        QObject::disconnect(connection);
    }

    // Starts the application object, which watches by itself from then on. Jobs wait unless the
    // test lets them run.
    void startWatching()
    {
        andWatch([this] { start({.collections = {m_presets, m_engine}}); });
        m_model->setQueuePaused(true);
    }

    void moveIn(const QString &name, const QString &made)
    {
        QFile file(made);
        ASSERT_TRUE(file.open(QIODevice::ReadWrite));
        ASSERT_TRUE(file.setFileTime(QDateTime::currentDateTime().addSecs(-tenMinutes),
                                     QFile::FileModificationTime));
        file.close();
        ASSERT_EQ(std::rename(QFile::encodeName(made).constData(),
                              QFile::encodeName(m_films.path(name)).constData()),
                  0);
    }
    // For the fake tools only.
    void moveIn(const QString &name) { moveIn(name, m_films.write(u"stock/film"_s, "a film")); }

    void waitForJobs(qsizetype count)
    {
        waitUntil([&] { return m_model->jobs().size() >= count && m_model->probingCount() == 0; });
        turnTheLoop();
    }

    QStringList inputs() const
    {
        QStringList names;
        for (const std::shared_ptr<Job> &job : m_model->jobs()) {
            names += job->input.url.toLocalFile().mid(m_films.path().size() + 1);
        }
        return names;
    }

    const TempFolder m_data;
    std::shared_ptr<PresetStore> m_presets;
    std::shared_ptr<WatchFolderEngine> m_engine;
};

} // namespace

TEST_F(AppModelWatch, a_film_moved_into_a_watched_folder_goes_through_its_preset)
{
    useRealTools();
    attach(u"inbox"_s, savePreset(u"Small"_s, under(0.2), m_films.url(u"folder of the preset"_s)));
    startWatching();
    m_model->setOutputDirectoryPath(m_films.path(u"out"_s));
    m_model->setQueuePaused(false);
    Clips::make(m_films.path(u"stock/film.mp4"_s), {.noise = 20});
    const QByteArray before = contentOf(m_films.path(u"stock/film.mp4"_s));

    moveIn(u"inbox/film.mp4"_s, m_films.path(u"stock/film.mp4"_s));
    waitForJobs(1);
    waitForAllToEnd();

    ASSERT_EQ(inputs(), QStringList{u"inbox/film.mp4"_s});
    const Job::Finished result = resultOf(m_model->jobs().first());
    EXPECT_EQ(result.outputURLs, QList{m_films.url(u"out/film-0.2MB.mp4"_s)});
    EXPECT_LE(QFileInfo(m_films.path(u"out/film-0.2MB.mp4"_s)).size(), 200'000);
    EXPECT_GT(QFileInfo(m_films.path(u"out/film-0.2MB.mp4"_s)).size(), 0);
    EXPECT_EQ(contentOf(m_films.path(u"inbox/film.mp4"_s)), before);
    EXPECT_FALSE(QFileInfo::exists(m_films.path(u"folder of the preset"_s)))
        << "the settings say where results go, not the preset";
}

TEST_F(AppModelWatch, each_film_becomes_a_file_and_a_job_of_the_preset)
{
    attach(u"inbox"_s, savePreset(u"Small"_s, under(3)));
    startWatching();

    moveIn(u"inbox/a.mp4"_s);
    moveIn(u"inbox/b.MOV"_s);
    waitForJobs(2);

    QStringList names = inputs();
    names.sort();
    EXPECT_EQ(names, (QStringList{u"inbox/a.mp4"_s, u"inbox/b.MOV"_s}));
    EXPECT_EQ(m_model->files().size(), 2);
    for (const std::shared_ptr<Job> &job : m_model->jobs()) {
        EXPECT_EQ(job->mode, JobMode(under(3)));
        EXPECT_EQ(job->outcome(), Outcome::queued);
    }
    EXPECT_EQ(m_model->presetBanner(), std::nullopt);
    EXPECT_EQ(m_model->appliedPreset(), std::nullopt);
}

TEST_F(AppModelWatch, what_lies_there_when_the_program_starts_is_left_alone)
{
    attach(u"inbox"_s, savePreset(u"Small"_s, under(3)));
    moveIn(u"inbox/before.mp4"_s);
    startWatching();

    moveIn(u"inbox/after.mp4"_s);
    waitForJobs(1);

    EXPECT_EQ(inputs(), QStringList{u"inbox/after.mp4"_s});
}

TEST_F(AppModelWatch, a_folder_without_a_preset_ignores_what_comes)
{
    attach(u"inbox"_s, std::nullopt);
    attach(u"other"_s, savePreset(u"Small"_s, under(3)));
    startWatching();

    moveIn(u"inbox/ignored.mp4"_s);
    moveIn(u"other/film.mp4"_s);
    waitForJobs(1);

    EXPECT_EQ(inputs(), QStringList{u"other/film.mp4"_s});
    EXPECT_EQ(m_model->files().size(), 1);
    EXPECT_EQ(m_model->lastError(), std::nullopt);
}

TEST_F(AppModelWatch, a_folder_whose_preset_was_deleted_stays_watched_and_ignores_what_comes)
{
    const QUuid deleted = savePreset(u"Goes"_s, under(1));
    attach(u"inbox"_s, deleted);
    attach(u"other"_s, savePreset(u"Stays"_s, under(3)));
    startWatching();

    m_model->deletePreset(deleted);
    EXPECT_EQ(m_engine->configs().first().presetID, deleted);
    EXPECT_TRUE(m_engine->configs().first().enabled);

    moveIn(u"inbox/ignored.mp4"_s);
    moveIn(u"other/film.mp4"_s);
    waitForJobs(1);
    EXPECT_EQ(inputs(), QStringList{u"other/film.mp4"_s});
    EXPECT_EQ(m_model->files().size(), 1);
}

TEST_F(AppModelWatch, a_preset_saved_anew_runs_with_its_new_parameters)
{
    const QUuid id = savePreset(u"Small"_s, under(3));
    attach(u"inbox"_s, id);
    startWatching();

    m_model->savePreset(u"Small"_s, GifParams(), std::nullopt);
    moveIn(u"inbox/film.mp4"_s);
    waitForJobs(1);

    ASSERT_EQ(m_model->jobs().size(), 1);
    EXPECT_EQ(m_model->jobs().first()->mode, JobMode(GifParams()));
}

TEST_F(AppModelWatch, another_preset_of_a_folder_comes_into_force_with_the_next_start)
{
    const QUuid first = savePreset(u"First"_s, under(3));
    const QUuid second = savePreset(u"Second"_s, GifParams());
    attach(u"inbox"_s, first);
    startWatching();
    const QUuid folder = m_engine->configs().first().id;

    m_model->watchEngine()->setPreset(second, folder);
    moveIn(u"inbox/a.mp4"_s);
    waitForJobs(1);
    ASSERT_EQ(m_model->jobs().size(), 1);
    EXPECT_EQ(m_model->jobs().last()->mode, JobMode(under(3)));

    andWatch([&] { m_model->watchEngine()->setEnabled(true, folder); });
    moveIn(u"inbox/b.mp4"_s);
    waitForJobs(2);
    ASSERT_EQ(m_model->jobs().size(), 2);
    EXPECT_EQ(m_model->jobs().last()->mode, JobMode(GifParams()));
}

TEST_F(AppModelWatch, a_folder_added_while_the_program_runs_is_watched_at_once)
{
    startWatching();

    andWatch([this] { attach(u"inbox"_s, savePreset(u"Small"_s, under(3))); });
    moveIn(u"inbox/film.mp4"_s);
    waitForJobs(1);

    EXPECT_EQ(inputs(), QStringList{u"inbox/film.mp4"_s});
}

TEST_F(AppModelWatch, a_film_that_can_not_be_made_out_is_told_and_the_next_one_goes_on)
{
    m_tools.writeExecutable(
        u"ffprobe"_s,
        "#!/bin/sh\ncase \"$*\" in *broken*) exit 1;; esac\n"
        "echo '{\"format\": {\"duration\": \"10\", \"size\": \"7\"}, \"streams\": []}'\n");
    attach(u"inbox"_s, savePreset(u"Small"_s, under(3)));
    startWatching();

    moveIn(u"inbox/broken.mp4"_s);
    moveIn(u"inbox/film.mp4"_s);
    waitForJobs(1);

    EXPECT_EQ(inputs(), QStringList{u"inbox/film.mp4"_s});
    EXPECT_EQ(m_model->lastError(), u"Could not read this file. Is it a valid video?"_s);
}

TEST_F(AppModelWatch, an_engine_that_outlives_the_application_object_does_no_harm)
{
    attach(u"inbox"_s, savePreset(u"Small"_s, under(3)));
    startWatching();
    m_model.reset();
    ASSERT_EQ(m_engine.use_count(), 1);

    // Patient enough to see the folder after the first engine has.
    const TempFolder data;
    WatchFolderEngine witness(data.url({}), {.debounce = 1000ms, .readiness = 3000ms});
    witness.add(m_films.url(u"inbox"_s), std::nullopt);
    bool isWatching = false;
    QObject::connect(&witness, &WatchFolderEngine::watching, &witness, [&] { isWatching = true; });
    QObject reports;
    witness.start([&](const WatchFolderConfig &, const QList<QUrl> &files) {
        reports.setObjectName(files.first().fileName());
    });
    ASSERT_TRUE(
        EventLoop::waitFor([&] { return isWatching; }, &witness, &WatchFolderEngine::watching));
    moveIn(u"inbox/film.mp4"_s);

    EXPECT_TRUE(EventLoop::waitFor([&] { return reports.objectName() == u"film.mp4"_s; }, &reports,
                                   &QObject::objectNameChanged));
}
