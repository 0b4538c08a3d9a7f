// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <QApplication>
#include <QWidget>

// What a window costs in itself: one of the program's size with nothing in it.
int main(int argc, char *argv[])
{
    const QApplication application(argc, argv);
    QWidget window;
    window.resize(1040, 700);
    window.show();
    return QApplication::exec();
}
