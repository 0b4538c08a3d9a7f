// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Heartbeat.h"

#include <algorithm>
#include <chrono>

Heartbeat::Heartbeat()
{
    m_beat.setTimerType(Qt::PreciseTimer);
    connect(&m_beat, &QTimer::timeout, this, [this] {
        if (m_sinceBeat.isValid()) {
            m_longestGapMs =
                std::max(m_longestGapMs, static_cast<double>(m_sinceBeat.nsecsElapsed()) / 1e6);
        }
        m_sinceBeat.start();
    });
    m_beat.start(std::chrono::milliseconds(1));
}
