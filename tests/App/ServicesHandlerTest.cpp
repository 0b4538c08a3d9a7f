// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "App/ServicesHandler.h"

#include "AppFixture.h"

#include <QMap>

using namespace Qt::StringLiterals;

namespace {

class Services : public AppFixture
{
protected:
    void SetUp() override
    {
        start();
        m_model->setQueuePaused(true);
        m_handler = std::make_unique<ServicesHandler>(*m_model);
    }

    void handle(const QList<QUrl> &urls, QuickAction quick = QuickAction::convertMP4)
    {
        m_handler->handle(urls, quick);
        waitUntil([this] { return m_model->probingCount() == 0; });
    }

    QUrl filmThatExists(const QString &name) const
    {
        return QUrl::fromLocalFile(m_films.write(name, "x"));
    }

    std::unique_ptr<ServicesHandler> m_handler;
};

} // namespace

TEST_F(Services, go_by_the_names_that_others_call)
{
    const QMap<QString, QuickAction> expected{
        {u"compressWithMorvix"_s, QuickAction::compressSmart},
        {u"compressTo25MB"_s, QuickAction::compress25MB},
        {u"convertToMP4"_s, QuickAction::convertMP4},
        {u"extractAudioService"_s, QuickAction::extractAudio},
        {u"createGIFService"_s, QuickAction::makeGIF},
    };

    QMap<QString, QuickAction> found;
    for (const ServicesHandler::Message &message : ServicesHandler::messages()) {
        found.insert(message.name, message.action);
        EXPECT_EQ(ServicesHandler::quickAction(message.name), message.action);
    }

    EXPECT_EQ(found, expected);
    EXPECT_EQ(ServicesHandler::quickAction(u"ConvertToMP4"_s), std::nullopt);
    EXPECT_EQ(ServicesHandler::quickAction(QString()), std::nullopt);
}

TEST_F(Services, each_file_becomes_a_job_of_its_own_with_the_same_action)
{
    handle({filmThatExists(u"a.mp4"_s), filmThatExists(u"b.mp4"_s)}, QuickAction::makeGIF);

    ASSERT_EQ(m_model->jobs().size(), 2);
    for (const std::shared_ptr<Job> &job : m_model->jobs()) {
        EXPECT_EQ(job->mode, JobMode(GifParams()));
    }
    EXPECT_TRUE(m_model->showQueue());
}

TEST_F(Services, a_file_that_is_named_twice_is_taken_once)
{
    const QUrl film = filmThatExists(u"a.mp4"_s);
    const QUrl folder = QUrl::fromLocalFile(m_films.path());

    handle({film, film, QUrl(u"file://localhost"_s + film.path()), folder, folder});

    EXPECT_EQ(m_model->jobs().size(), 1);
    EXPECT_EQ(m_model->sourceRoot(), m_films.url(u""_s));
}

TEST_F(Services, nothing_to_work_on_does_nothing_and_leaves_the_queue_closed)
{
    handle({});
    handle({QUrl(u"https://example.org/a.mp4"_s), QUrl(), QUrl(u"mailto:a@example.org"_s)});

    EXPECT_TRUE(m_model->jobs().isEmpty());
    EXPECT_FALSE(m_model->showQueue());
}

TEST_F(Services, a_call_after_the_model_has_gone_is_let_pass)
{
    const QUrl film = filmThatExists(u"a.mp4"_s);
    m_model.reset();

    m_handler->handle({film}, QuickAction::convertMP4);
}
