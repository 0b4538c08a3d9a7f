// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QElapsedTimer>
#include <QObject>
#include <QTimer>

/// A timer of one millisecond on the main thread. Whatever keeps the event loop busy, waiting for
/// the processor included, widens the gap between two of its beats.
class Heartbeat : public QObject
{
    Q_OBJECT

public:
    Heartbeat();

    double longestGapMs() const { return m_longestGapMs; }

private:
    QElapsedTimer m_sinceBeat;
    QTimer m_beat;
    double m_longestGapMs = 0;
};
