// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Batch/InputCheck.h"

#include "Batch/BatchTexts.h"
#include "Engine/FolderExpander.h"

#include <QFile>
#include <QFileInfo>

using namespace Qt::StringLiterals;
using BatchTexts::Sentence;

std::optional<InputCheck::Problem> InputCheck::problem(const QUrl &url, AppLanguage language)
{
    const auto sentence = [language](Sentence which, const QStringList &arguments = {}) {
        return Problem{BatchTexts::text(which, language, arguments), which == Sentence::noSuchFile};
    };
    const QFileInfo info(url.toLocalFile());
    if (!info.exists()) {
        return sentence(Sentence::noSuchFile);
    }
    if (info.isDir()) {
        return FolderExpander::expand({url}).isEmpty()
                   ? std::optional(sentence(Sentence::noMediaInFolder))
                   : std::nullopt;
    }
    // Opening a pipe would wait for its writer.
    if (!info.isFile()) {
        return sentence(Sentence::noRegularFile);
    }
    QFile input(info.filePath());
    if (!input.open(QIODevice::ReadOnly)) {
        return sentence(Sentence::cannotBeRead, {input.errorString()});
    }
    if (info.size() == 0) {
        return sentence(Sentence::empty);
    }
    if (FolderExpander::expand({url}).isEmpty()) {
        return sentence(Sentence::noMediaFile);
    }
    return std::nullopt;
}
