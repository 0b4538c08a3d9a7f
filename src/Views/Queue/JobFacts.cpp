// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Views/Queue/JobFacts.h"

#include "App/Fmt.h"

using namespace Qt::StringLiterals;
using Look::ColorRole;

ColorRole JobFacts::color(Job::Outcome outcome)
{
    switch (outcome) {
    case Job::Outcome::finished:
        return ColorRole::green;
    case Job::Outcome::failed:
        return ColorRole::red;
    case Job::Outcome::analyzing:
    case Job::Outcome::running:
        return ColorRole::accent;
    case Job::Outcome::queued:
    case Job::Outcome::cancelled:
        return ColorRole::secondaryText;
    }
    Q_UNREACHABLE();
}

QString JobFacts::percent(double progress)
{
    return QString::number(static_cast<int>(progress * 100)) + u'%';
}

QString JobFacts::sizes(const Job::Finished &result)
{
    return Fmt::bytes(result.originalBytes) + u" → "_s + Fmt::bytes(result.outputBytes);
}

std::optional<QStringList> JobFacts::saved(const Job::Finished &result)
{
    if (result.originalBytes < 1 || result.outputBytes >= result.originalBytes) {
        return std::nullopt;
    }
    const qint64 bytes = result.originalBytes - result.outputBytes;
    const double part = static_cast<double>(bytes) / static_cast<double>(result.originalBytes);
    return QStringList{Fmt::bytes(bytes), QString::number(static_cast<int>(part * 100))};
}
