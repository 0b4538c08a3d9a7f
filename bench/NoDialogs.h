// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "Views/FileDialogs.h"

/// Dialogs that nobody ever opens.
class NoDialogs : public FileDialogs
{
public:
    void openFiles(QWidget *, Kind, Count, const Chosen &) override {}
    void openFolder(QWidget *, const Chosen &) override {}
};
