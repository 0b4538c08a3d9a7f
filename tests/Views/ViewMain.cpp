// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Views/Look/Theme.h"

#include <QApplication>

#include <gtest/gtest.h>

#include <clocale>
#include <csignal>

// For tests of views: off the screen, unless another platform is asked for.
int main(int argc, char *argv[])
{
    qputenv("LC_ALL", "C.UTF-8");
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
    }
    // Qt would look for the desktop's theme on the user's own bus.
    qputenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=/nowhere");
    std::signal(SIGPIPE, SIG_IGN);
    const QApplication application(argc, argv);
    std::setlocale(LC_NUMERIC, "C");
    QApplication::setQuitOnLastWindowClosed(false);
    Look::apply(Look::Scheme::light);
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
