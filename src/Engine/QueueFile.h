// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "Models/UserPreset.h"

#include <QByteArray>
#include <QList>
#include <QString>
#include <QUrl>

/// One waiting job as it leaves the program: a place and parameters, no state and no destination.
struct ExportedJob {
    /// Absolute.
    QString path;
    PresetSpec spec;

    bool operator==(const ExportedJob &) const = default;
};

/// The file in which the waiting part of a queue travels: a JSON list of jobs in queue order. Any
/// thread.
namespace QueueFile {

/// Indented JSON with sorted keys.
QByteArray encode(const QList<ExportedJob> &jobs);

/// All of the jobs or none: anything that is wrong in one of them refuses the file. Throws
/// Json::DecodeError.
QList<ExportedJob> decode(const QByteArray &json);

/// Throws FileError when the file can't be read, is no regular one or is above
/// `JsonFile::mostBytes`, and Json::DecodeError like decode().
QList<ExportedJob> read(const QUrl &url);

/// Replaces the file in one step. On false, it is as it was; a queue that read() would refuse, for
/// its length say, is not written.
bool write(const QUrl &url, const QList<ExportedJob> &jobs);

} // namespace QueueFile
