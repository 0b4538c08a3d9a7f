// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QElapsedTimer>
#include <QObject>
#include <QTimer>

/// Listens to the event loop of the main thread.
class Heartbeat : public QObject
{
    Q_OBJECT

public:
    Heartbeat();

    /// The longest time in milliseconds from waking up to going to sleep again: what the main
    /// thread worked without a pause.
    double longestTurnMs() const { return m_longestTurnMs; }
    /// The longest time between two beats of a timer of one millisecond: what a user would feel,
    /// waiting for the processor included.
    double longestGapMs() const { return m_longestGapMs; }

private:
    QElapsedTimer m_sinceWaking;
    QElapsedTimer m_sinceBeat;
    QTimer m_beat;
    double m_longestTurnMs = 0;
    double m_longestGapMs = 0;
};
