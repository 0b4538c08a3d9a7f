// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Views/Shell/FileTexts.h"

#include "App/Fmt.h"
#include "Engine/Text.h"

#include <QStringList>

using namespace Qt::StringLiterals;

namespace {

QString separator()
{
    return u" · "_s;
}

QStringList pictureSize(const VideoFile &file)
{
    if (!file.width || !file.height) {
        return {};
    }
    return {QString::number(*file.width) + u'×' + QString::number(*file.height)};
}

QStringList videoCodec(const VideoFile &file)
{
    return file.videoCodec ? QStringList(file.videoCodec->toUpper()) : QStringList();
}

QStringList frameRate(const VideoFile &file)
{
    return file.fps ? QStringList(Text::fixed(*file.fps, 0) + u"fps"_s) : QStringList();
}

QStringList audioCodec(const VideoFile &file)
{
    return file.audioStreams.isEmpty() ? QStringList()
                                       : QStringList(file.audioStreams.first().codec.toUpper());
}

} // namespace

QString FileTexts::name(const VideoFile &file)
{
    const QString path = Text::path(file.url);
    return path.mid(path.lastIndexOf(u'/') + 1);
}

QString FileTexts::rowDetails(const VideoFile &file)
{
    return Fmt::time(file.durationSeconds) + separator() + Fmt::bytes(file.fileSizeBytes) +
           detailSuffix(file);
}

QString FileTexts::detailSuffix(const VideoFile &file)
{
    const QStringList items = pictureSize(file) + videoCodec(file);
    return items.isEmpty() ? QString() : separator() + items.join(u' ');
}

QString FileTexts::detailText(const VideoFile &file)
{
    const QStringList items = pictureSize(file) + frameRate(file) + videoCodec(file) +
                              audioCodec(file) + QStringList(Fmt::time(file.durationSeconds));
    return items.join(separator());
}
