// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Views/Look/Theme.h"

#include <QApplication>

#include <gtest/gtest.h>

#include <csignal>

int main(int argc, char *argv[])
{
    qputenv("LC_ALL", "C.UTF-8");
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
    }
    std::signal(SIGPIPE, SIG_IGN);
    const QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    Look::apply(Look::Scheme::light);
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
