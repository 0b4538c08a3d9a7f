// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "Platform/Media/FilmTimeline.h"

#include <QObject>
#include <QThreadPool>

#include <functional>
#include <memory>

/// Reads the timeline of one film at a time on a thread of its own. Answers come on the main
/// thread, in order; those for an earlier film never do.
class TimelineReader : public QObject
{
    Q_OBJECT

public:
    using OnOpened = std::function<void(const FilmTraits &)>;
    using OnFound = std::function<void(const std::optional<FrameMoment> &)>;

    TimelineReader();
    ~TimelineReader() override;

    void open(const QByteArray &path, const OnOpened &onOpened);
    void close();

    /// Finds the frame at a time, or the one behind it where that is on the screen at `after`
    /// already.
    void find(double seconds, std::optional<double> after, const OnFound &onFound);

Q_SIGNALS:
    /// From the reading thread; the call belongs to the main one.
    void answered(const std::function<void()> &deliver, QPrivateSignal);

private:
    struct Film;
    template <typename Work, typename Done> void run(Work work, Done done);

    /// Null without a film.
    std::shared_ptr<Film> m_film;
    QThreadPool m_pool;
};
