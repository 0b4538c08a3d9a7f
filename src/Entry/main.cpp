// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "App/FileURL.h"
#include "App/ProcessLocale.h"
#include "Entry/Program.h"
#include "Platform/ApplicationID.h"

#include <QApplication>
#include <QFile>

#include <algorithm>
#include <array>
#include <clocale>
#include <csignal>

namespace {

// Every word is a file: there are no options.
QList<QUrl> filesOf(int argc, char *argv[])
{
    QList<QUrl> files;
    for (int i = 1; i < argc; ++i) {
        files.append(FileURL::ofArgument(QFile::decodeName(argv[i])));
    }
    return files;
}

struct Token {
    const char *variable;
    const char *nameOnBus;
};

constexpr std::array tokens{
    Token{"XDG_ACTIVATION_TOKEN", "activation-token"},
    Token{"DESKTOP_STARTUP_ID", "desktop-startup-id"},
};

// Before Qt, which takes them out of the environment.
QVariantMap platformData()
{
    QVariantMap data;
    for (const Token &token : tokens) {
        const QString value = qEnvironmentVariable(token.variable);
        if (!value.isEmpty()) {
            data.insert(QString::fromLatin1(token.nameOnBus), value);
        }
    }
    return data;
}

} // namespace

int main(int argc, char *argv[])
{
    ProcessLocale::useUtf8();
    std::signal(SIGPIPE, SIG_IGN);
    const LaunchRequest request{filesOf(argc, argv), platformData()};
    // Qt would take options of its own out of the files.
    int nameAlone = std::min(argc, 1);
    const QApplication application(nameAlone, argv);
    // Qt puts the user's locale in force, and numbers in files and on command lines aren't his.
    std::setlocale(LC_NUMERIC, "C");
    QApplication::setDesktopFileName(applicationID);
    Program program(request);
    program.start();
    return QApplication::exec();
}
