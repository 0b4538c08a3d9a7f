// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Engine/QueueFile.h"

#include "Engine/JsonFile.h"
#include "Engine/Text.h"
#include "Models/UserPresetJson.h"

#include <algorithm>

using namespace Qt::StringLiterals;

template <> struct Json::Fields<ExportedJob> {
    static constexpr std::tuple list{
        Json::Field{"path", &ExportedJob::path},
        Json::Field{"spec", &ExportedJob::spec},
    };
};

namespace {

QList<ExportedJob> jobsIn(const QJsonValue &json)
{
    QList<ExportedJob> jobs = Json::decode<QList<ExportedJob>>(json);
    // The file system would take such a path for a shorter one.
    const bool hasNul = std::ranges::any_of(
        jobs, [](const ExportedJob &job) { return job.path.contains(QChar::Null); });
    if (hasNul) {
        throw Json::DecodeError(u"a path without NUL is expected"_s);
    }
    return jobs;
}

} // namespace

QByteArray QueueFile::encode(const QList<ExportedJob> &jobs)
{
    return JsonFile::text(Json::encode(jobs).toArray(), JsonFile::Layout::indented);
}

QList<ExportedJob> QueueFile::decode(const QByteArray &json)
{
    return jobsIn(JsonFile::parsed(json));
}

QList<ExportedJob> QueueFile::read(const QUrl &url)
{
    return jobsIn(JsonFile::read(Text::path(url)));
}

bool QueueFile::write(const QUrl &url, const QList<ExportedJob> &jobs)
{
    return JsonFile::replaceByList(Text::path(url), jobs, JsonFile::Layout::indented);
}
