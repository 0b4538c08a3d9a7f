// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Engine/CommandBuilder/CommandBuilder.h"

#include "Engine/CommandBuilder/BuilderError.h"
#include "support/GoldenLines.h"

#include <gtest/gtest.h>

#include <vector>

using namespace GoldenLines;
using namespace Qt::StringLiterals;

namespace {

using AudioFormat = ExtractParams::AudioFormat;

/// A case before it is planned: a film of ten seconds with two tracks, behind a picture and a
/// subtitle.
struct Given : FilmCase<ExtractParams> {
    Given()
    {
        addTrack(1, u"aac"_s);
        addTrack(3, u"opus"_s);
    }

    void addTrack(qint64 index, const QString &codec)
    {
        addAudio(codec);
        file.audioStreams.last().index = index;
    }

    JobPlan plan() const
    {
        return CommandBuilder::extract(file, params, std::nullopt, std::nullopt);
    }
};

/// One case, with the badge of its plan.
struct Row : LineRow<Given> {
    const char *badge;
};

using Change = ChangeOf<Given>;

Change trackOf(const char *codec, AudioFormat format)
{
    return [=](Given &g) {
        g.file.audioStreams.first().codec = QString::fromUtf8(codec);
        g.params.format = format;
    };
}

Change track(qint64 index)
{
    return [=](Given &g) { g.params.audioTrackIndex = index; };
}

class ExtractLine : public ::testing::TestWithParam<Row>
{
};

} // namespace

TEST_P(ExtractLine, is_laid_out)
{
    Given g;
    GetParam().change(g);

    const JobPlan plan = g.plan();

    ASSERT_EQ(plan.steps.size(), 1);
    EXPECT_EQ(plan.steps.first().args, commandLine(GetParam().line));
    EXPECT_EQ(plan.badgeKey, QString::fromUtf8(GetParam().badge));
}

static const char *const direct = "extract.direct";
static const char *const transcode = "extract.transcode";

static const std::vector<Row> m4aRows{
    {"aac_is_copied", trackOf("aac", AudioFormat::m4a),
     "-i /films/a.mov -vn -map 0:1 -c:a copy /films/a-audio.m4a", direct},
    {"mp3_is_copied", trackOf("mp3", AudioFormat::m4a),
     "-i /films/a.mov -vn -map 0:1 -c:a copy /films/a-audio.m4a", direct},
    {"ac3_is_copied", trackOf("ac3", AudioFormat::m4a),
     "-i /films/a.mov -vn -map 0:1 -c:a copy /films/a-audio.m4a", direct},
    {"eac3_is_copied", trackOf("eac3", AudioFormat::m4a),
     "-i /films/a.mov -vn -map 0:1 -c:a copy /films/a-audio.m4a", direct},
    {"a_codec_is_known_whatever_its_case", trackOf("AAC", AudioFormat::m4a),
     "-i /films/a.mov -vn -map 0:1 -c:a copy /films/a-audio.m4a", direct},
    {"an_unknown_codec_is_copied", trackOf("", AudioFormat::m4a),
     "-i /films/a.mov -vn -map 0:1 -c:a copy /films/a-audio.m4a", direct},
    {"opus_is_encoded", trackOf("opus", AudioFormat::m4a),
     "-i /films/a.mov -vn -map 0:1 -c:a aac -b:a 192k /films/a-audio.m4a", transcode},
    // The table of what an MP4 takes has no ALAC.
    {"alac_is_encoded", trackOf("alac", AudioFormat::m4a),
     "-i /films/a.mov -vn -map 0:1 -c:a aac -b:a 192k /films/a-audio.m4a", transcode},
    {"pcm_is_encoded", trackOf("pcm_s16le", AudioFormat::m4a),
     "-i /films/a.mov -vn -map 0:1 -c:a aac -b:a 192k /films/a-audio.m4a", transcode},
    {"a_copy_takes_no_notice_of_the_rate", [](Given &g) { g.params.bitrateKbps = 64; },
     "-i /films/a.mov -vn -map 0:1 -c:a copy /films/a-audio.m4a", direct},
};

static const std::vector<Row> otherRows{
    {"mp3_from_aac", trackOf("aac", AudioFormat::mp3),
     "-i /films/a.mov -vn -map 0:1 -c:a libmp3lame -b:a 192k /films/a-audio.mp3", transcode},
    {"mp3_from_mp3_is_encoded_anew", trackOf("mp3", AudioFormat::mp3),
     "-i /films/a.mov -vn -map 0:1 -c:a libmp3lame -b:a 192k /films/a-audio.mp3", transcode},
    {"aac_from_opus", trackOf("opus", AudioFormat::aac),
     "-i /films/a.mov -vn -map 0:1 -c:a aac -b:a 192k /films/a-audio.m4a", transcode},
    {"aac_from_aac_is_encoded_anew", trackOf("aac", AudioFormat::aac),
     "-i /films/a.mov -vn -map 0:1 -c:a aac -b:a 192k /films/a-audio.m4a", transcode},
    {"wav_from_aac", trackOf("aac", AudioFormat::wav),
     "-i /films/a.mov -vn -map 0:1 -c:a pcm_s16le /films/a-audio.wav", transcode},
    {"wav_from_pcm_is_encoded_anew", trackOf("pcm_s16le", AudioFormat::wav),
     "-i /films/a.mov -vn -map 0:1 -c:a pcm_s16le /films/a-audio.wav", transcode},
    {"the_rate_is_written_as_it_stands",
     [](Given &g) {
         g.params.format = AudioFormat::mp3;
         g.params.bitrateKbps = 320;
     },
     "-i /films/a.mov -vn -map 0:1 -c:a libmp3lame -b:a 320k /films/a-audio.mp3", transcode},
    {"a_rate_below_0_is_written_as_it_stands",
     [](Given &g) {
         g.params.format = AudioFormat::aac;
         g.params.bitrateKbps = -1;
     },
     "-i /films/a.mov -vn -map 0:1 -c:a aac -b:a -1k /films/a-audio.m4a", transcode},
    {"wav_takes_no_notice_of_the_rate",
     [](Given &g) {
         g.params.format = AudioFormat::wav;
         g.params.bitrateKbps = 320;
     },
     "-i /films/a.mov -vn -map 0:1 -c:a pcm_s16le /films/a-audio.wav", transcode},
};

// The map counts the streams of the whole file.
static const std::vector<Row> trackRows{
    {"the_second_track", track(1),
     "-i /films/a.mov -vn -map 0:3 -c:a aac -b:a 192k /films/a-audio.m4a", transcode},
    {"a_track_beyond_the_list_is_the_last", track(2),
     "-i /films/a.mov -vn -map 0:3 -c:a aac -b:a 192k /films/a-audio.m4a", transcode},
    {"track_7_of_two_is_the_second", track(7),
     "-i /films/a.mov -vn -map 0:3 -c:a aac -b:a 192k /films/a-audio.m4a", transcode},
    {"a_track_below_0_is_the_first", track(-1),
     "-i /films/a.mov -vn -map 0:1 -c:a copy /films/a-audio.m4a", direct},
    {"a_recording_without_a_picture",
     [](Given &g) {
         g.file.videoCodec.reset();
         g.file.width.reset();
         g.file.height.reset();
         g.file.audioStreams = {};
         g.addTrack(0, u"mp3"_s);
     },
     "-i /films/a.mov -vn -map 0:0 -c:a copy /films/a-audio.m4a", direct},
};

INSTANTIATE_TEST_SUITE_P(M4a, ExtractLine, ::testing::ValuesIn(m4aRows), RowName());
INSTANTIATE_TEST_SUITE_P(OtherFormats, ExtractLine, ::testing::ValuesIn(otherRows), RowName());
INSTANTIATE_TEST_SUITE_P(Tracks, ExtractLine, ::testing::ValuesIn(trackRows), RowName());

TEST(Extract, a_plan_is_one_step_over_the_whole_length)
{
    const JobPlan plan = Given().plan();

    ASSERT_EQ(plan.steps.size(), 1);
    EXPECT_EQ(plan.steps.first().label, u"extract"_s);
    EXPECT_EQ(plan.steps.first().progressDuration, 10);
    EXPECT_EQ(plan.finalOutputURLs, QList<QUrl>{QUrl::fromLocalFile(u"/films/a-audio.m4a"_s)});
    expectNothingBeside(plan);
}

TEST(Extract, a_file_without_sound_is_refused)
{
    Given g;
    g.file.audioStreams.clear();
    try {
        g.plan();
        FAIL() << "a plan was made";
    } catch (const BuilderError &error) {
        EXPECT_EQ(error.kind(), BuilderError::Case::noAudioTrack);
        EXPECT_EQ(error.errorDescription(), u"no audio track"_s);
    }
}

TEST(Extract, folder_and_template_name_the_output)
{
    const TempFolder folder;
    folder.write(u"audio of a as mp3.mp3"_s, "taken");
    Given g;
    g.params.format = AudioFormat::mp3;

    const JobPlan plan = CommandBuilder::extract(g.file, g.params, folder.url(QString()),
                                                 u"{suffix} of {name} as {ext}"_s);

    EXPECT_EQ(plan.finalOutputURLs, QList<QUrl>{folder.url(u"audio of a as mp3 2.mp3"_s)});
    EXPECT_EQ(plan.steps.first().args.last(), folder.path(u"audio of a as mp3 2.mp3"_s));
}

TEST(Extract, paths_go_in_as_they_are)
{
    Given g;
    const QString odd = u"/films/it's a \"film\" %20 ?#$HOME;"_s;
    g.file.url = QUrl::fromLocalFile(odd + u".mov"_s);

    const QStringList args = g.plan().steps.first().args;

    EXPECT_EQ(valueOf(args, u"-i"_s), odd + u".mov"_s);
    EXPECT_EQ(args.last(), odd + u"-audio.m4a"_s);
}
