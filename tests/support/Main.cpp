// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <QCoreApplication>

#include <gtest/gtest.h>

#include <csignal>

int main(int argc, char *argv[])
{
    qputenv("LC_ALL", "C.UTF-8");
    std::signal(SIGPIPE, SIG_IGN);
    const QCoreApplication application(argc, argv);
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
