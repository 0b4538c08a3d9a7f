// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "Views/ViewContext.h"

class QWidget;

/// The dialog for films, which the landing page and the list of files both open.
namespace FilmDialog {

/// Asks for any number of films and has the application object take in what is chosen.
void open(const ViewContext &context, QWidget *parent);

} // namespace FilmDialog
