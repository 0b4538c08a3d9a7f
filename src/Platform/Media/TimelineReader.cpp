// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Platform/Media/TimelineReader.h"

#include <atomic>
#include <utility>

struct TimelineReader::Film {
    std::atomic<bool> isClosed = false;
    /// Used by the reading thread alone.
    std::unique_ptr<FilmTimeline> timeline;
};

namespace {

// At the film's very start the first frame is shown before its time has come.
std::optional<FrameMoment> momentAt(FilmTimeline &timeline, double seconds,
                                    std::optional<double> after)
{
    const std::optional<FrameMoment> moment = timeline.at(seconds);
    if (!moment || !after || !moment->next) {
        return moment;
    }
    const std::optional<FrameMoment> shownBefore = timeline.at(*after);
    const bool isOther = shownBefore && moment->shown > shownBefore->shown;
    return isOther ? moment : timeline.at(*moment->next);
}

} // namespace

TimelineReader::TimelineReader()
{
    m_pool.setMaxThreadCount(1);
    connect(
        this, &TimelineReader::answered, this,
        [](const std::function<void()> &deliver) { deliver(); }, Qt::QueuedConnection);
}

TimelineReader::~TimelineReader()
{
    close();
    m_pool.waitForDone();
}

void TimelineReader::open(const QByteArray &path, const OnOpened &onOpened)
{
    close();
    m_film = std::make_shared<Film>();
    run(
        [path](Film &film) {
            film.timeline = std::make_unique<FilmTimeline>(path, film.isClosed);
            return film.timeline->traits();
        },
        onOpened);
}

void TimelineReader::close()
{
    if (m_film) {
        m_film->isClosed = true;
        m_film.reset();
    }
}

void TimelineReader::find(double seconds, std::optional<double> after, const OnFound &onFound)
{
    run([seconds, after](Film &film) { return momentAt(*film.timeline, seconds, after); }, onFound);
}

template <typename Work, typename Done> void TimelineReader::run(Work work, Done done)
{
    m_pool.start([this, film = m_film, work, done] {
        if (film->isClosed) {
            return;
        }
        const auto answer = [this, film, done, result = work(*film)] {
            if (film == m_film) {
                done(result);
            }
        };
        Q_EMIT answered(answer, {});
    });
}
