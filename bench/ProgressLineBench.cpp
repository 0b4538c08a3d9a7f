// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Engine/ProgressLine.h"

#include <benchmark/benchmark.h>

#include <QString>

#include <array>

using namespace Qt::StringLiterals;

namespace {

// Aim: under 2 µs. Every line that ffmpeg prints goes through here, most of them for nothing.
void progressLine(benchmark::State &state)
{
    static const std::array lines{u"out_time_us=83450000"_s, u"out_time=00:01:23.450000"_s,
                                  u"bitrate= 512.3kbits/s"_s, u"out_time_us=N/A"_s};
    const QString &line = lines.at(static_cast<size_t>(state.range(0)));
    state.SetLabel(line.toStdString());
    for ([[maybe_unused]] auto round : state) {
        benchmark::DoNotOptimize(ProgressLine::seconds(line));
    }
}

} // namespace

BENCHMARK(progressLine)->DenseRange(0, 3);
