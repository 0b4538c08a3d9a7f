// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "ProgramFixture.h"
#include "support/Processes.h"

#include <QDBusMessage>

using namespace Qt::StringLiterals;

namespace {

class ProgramServices : public ProgramFixture
{
protected:
    static QString listOf(const QStringList &paths)
    {
        QStringList uris;
        for (const QString &path : paths) {
            uris += u"'file://"_s + path + u'\'';
        }
        return u"[<["_s + uris.join(u',') + u"]>]"_s;
    }

    CommandResult perform(const QString &service, const QStringList &paths) const
    {
        return call(u"ActivateAction"_s, {service, listOf(paths), u"{}"_s});
    }

    /// Sends what gdbus has no words for.
    QDBusMessage callDirectly(const QString &method, const QVariantList &arguments) const
    {
        QDBusMessage message =
            QDBusMessage::createMethodCall(u"app.morvix.Morvix"_s, u"/app/morvix/Morvix"_s,
                                           u"org.freedesktop.Application"_s, method);
        message.setArguments(arguments);
        return m_bus.connection().call(message, QDBus::Block, patienceMs);
    }
};

struct ServiceRow {
    const char *service;
    const char *result;

    friend void PrintTo(const ServiceRow &row, std::ostream *out) { *out << row.service; }
};

class EachService : public ProgramServices, public ::testing::WithParamInterface<ServiceRow>
{
};

} // namespace

TEST_P(EachService, makes_its_job_for_each_file)
{
    const QString film = makeFilm(u"a.mkv"_s);
    Start program;
    ASSERT_NO_FATAL_FAILURE(startFirst(program));

    const CommandResult answer = perform(QString::fromLatin1(GetParam().service), {film, film});

    EXPECT_EQ(answer.exitCode, 0) << answer.errors.toStdString();
    EXPECT_EQ(namesOnceThereAre(2),
              (QStringList{QString::fromLatin1(GetParam().result), u"a.mkv"_s}));
}

INSTANTIATE_TEST_SUITE_P(Table, EachService,
                         ::testing::Values(ServiceRow{"compressWithMorvix", "a-smart.mp4"},
                                           ServiceRow{"compressTo25MB", "a-25MB.mp4"},
                                           ServiceRow{"convertToMP4", "a-MP4.mp4"},
                                           ServiceRow{"extractAudioService", "a-audio.m4a"},
                                           ServiceRow{"createGIFService", "a-gif.gif"}),
                         [](const auto &row) { return std::string(row.param.service); });

TEST_F(ProgramServices, Open_takes_files_in_and_starts_nothing)
{
    const QString film = makeFilm(u"a.mkv"_s);
    Start program;
    ASSERT_NO_FATAL_FAILURE(startFirst(program));

    EXPECT_EQ(call(u"Open"_s, {u"['file://%1']"_s.arg(film), u"{}"_s}).exitCode, 0);

    EXPECT_TRUE(Processes::eventually([&] { return probesOf(film) == 1; }));
    // A job of the same file comes behind what Open may have started.
    EXPECT_EQ(perform(u"convertToMP4"_s, {film}).exitCode, 0);
    EXPECT_EQ(namesOnceThereAre(2), (QStringList{u"a-MP4.mp4"_s, u"a.mkv"_s}));
}

TEST_F(ProgramServices, a_folder_gives_one_result_a_film)
{
    makeFilm(u"a.mkv"_s);
    makeFilm(u"b.mkv"_s);
    Start program;
    ASSERT_NO_FATAL_FAILURE(startFirst(program));

    EXPECT_EQ(perform(u"extractAudioService"_s, {m_films.path()}).exitCode, 0);

    EXPECT_EQ(namesOnceThereAre(4),
              (QStringList{u"a-audio.m4a"_s, u"a.mkv"_s, u"b-audio.m4a"_s, u"b.mkv"_s}));
}

TEST_F(ProgramServices, Activate_is_answered)
{
    Start program;
    ASSERT_NO_FATAL_FAILURE(startFirst(program));

    EXPECT_EQ(call(u"Activate"_s, {u"{'activation-token': <'x'>}"_s}).exitCode, 0);
}

TEST_F(ProgramServices, rubbish_is_survived)
{
    const QString film = makeFilm(u"a.mkv"_s);
    Start program;
    ASSERT_NO_FATAL_FAILURE(startFirst(program));
    const QVariantMap none;
    QStringList many;
    for (int i = 0; i < 5'000; ++i) {
        many += u"file:///nowhere/film%1.mp4"_s.arg(i);
    }
    const QStringList odd{QString(),
                          u"file://"_s,
                          u"file:///nowhere/%00.mp4"_s,
                          u"file:///%zz/a.mp4"_s,
                          u"https://example.org/a.mp4"_s,
                          u"data:video/mp4,x"_s,
                          u"/nowhere/a.mp4"_s,
                          QString(100'000, u'x')};

    EXPECT_NE(perform(u"convertToMP5"_s, {film}).exitCode, 0);
    EXPECT_NE(call(u"ActivateAction"_s, {u"convertToMP4"_s, u"[<5>]"_s, u"{}"_s}).exitCode, 0);
    EXPECT_NE(call(u"NoSuchMethod"_s, {}).exitCode, 0);
    for (const QStringList &uris : {many, odd}) {
        EXPECT_EQ(callDirectly(u"Open"_s, {uris, none}).type(), QDBusMessage::ReplyMessage);
        EXPECT_EQ(
            callDirectly(u"ActivateAction"_s, {u"convertToMP4"_s, QVariantList{uris}, none}).type(),
            QDBusMessage::ReplyMessage);
    }

    EXPECT_EQ(perform(u"convertToMP4"_s, {film}).exitCode, 0);
    EXPECT_EQ(namesOnceThereAre(2), (QStringList{u"a-MP4.mp4"_s, u"a.mkv"_s}));
    EXPECT_EQ(program.state(), QProcess::Running);
}
