// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "BatchFixture.h"

#include "Engine/Estimator.h"

#include <QFileInfo>
#include <QJsonArray>

using namespace Qt::StringLiterals;

namespace {

class BatchEstimate : public BatchFixture
{
protected:
    CommandResult estimate(const QStringList &args)
    {
        return batch(QStringList{u"estimate"_s} + args + QStringList{u"film.mp4"_s});
    }

    QJsonObject estimateAsJson(const QStringList &args)
    {
        const CommandResult result = estimate(QStringList{u"--json"_s} + args);
        EXPECT_EQ(result.exitCode, 0);
        EXPECT_EQ(result.errors, "");
        const QList<QJsonObject> all = objects(result.out);
        EXPECT_EQ(all.size(), 1);
        return all.value(0);
    }

    /// A film of a minute and 8 MB, 1000 kilobits of picture and 64 of sound, to a fake ffprobe.
    void installLongFilm()
    {
        m_films.write(u"film.mp4"_s, "film");
        installFFmpeg("exit 1");
        m_installation.writeExecutable(
            u"libexec/morvix/ffprobe"_s,
            "#!/bin/sh\n"
            "echo '{\"format\": {\"duration\": \"60\", \"size\": \"8000000\"}, \"streams\": [\n"
            "  {\"index\": 0, \"codec_type\": \"video\", \"codec_name\": \"h264\",\n"
            "   \"width\": 640, \"height\": 360, \"bit_rate\": \"1000000\"},\n"
            "  {\"index\": 1, \"codec_type\": \"audio\", \"codec_name\": \"aac\",\n"
            "   \"bit_rate\": \"64000\"}]}'\n");
    }

    QString textOf(const QStringList &args)
    {
        const CommandResult result = estimate(args);
        EXPECT_EQ(result.exitCode, 0);
        EXPECT_EQ(result.errors, "");
        return QString::fromUtf8(result.out);
    }
};

} // namespace

TEST_F(BatchEstimate, nothing_runs_and_nothing_is_written)
{
    makeFilm(u"film.mp4"_s);

    const QJsonObject line = estimateAsJson({u"targetSize"_s, u"targetMB=0.3"_s});

    EXPECT_EQ(line.value(u"type"_s), u"estimate"_s);
    EXPECT_EQ(line.value(u"input"_s), m_films.path(u"film.mp4"_s));
    EXPECT_EQ(m_films.names(), QStringList{u"film.mp4"_s});
    EXPECT_EQ(m_temporary.names(), QStringList());
}

TEST_F(BatchEstimate, each_action_is_estimated_with_its_fields)
{
    struct Case {
        QStringList args;
        qint64 bytes;
        QString badgeKey;
    };
    const QList<Case> cases{
        {{u"targetSize"_s, u"targetMB=25"_s}, 8'000'000, u"target.alreadyfits"_s},
        // 2 × 8192 × 0.95 kilobits over a minute.
        {{u"targetSize"_s, u"targetMB=2"_s}, 1'942'500, {}},
        {{u"convert"_s, u"container=mkv"_s}, 8'000'000, u"convert.badge.remux"_s},
        // The sound of 480,000 bytes gives way to one of 1,200,000.
        {{u"convert"_s, u"audioFormat=wav"_s}, 8'720'000, u"convert.badge.partial"_s},
        // 850 + 64 kilobits a second.
        {{u"convert"_s, u"forceReencode=true"_s}, 6'855'000, u"convert.badge.reencode"_s},
        // 580 + 64.
        {{u"compress"_s}, 4'830'000, {}},
        // 300, as low as it goes.
        {{u"compress"_s, u"mode=quality"_s, u"quality=tiny"_s, u"muted=true"_s}, 2'250'000, {}},
        {{u"extract"_s}, 480'000, u"extract.direct"_s},
        {{u"extract"_s, u"format=mp3"_s, u"bitrateKbps=128"_s}, 960'000, u"extract.transcode"_s},
        // A quarter of a byte for each of 320 × 180 points, ten times a second.
        {{u"gif"_s, u"end=4"_s, u"width=320"_s, u"fps=10"_s}, 576'000, {}},
        {{u"gif"_s, u"end=4"_s, u"width=320"_s, u"fps=10"_s, u"bounce=true"_s}, 1'152'000, {}},
        // 1500 + 64: the frame rate is taken for 30, which asks for less.
        {{u"enhance"_s}, 11'730'000, {}},
        {{u"adjust"_s}, 8'000'000, {}},
        // 950 + 160 over half the time.
        {{u"adjust"_s, u"speed=2"_s}, 4'162'500, {}},
        {{u"adjust"_s, u"flipH=true"_s, u"muted=true"_s}, 7'125'000, {}},
    };
    installLongFilm();
    for (const Case &row : cases) {
        const QJsonObject line = estimateAsJson(row.args);
        EXPECT_EQ(line.value(u"originalBytes"_s).toInteger(), 8'000'000);
        EXPECT_EQ(line.value(u"estimatedBytes"_s).toInteger(), row.bytes)
            << row.args.join(u' ').toStdString();
        EXPECT_EQ(line.value(u"badgeKey"_s).toString(), row.badgeKey);
        EXPECT_EQ(line.value(u"warningKeys"_s), QJsonArray());
    }
}

TEST_F(BatchEstimate, the_text_is_one_line_with_the_saving_and_the_badge)
{
    installLongFilm();

    EXPECT_EQ(textOf({u"compress"_s}), u"film.mp4: 8 MB → ≈ 4.8 MB −39%\n"_s);
    EXPECT_EQ(textOf({u"convert"_s, u"container=mkv"_s}),
              u"film.mp4: 8 MB → ≈ 8 MB (Lossless · instant)\n"_s);
    EXPECT_EQ(textOf({u"extract"_s}),
              u"film.mp4: 8 MB → ≈ 480 KB −94% (Direct copy · fast · lossless)\n"_s);
    EXPECT_EQ(textOf({u"enhance"_s}), u"film.mp4: 8 MB → ≈ 11.7 MB\n"_s);
}

TEST_F(BatchEstimate, a_limit_is_promised_under_its_estimate)
{
    installLongFilm();
    EXPECT_EQ(textOf({u"targetSize"_s, u"targetMB=2"_s}),
              u"film.mp4: 8 MB → ≈ 1.9 MB −75%\n"
              "  Estimated ~1.9 MB · guaranteed under 2 MB\n"_s);
    EXPECT_EQ(textOf({u"targetSize"_s, u"targetMB=2.5"_s}).section(u'\n', 1, 1),
              u"  Estimated ~2.4 MB · guaranteed under 2.5 MB"_s);
}

TEST_F(BatchEstimate, warnings_stand_on_lines_of_their_own)
{
    installLongFilm();

    const QString text = textOf({u"targetSize"_s, u"targetMB=0.5"_s});

    EXPECT_EQ(
        text.section(u'\n', 2),
        u"  Target is unreachable for this length even at minimum bitrate. Trim the clip or "
        "raise the target.\n"
        "  Bitrate budget is very low — quality will drop noticeably. Trim or mute to help.\n"_s);
}

TEST_F(BatchEstimate, warnings_have_keys_and_words_in_JSON)
{
    installLongFilm();

    const QJsonObject line = estimateAsJson({u"targetSize"_s, u"targetMB=1"_s});

    EXPECT_EQ(line.value(u"warningKeys"_s), QJsonArray{u"target.warn.lowbitrate"_s});
    EXPECT_EQ(line.value(u"warnings"_s),
              QJsonArray{u"Bitrate budget is very low — quality will drop noticeably. Trim or mute "
                         "to help."_s});
}

TEST_F(BatchEstimate, a_film_without_sound_has_none_to_take_out)
{
    makeFilm(u"film.mp4"_s, {.seconds = 1, .hasAudio = false});

    const QString text = textOf({u"extract"_s});
    const QJsonObject line = estimateAsJson({u"extract"_s});

    EXPECT_TRUE(text.endsWith(u"\n  This file has no audio track.\n"_s)) << text.toStdString();
    EXPECT_EQ(line.value(u"warningKeys"_s), QJsonArray{u"extract.noaudio"_s});
    EXPECT_EQ(line.value(u"estimatedBytes"_s), line.value(u"originalBytes"_s));
}

TEST_F(BatchEstimate, the_words_are_in_the_users_language)
{
    installLongFilm();
    writeSettings("mx.language=zh-Hans\n");

    EXPECT_EQ(textOf({u"convert"_s, u"audioFormat=wav"_s}),
              u"film.mp4: 8 MB → ≈ 8.7 MB (视频直拷 · 音频转码)\n"_s);
    EXPECT_EQ(textOf({u"targetSize"_s, u"targetMB=1"_s}),
              u"film.mp4: 8 MB → ≈ 968 KB −87%\n"
              "  预估 ~968 KB · 保证不超过 1 MB\n"
              "  码率预算很低，画质会明显下降。可裁剪或静音来改善。\n"_s);
    EXPECT_EQ(estimateAsJson({u"targetSize"_s, u"targetMB=1"_s}).value(u"warnings"_s),
              QJsonArray{u"码率预算很低，画质会明显下降。可裁剪或静音来改善。"_s});
}

TEST_F(BatchEstimate, each_file_is_estimated_in_the_order_given_and_what_fails_is_told)
{
    makeFilm(u"film.mp4"_s, {.seconds = 1});
    makeFilm(u"another.mp4"_s, {.seconds = 1});
    m_films.write(u"bad.mp4"_s, "no film");

    const CommandResult result = batch({u"estimate"_s, u"--json"_s, u"compress"_s, u"film.mp4"_s,
                                        u"bad.mp4"_s, u"another.mp4"_s, u"gone.mp4"_s});

    EXPECT_EQ(result.exitCode, 1);
    EXPECT_EQ(objectsOfType(result.out, u"failed"_s).size(), 2);
    const QList<QJsonObject> told = objectsOfType(result.out, u"estimate"_s);
    ASSERT_EQ(told.size(), 2);
    EXPECT_EQ(told.first().value(u"input"_s), m_films.path(u"film.mp4"_s));
    EXPECT_EQ(told.last().value(u"input"_s), m_films.path(u"another.mp4"_s));
}

TEST_F(BatchEstimate, what_is_told_is_what_the_panels_show)
{
    makeFilm(u"film.mp4"_s);
    const VideoFile film = Clips::probe(m_films.path(u"film.mp4"_s));

    EXPECT_EQ(
        estimateAsJson({u"enhance"_s, u"upscale=x2"_s}).value(u"estimatedBytes"_s).toInteger(),
        Estimator::enhance(film, {.upscale = EnhanceParams::UpscaleFactor::x2, .advanced = {}})
            .estimatedBytes);
}

TEST_F(BatchEstimate, what_only_copies_has_no_estimate)
{
    makeFilm(u"film.mp4"_s, {.seconds = 1});
    for (const QString &action : {u"trim"_s, u"merge"_s, u"split"_s}) {
        const CommandResult result = estimate({action});
        EXPECT_EQ(result.exitCode, 64);
        EXPECT_EQ(result.out, "");
        EXPECT_TRUE(QString::fromUtf8(result.errors)
                        .startsWith(u"morvix-batch: there is no estimate for "_s + action + u'\n'))
            << result.errors.toStdString();
    }
}
