// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "App/L10n.h"

#include <QString>
#include <QStringList>

/// The sentences that the headless companion has to itself; all others are those of the window.
namespace BatchTexts {

enum class Sentence {
    noSuchFile,
    noRegularFile,
    /// Takes the system's reason.
    cannotBeRead,
    empty,
    noMediaFile,
    noMediaInFolder,
    /// Takes the number of files.
    tooMany,
    /// Takes the seconds that the result holds and those that it should hold.
    cutOff,
    /// Takes the same.
    clipsLost,
    noFilmInResult,
    incompleteResult,
    diskFull,
    interrupted,
    /// Takes the number asked for and the number of entries.
    noSuchEntry,
    /// Takes the largest number of megabytes. This and the next begin with the field's name and
    /// have no full stop: they refuse the command line too, where all such words are of that form.
    targetOutOfRange,
    speedOutOfRange,
};

QString text(Sentence sentence, AppLanguage language, const QStringList &arguments = {});

} // namespace BatchTexts
