// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Engine/ProcessRunner.h"

#include <cstdio>
#include <exception>

// A program that runs one child, tells its number and waits for it: for tests of what becomes of
// the child when the program is killed.
int main(int argc, char *argv[])
try {
    QStringList args;
    for (int i = 2; i < argc; ++i) {
        args += QString::fromLocal8Bit(argv[i]);
    }
    ProcessRunner::runAsync(QUrl::fromLocalFile(QString::fromLocal8Bit(argv[1])), args,
                            [](const std::shared_ptr<ChildProcess> &child) {
                                std::printf("%d\n", child->pid());
                                std::fflush(stdout);
                            },
                            {});
    return 0;
} catch (const std::exception &error) {
    std::fprintf(stderr, "%s\n", error.what());
    return 1;
}
