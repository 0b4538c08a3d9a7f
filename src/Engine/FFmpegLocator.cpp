// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Engine/FFmpegLocator.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

bool isExecutableFile(const QString &path)
{
    const QFileInfo info(path);
    return info.isFile() && info.isExecutable();
}

QStringList pathDirectories()
{
    return qEnvironmentVariable("PATH").split(u':', Qt::SkipEmptyParts);
}

bool isEncoderName(QStringView text)
{
    return std::ranges::all_of(
        text, [](QChar c) { return c.isLetterOrNumber() || c == u'_' || c == u'-'; });
}

// A row reads " V....D libx264   text"; subtitle encoders, headings and the legend are no names.
std::optional<QString> encoderName(QStringView line)
{
    while (line.startsWith(u' ')) {
        line = line.sliced(1);
    }
    if (!line.startsWith(u'V') && !line.startsWith(u'A')) {
        return std::nullopt;
    }
    const QList<QStringView> pieces = line.split(u' ', Qt::SkipEmptyParts);
    if (pieces.size() < 2 || !isEncoderName(pieces.at(1))) {
        return std::nullopt;
    }
    return pieces.at(1).toString();
}

} // namespace

FFmpegLocator &FFmpegLocator::shared()
{
    static FFmpegLocator locator;
    return locator;
}

QString FFmpegLocator::bundledDirectory()
{
    return QDir::cleanPath(QCoreApplication::applicationDirPath() + u"/../libexec/morvix"_s);
}

FFmpegLocator::FFmpegLocator(QList<QUrl> candidates, QString bundled)
    : candidateDirs(std::move(candidates))
    , m_bundled(std::move(bundled))
{
}

QList<QUrl> FFmpegLocator::defaultCandidateDirs()
{
    return {QUrl::fromLocalFile(u"/opt/homebrew/bin"_s), QUrl::fromLocalFile(u"/usr/local/bin"_s)};
}

std::optional<FFmpegLocator::Binaries> FFmpegLocator::findBinaries() const
{
    QStringList places{m_bundled};
    for (const QUrl &directory : candidateDirs) {
        places += directory.toLocalFile();
    }
    places += pathDirectories();

    for (const QString &place : places) {
        const QDir directory(place);
        const QString ffmpeg = directory.absoluteFilePath(u"ffmpeg"_s);
        const QString ffprobe = directory.absoluteFilePath(u"ffprobe"_s);
        if (isExecutableFile(ffmpeg) && isExecutableFile(ffprobe)) {
            return Binaries{QUrl::fromLocalFile(ffmpeg), QUrl::fromLocalFile(ffprobe)};
        }
    }
    return std::nullopt;
}

QSet<QString> FFmpegLocator::queryEncoders(const QUrl &ffmpegURL,
                                           const ProcessRunner::OnSpawn &onSpawn)
{
    const ProcessResult result =
        ProcessRunner::runSync(ffmpegURL, {u"-hide_banner"_s, u"-encoders"_s}, onSpawn);
    if (result.exitCode != 0) {
        return {};
    }
    QSet<QString> names;
    for (const QStringView line :
         QStringView(result.standardOutput).split(u'\n', Qt::SkipEmptyParts)) {
        if (const std::optional<QString> name = encoderName(line)) {
            names.insert(*name);
        }
    }
    return names;
}

std::optional<FFmpegToolset> FFmpegLocator::discover() const
{
    return discover(findBinaries());
}

std::optional<FFmpegToolset> FFmpegLocator::discover(const std::optional<Binaries> &binaries,
                                                     const ProcessRunner::OnSpawn &onSpawn)
{
    if (!binaries) {
        return std::nullopt;
    }
    // An ffmpeg that can't list its encoders counts as none; the search doesn't go on behind it.
    const QSet<QString> encoders = queryEncoders(binaries->ffmpeg, onSpawn);
    if (encoders.isEmpty()) {
        return std::nullopt;
    }
    return FFmpegToolset{binaries->ffmpeg, binaries->ffprobe, encoders};
}
