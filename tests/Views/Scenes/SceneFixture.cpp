// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "SceneFixture.h"

#include "Views/Controls/Button.h"
#include "Views/Shell/RootView.h"

#include <QAbstractButton>

using namespace Qt::StringLiterals;

namespace {

// A film whose name says so breaks off; one with a gate stays at 42 of 100.
const QByteArray playedFFmpeg = R"(
case "$in" in
*Broken*) echo "Conversion failed! Invalid data found when processing input" >&2; exit 1 ;;
esac
progress 34860000
await_gate
result 22400000
)";

} // namespace

SceneFixture::SceneFixture() = default;

SceneFixture::~SceneFixture()
{
    m_gate.reset();
    Look::apply(Look::Scheme::light);
}

void SceneFixture::open(const Dress &dress)
{
    Look::apply(dress.scheme);
    installFFmpeg(playedFFmpeg);
    start({.concurrency = 1, .language = dress.language, .collections = {}});
    show(new RootView(context(), [](bool) {}), dress.size);
}

void SceneFixture::films()
{
    film(u"Holiday in the mountains.mp4"_s,
         {.bytes = 182'400'000, .seconds = 83, .subtitleCodecs = {u"subrip"_s}});
    film(u"Lecture 07 – thermodynamics and heat engines, second part.mkv"_s,
         {.bytes = 1'240'000'000,
          .seconds = 4'325,
          .width = 3840,
          .height = 2160,
          .videoCodec = u"hevc"_s,
          .fps = 60,
          .isHDR = true});
    film(u"Logo loop.mov"_s, {.bytes = 9'800'000,
                              .seconds = 6,
                              .width = 800,
                              .height = 800,
                              .videoCodec = u"prores"_s,
                              .audioCodecs = {},
                              .hasAlpha = true});
}

void SceneFixture::open(ActionKind action)
{
    m_model->setAction(action);
    settle();
}

void SceneFixture::jobs()
{
    const VideoFile done = film(u"Birthday.mp4"_s, {.bytes = 96'000'000});
    const VideoFile broken = film(u"Broken.avi"_s, {.bytes = 31'000'000});
    const VideoFile running = film(u"Interview.mov"_s, {.bytes = 412'000'000});
    m_gate = std::make_unique<Gate>(running);
    const TargetSizeParams target;
    const auto first = enqueue(done, target);
    enqueue(broken, CompressParams());
    const auto third = enqueue(running, target);
    enqueue(done, ConvertParams());
    const auto last = enqueue(done, ExtractParams());
    m_model->cancelJob(last->id);
    m_model->setShowQueue(true);
    waitFor(first, Job::Outcome::finished);
    waitForProgress(third, 0.42);
    settle();
}

void SceneFixture::press(const QString &name)
{
    click(find<QAbstractButton>(name));
}
