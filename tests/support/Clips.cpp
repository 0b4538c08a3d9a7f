// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "support/Clips.h"

#include "Engine/FFmpegLocator.h"
#include "Engine/ProbeService.h"
#include "Engine/ProcessRunner.h"
#include "support/Printing.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

const FFmpegToolset &Clips::tools()
{
    static const FFmpegToolset toolset = [] {
        const auto found = FFmpegLocator().discover();
        EXPECT_TRUE(found) << "the tests need ffmpeg and ffprobe";
        return found.value_or(FFmpegToolset{});
    }();
    return toolset;
}

void Clips::ffmpeg(const QStringList &args)
{
    const QStringList head{u"-hide_banner"_s, u"-nostdin"_s, u"-loglevel"_s, u"error"_s, u"-y"_s};
    const ProcessResult result = ProcessRunner::runSync(tools().ffmpegURL, head + args);
    ASSERT_EQ(result.exitCode, 0) << result.standardError.toStdString();
}

void Clips::make(const QString &path, const Recipe &recipe)
{
    const QString duration = QString::number(recipe.seconds);
    QString picture = u"testsrc2=size=%1:rate=%2:duration=%3"_s.arg(
        recipe.size, QString::number(recipe.framesPerSecond), duration);
    if (recipe.noise > 0) {
        picture += u",noise=alls=%1:allf=t"_s.arg(recipe.noise);
    }
    QStringList args{u"-f"_s, u"lavfi"_s, u"-i"_s, picture};
    if (recipe.hasAudio) {
        args << u"-f"_s << u"lavfi"_s << u"-i"_s
             << u"sine=frequency=440:duration=%1"_s.arg(duration);
    }
    args << u"-c:v"_s << u"libx264"_s << u"-preset"_s << u"ultrafast"_s << u"-b:v"_s
         << recipe.videoBitrate << u"-pix_fmt"_s << u"yuv420p"_s << u"-g"_s << u"25"_s << u"-c:a"_s
         << u"aac"_s << path;
    ffmpeg(args);
}

VideoFile Clips::probe(const QString &path)
{
    return ProbeService::probe(QUrl::fromLocalFile(path), tools().ffprobeURL);
}
