// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Heartbeat.h"

#include <QAbstractEventDispatcher>

#include <algorithm>
#include <chrono>

namespace {

double milliseconds(const QElapsedTimer &timer)
{
    return static_cast<double>(timer.nsecsElapsed()) / 1e6;
}

} // namespace

Heartbeat::Heartbeat()
{
    const QAbstractEventDispatcher *dispatcher = QAbstractEventDispatcher::instance();
    connect(dispatcher, &QAbstractEventDispatcher::awake, this, [this] { m_sinceWaking.start(); });
    connect(dispatcher, &QAbstractEventDispatcher::aboutToBlock, this, [this] {
        if (m_sinceWaking.isValid()) {
            m_longestTurnMs = std::max(m_longestTurnMs, milliseconds(m_sinceWaking));
        }
    });
    m_beat.setTimerType(Qt::PreciseTimer);
    connect(&m_beat, &QTimer::timeout, this, [this] {
        if (m_sinceBeat.isValid()) {
            m_longestGapMs = std::max(m_longestGapMs, milliseconds(m_sinceBeat));
        }
        m_sinceBeat.start();
    });
    m_beat.start(std::chrono::milliseconds(1));
}
