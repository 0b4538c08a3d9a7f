// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

class AppDelegate;
class QMenuBar;

/// The program's menu. Its titles are English in every language of the program.
namespace MainMenu {

/// Fills an empty bar with items that call the delegate.
void build(QMenuBar &bar, AppDelegate &delegate);

} // namespace MainMenu
