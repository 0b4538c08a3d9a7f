// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "App/FileURL.h"
#include "AppFixture.h"

using namespace Qt::StringLiterals;

namespace {

class QuickActions : public AppFixture
{
protected:
    QUrl filmThatExists(const QString &name) const
    {
        return QUrl::fromLocalFile(m_films.write(name, "x"));
    }

    void run(QuickAction action, const QList<QUrl> &urls)
    {
        m_model->runQuickAction(action, urls);
        waitUntil([this] { return m_model->probingCount() == 0; });
    }

    QStringList inputsOfJobs() const
    {
        QStringList names;
        for (const std::shared_ptr<Job> &job : m_model->jobs()) {
            names += job->input.url.fileName();
        }
        return names;
    }

    QStringList namesOfFiles() const
    {
        QStringList names;
        for (const VideoFile &file : m_model->files()) {
            names += file.url.fileName();
        }
        return names;
    }
};

} // namespace

TEST_F(QuickActions, a_folder_gives_one_job_a_film_in_the_order_in_which_the_probes_end)
{
    start();
    m_model->setQueuePaused(true);
    filmThatExists(u"one/a.mp4"_s);
    filmThatExists(u"one/b.mov"_s);
    filmThatExists(u"one/deeper/c.MKV"_s);
    filmThatExists(u"one/notes.txt"_s);

    run(QuickAction::convertMP4, {FileURL::ofPath(m_films.path(u"one"_s))});

    EXPECT_EQ(m_model->jobs().size(), 3);
    EXPECT_EQ(inputsOfJobs(), namesOfFiles());
    for (const std::shared_ptr<Job> &job : m_model->jobs()) {
        EXPECT_EQ(job->mode, JobMode(ConvertParams()));
    }
    EXPECT_EQ(m_model->sourceRoot(), m_films.url(u"one/"_s));
}

TEST_F(QuickActions, the_queue_opens_before_the_first_probe_has_ended)
{
    start();
    m_model->setQueuePaused(true);
    const QUrl film = filmThatExists(u"a.mp4"_s);

    m_model->runQuickAction(QuickAction::makeGIF, {film});

    EXPECT_TRUE(m_model->showQueue());
    EXPECT_TRUE(m_model->jobs().isEmpty());
}

TEST_F(QuickActions, the_queue_opens_even_when_there_is_nothing_to_do)
{
    start();

    m_model->runQuickAction(QuickAction::makeGIF, {});

    EXPECT_TRUE(m_model->showQueue());
    EXPECT_EQ(m_model->probingCount(), 0);
}

TEST_F(QuickActions, the_action_of_the_window_and_its_selection_stay)
{
    start();
    m_model->setQueuePaused(true);
    takeIn(filmThatExists(u"a.mp4"_s));
    m_model->setAction(ActionKind::trim);
    const std::optional<QUuid> selected = m_model->selectedFileID();

    run(QuickAction::extractAudio, {filmThatExists(u"b.mp4"_s)});

    EXPECT_EQ(m_model->action(), ActionKind::trim);
    EXPECT_EQ(m_model->selectedFileID(), selected);
    EXPECT_EQ(inputsOfJobs(), QStringList{u"b.mp4"_s});
}

TEST_F(QuickActions, fitting_takes_one_pass_though_the_user_prefers_two)
{
    start();
    m_model->setQueuePaused(true);
    m_model->setPreferExactMode(true);

    run(QuickAction::compress25MB, {filmThatExists(u"a.mp4"_s)});

    const auto &params = std::get<TargetSizeParams>(m_model->jobs().first()->mode);
    EXPECT_FALSE(params.exactTwoPass);
    EXPECT_EQ(params.targetMB, 25);
}

TEST_F(QuickActions, a_film_of_20_megabytes_is_found_to_fit)
{
    // The ffprobe of the fixture takes what the file says of itself.
    m_tools.writeExecutable(u"ffprobe"_s, "#!/bin/sh\n"
                                          "for film in \"$@\"; do :; done\n"
                                          "exec cat \"$film\"\n");
    start();
    const QUrl film = QUrl::fromLocalFile(
        m_films.write(u"a.mp4"_s, R"({"format": {"duration": "60", "size": "20000000"}, "streams":
            [{"index": 0, "codec_type": "video", "codec_name": "h264", "width": 640, "height": 360}]})"));

    run(QuickAction::compress25MB, {film});
    waitForAllToEnd();

    EXPECT_EQ(resultOf(m_model->jobs().first()).note, m_model->t(u"target.alreadyfits"_s));
}

TEST_F(QuickActions, without_tools_the_failure_is_of_the_intake)
{
    removeTools();
    start();

    run(QuickAction::convertMP4, {filmThatExists(u"a.mp4"_s)});

    EXPECT_TRUE(m_model->jobs().isEmpty());
    EXPECT_EQ(m_model->lastError(), m_model->t(u"error.probe"_s));
}
