// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Engine/HardwareEncoders.h"

#include "Engine/CommandBuilder/SharedArguments.h"
#include "Engine/DescribedError.h"
#include "Engine/PlanExecutor.h"

#include <array>

using namespace Qt::StringLiterals;

namespace {

struct Planned {
    QLatin1StringView name;
    QLatin1StringView family;
};

constexpr std::array planned{Planned{"h264_videotoolbox"_L1, "h264"_L1},
                             Planned{"hevc_videotoolbox"_L1, "hevc"_L1}};

QList<StandIn> candidates(QLatin1StringView family)
{
    return {
        {.encoder = family + u"_nvenc"_s,
         .encoderOptions = {},
         .globalOptions = {},
         .boundsRate = true,
         .uploadsFrames = false},
        {.encoder = family + u"_qsv"_s,
         .encoderOptions = {},
         .globalOptions = {},
         .boundsRate = true,
         .uploadsFrames = false},
        {.encoder = family + u"_vaapi"_s,
         .encoderOptions = {},
         .globalOptions = {u"-vaapi_device"_s, u"/dev/dri/renderD128"_s},
         .boundsRate = true,
         .uploadsFrames = true},
    };
}

} // namespace

HardwareEncoders::HardwareEncoders(FFmpegToolset toolset)
    : m_toolset(std::move(toolset))
    , m_standIns(EncoderStandIns::software(m_toolset))
{
}

HardwareEncoders::~HardwareEncoders() = default;

QStringList HardwareEncoders::trialArgs(const QString &plannedName, const StandIn &standIn,
                                        Depth depth)
{
    const QString layout = depth == Depth::tenBits ? u"p010le"_s : u"yuv420p"_s;
    QStringList args;
    args << CommandBuilder::baseArgs() << u"-f"_s << u"lavfi"_s << u"-i"_s
         << u"testsrc2=size=640x360:rate=30:duration=0.3"_s << u"-c:v"_s << plannedName << u"-b:v"_s
         << u"1000k"_s << u"-pix_fmt"_s << layout << u"-f"_s << u"null"_s << u"-"_s;
    return EncoderStandIns::applyToArgs(args, 0.3, {{plannedName, {standIn}}});
}

void HardwareEncoders::check()
{
    for (const Planned &row : planned) {
        if (m_toolset.encoders.contains(row.name)) {
            continue;
        }
        if (const auto found = firstThatWorks(row.name, row.family)) {
            const std::scoped_lock guard(m_lock);
            m_standIns[row.name].prepend(*found);
        }
    }
}

void HardwareEncoders::cancel()
{
    const std::scoped_lock guard(m_lock);
    m_cancelled = true;
    if (m_trial) {
        m_trial->cancel();
    }
}

EncoderStandIns::Table HardwareEncoders::standIns()
{
    const std::scoped_lock guard(m_lock);
    return m_standIns;
}

bool HardwareEncoders::begin(const std::shared_ptr<PlanExecutor> &trial)
{
    const std::scoped_lock guard(m_lock);
    m_trial = trial;
    return !m_cancelled;
}

std::optional<StandIn> HardwareEncoders::firstThatWorks(const QString &plannedName,
                                                        QLatin1StringView family)
{
    for (StandIn candidate : candidates(family)) {
        if (m_toolset.encoders.contains(candidate.encoder) &&
            works(plannedName, candidate, Depth::eightBits)) {
            candidate.eightBitOnly = !works(plannedName, candidate, Depth::tenBits);
            return candidate;
        }
    }
    return std::nullopt;
}

bool HardwareEncoders::works(const QString &plannedName, const StandIn &standIn, Depth depth)
{
    JobPlan plan;
    plan.steps = {{u"trial"_s, trialArgs(plannedName, standIn, depth), 0, std::nullopt}};
    const auto trial = std::make_shared<PlanExecutor>(m_toolset.ffmpegURL);
    if (!begin(trial)) {
        return false;
    }
    try {
        trial->execute(plan, [](double) {});
        return true;
    } catch (const DescribedError &) {
        return false;
    }
}
