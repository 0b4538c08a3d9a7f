// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <QApplication>

#include <gtest/gtest.h>

#include <clocale>
#include <csignal>

// For tests that need a window system; the one of Qt's own shows nothing.
int main(int argc, char *argv[])
{
    qputenv("LC_ALL", "C.UTF-8");
    qputenv("QT_QPA_PLATFORM", "offscreen");
    // Qt would look for the desktop's theme on the user's own bus.
    qputenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=/nowhere");
    std::signal(SIGPIPE, SIG_IGN);
    const QApplication application(argc, argv);
    std::setlocale(LC_NUMERIC, "C");
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
