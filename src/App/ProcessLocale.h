// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

/// What a program of ours does about the locale before it makes its application object.
namespace ProcessLocale {

/// Has file names read as UTF-8 whatever the user's locale says, which otherwise stays in force.
void useUtf8();

} // namespace ProcessLocale
