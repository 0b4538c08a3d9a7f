// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QList>
#include <QString>
#include <QUrl>

/// The films that the size promise is measured on.
namespace PromiseClips {

/// A film with the limits that it is held to, in decimal megabytes.
struct Clip {
    QString name;
    QUrl url;
    QList<double> limitsMB;
};

/// Makes the films in a folder; one that stands there already is kept. Blocks for half a minute.
/// Throws EngineError.
QList<Clip> make(const QUrl &ffmpeg, const QString &folder);

/// A film of the caller's, held to shares of its own size.
Clip fromFile(const QString &path);

} // namespace PromiseClips
