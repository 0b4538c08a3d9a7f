// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QList>
#include <QObject>
#include <QString>
#include <QUrl>

#include <functional>

class QWidget;

/// Asks the person for files or a folder. Never blocks; a cancelled dialog answers nothing.
class FileDialogs
{
public:
    virtual ~FileDialogs() = default;

    enum class Kind { audioVisual, audio, json };
    enum class Count { one, any };
    /// Takes what was chosen, never an empty list.
    using Chosen = std::function<void(const QList<QUrl> &urls)>;

    /// Existing files of a kind.
    virtual void openFiles(QWidget *parent, Kind kind, Count count, const Chosen &chosen) = 0;
    /// One folder, its URL ending in a slash.
    virtual void openFolder(QWidget *parent, const Chosen &chosen) = 0;
};
