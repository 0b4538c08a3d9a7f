// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Views/Shell/DesktopFileDialogs.h"

#include "App/AppModel.h"
#include "App/FileURL.h"

#include <QFileDialog>
#include <QMimeDatabase>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

QStringList typePrefixes(FileDialogs::Kind kind)
{
    switch (kind) {
    case FileDialogs::Kind::audioVisual:
        return {u"video/"_s, u"audio/"_s};
    case FileDialogs::Kind::audio:
        return {u"audio/"_s};
    case FileDialogs::Kind::json:
        return {u"application/json"_s};
    }
    Q_UNREACHABLE();
}

/// The usual ones, for the eye; the names of formats are the same in every language.
QString label(FileDialogs::Kind kind)
{
    switch (kind) {
    case FileDialogs::Kind::audioVisual:
        return u"MP4, MOV, MKV, WebM, MP3…"_s;
    case FileDialogs::Kind::audio:
        return u"M4A, MP3, WAV, FLAC…"_s;
    case FileDialogs::Kind::json:
        return u"JSON"_s;
    }
    Q_UNREACHABLE();
}

/// In capitals too, as cameras write them: the desktop's own dialog may tell them apart.
QStringList withCapitals(const QStringList &patterns)
{
    QStringList both = patterns;
    for (const QString &pattern : patterns) {
        both += pattern.toUpper();
    }
    both.removeDuplicates();
    return both;
}

/// One filter for all types of the kind: a dialog would offer each MIME type by itself.
QString nameFilter(FileDialogs::Kind kind)
{
    const QStringList prefixes = typePrefixes(kind);
    QStringList patterns;
    for (const QMimeType &type : QMimeDatabase().allMimeTypes()) {
        const auto isOfType = [&type](const QString &prefix) {
            return type.name().startsWith(prefix);
        };
        if (std::ranges::any_of(prefixes, isOfType)) {
            patterns += type.globPatterns();
        }
    }
    return label(kind) + u" ("_s + withCapitals(patterns).join(u' ') + u')';
}

} // namespace

void DesktopFileDialogs::openFiles(QWidget *parent, Kind kind, Count count, const Chosen &chosen)
{
    QFileDialog *dialog = makeDialog(parent, chosen);
    dialog->setFileMode(count == Count::any ? QFileDialog::ExistingFiles
                                            : QFileDialog::ExistingFile);
    dialog->setOption(QFileDialog::HideNameFilterDetails);
    dialog->setNameFilter(nameFilter(kind));
    dialog->open();
}

void DesktopFileDialogs::openFolder(QWidget *parent, const Chosen &chosen)
{
    QFileDialog *dialog = makeDialog(parent, chosen);
    dialog->setFileMode(QFileDialog::Directory);
    dialog->setOption(QFileDialog::ShowDirsOnly);
    dialog->open();
}

/// Whoever asked may be gone before the answer comes, and then hears nothing.
QFileDialog *DesktopFileDialogs::makeDialog(QWidget *parent, const Chosen &chosen) const
{
    auto *dialog = new QFileDialog(parent->window(), m_model.t(u"common.browse"_s));
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    QObject::connect(dialog, &QDialog::accepted, parent, [dialog, chosen] {
        const QList<QUrl> urls = FileURL::filesAmong(dialog->selectedUrls());
        if (!urls.isEmpty()) {
            chosen(urls);
        }
    });
    return dialog;
}
