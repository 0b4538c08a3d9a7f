// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "support/TempFolder.h"

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <QUrl>

/// A small shell script in the place of ffmpeg, for what the real one can't be made to do: exact
/// sizes, hanging, dying. It notes each call's arguments.
class FakeTool
{
public:
    /// `body` is POSIX shell; "$out" is the last argument and "$run" the number of the call,
    /// counted from 1.
    FakeTool(const TempFolder &folder, const QByteArray &body,
             const QString &name = QStringLiteral("ffmpeg"));

    QUrl url() const { return QUrl::fromLocalFile(m_path); }
    QString path() const { return m_path; }
    /// How often it was called.
    int runs() const;
    /// The arguments of one call, counted from 1.
    QStringList arguments(int run) const;

private:
    QString m_path;
    QString m_notes;
};
