// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "PromiseReport.h"

#include "Engine/Text.h"

#include <algorithm>
#include <array>
#include <cmath>

using namespace Qt::StringLiterals;

namespace {

using PromiseJob::Ending;
using PromiseJob::Pair;
using PromiseJob::Result;
using PromiseReport::Row;

enum class Group { reachable, lateBurst, tinyLimit, shortFilm, hopeless };

struct GroupTitle {
    Group group;
    QLatin1StringView title;
};

constexpr std::array groupTitles{
    GroupTitle{Group::reachable, "reachable (20 s and more, 1 MB and more, no warning)"_L1},
    GroupTitle{Group::lateBurst, "- of these, late bursts"_L1},
    GroupTitle{Group::tinyLimit, "limit under 1 MB"_L1},
    GroupTitle{Group::shortFilm, "film under 20 s"_L1},
    GroupTitle{Group::hopeless, "warned as hopeless"_L1},
};

bool belongs(const Pair &pair, Group group)
{
    const bool isShort = pair.seconds < 19.9;
    const bool isTiny = pair.limitMB < 1;
    const bool isReachable = !pair.hopeless && !isShort && !isTiny;
    switch (group) {
    case Group::reachable:
        return isReachable;
    case Group::lateBurst:
        return isReachable && pair.clip.name.contains("late burst"_L1);
    case Group::tinyLimit:
        return !pair.hopeless && !isShort && isTiny;
    case Group::shortFilm:
        return !pair.hopeless && isShort;
    case Group::hopeless:
        return pair.hopeless;
    }
    Q_UNREACHABLE();
}

QLatin1StringView word(Ending ending)
{
    switch (ending) {
    case Ending::met:
        return "met"_L1;
    case Ending::missed:
        return "missed"_L1;
    case Ending::broken:
        return "BROKEN"_L1;
    case Ending::fitsAlready:
        return "fits already"_L1;
    case Ending::failed:
        return "failed"_L1;
    }
    Q_UNREACHABLE();
}

QString cells(const std::optional<Result> &result)
{
    if (!result) {
        return u"– | – | –"_s;
    }
    return u"%1 | %2 | %3"_s.arg(word(result->ending), Text::fixed(result->fill, 3),
                                 QString::number(result->attempts));
}

QString tableLine(const Row &row)
{
    return u"| %1 | %2 | %3 | %4 | %5 | %6 |\n"_s.arg(
        row.pair.clip.name, Text::fixed(row.pair.seconds, 0), QString::number(row.pair.limitMB),
        row.pair.hopeless ? u"yes"_s : u"no"_s, cells(row.twoPasses), cells(row.standIn));
}

/// The results of one path in one group.
class Tally
{
public:
    void add(const Result &result)
    {
        if (result.ending == Ending::fitsAlready) {
            return;
        }
        ++m_pairs;
        m_attempts += result.attempts;
        if (result.ending == Ending::met) {
            m_fills.append(result.fill);
        }
    }

    QString line(const QString &title, const QString &path)
    {
        std::ranges::sort(m_fills);
        return u"| %1 | %2 | %3 of %4 | %5 | %6 | %7 |\n"_s.arg(
            title, path, QString::number(m_fills.size()), QString::number(m_pairs), fillAt(0.5),
            fillAt(0.1), m_pairs > 0 ? Text::fixed(double(m_attempts) / m_pairs, 2) : u"–"_s);
    }

private:
    // The fill that this share of the met pairs stays below, between neighbours in proportion.
    QString fillAt(double share) const
    {
        if (m_fills.isEmpty()) {
            return u"–"_s;
        }
        const double place = share * static_cast<double>(m_fills.size() - 1);
        const auto below = static_cast<qsizetype>(std::floor(place));
        const auto above = std::min(below + 1, m_fills.size() - 1);
        const double rest = place - static_cast<double>(below);
        return Text::fixed(m_fills.at(below) * (1 - rest) + m_fills.at(above) * rest, 3);
    }

    int m_pairs = 0;
    int m_attempts = 0;
    QList<double> m_fills;
};

QString summaryLine(const QList<Row> &rows, const GroupTitle &title, const QString &path,
                    std::optional<Result> Row::*result)
{
    Tally tally;
    for (const Row &row : rows) {
        if (row.*result && belongs(row.pair, title.group)) {
            tally.add(*(row.*result));
        }
    }
    return tally.line(title.title, path);
}

} // namespace

QString PromiseReport::table(const QList<Row> &rows)
{
    QString text = u"| clip | s | MB | warned | two passes | fill | attempts "
                   "| stand-in | fill | attempts |\n"
                   "|---|--:|--:|---|---|--:|--:|---|--:|--:|\n"_s;
    for (const Row &row : rows) {
        text += tableLine(row);
    }
    return text;
}

QString PromiseReport::summary(const QList<Row> &rows)
{
    QString text = u"| pairs | path | met | median fill | p10 fill | attempts |\n"
                   "|---|---|--:|--:|--:|--:|\n"_s;
    for (const GroupTitle &title : groupTitles) {
        text += summaryLine(rows, title, u"two passes"_s, &Row::twoPasses);
        text += summaryLine(rows, title, u"stand-in"_s, &Row::standIn);
    }
    return text;
}
