// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Views/Shell/FilmDialog.h"

#include "Views/FileDialogs.h"

void FilmDialog::open(const ViewContext &context, QWidget *parent)
{
    context.dialogs.openFiles(
        parent, FileDialogs::Kind::audioVisual, FileDialogs::Count::any,
        [&model = context.model](const QList<QUrl> &urls) { model.addURLs(urls); });
}
