// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "App/ProcessLocale.h"

#include <QByteArray>

#include <clocale>
#include <langinfo.h>

// Qt would switch by itself, but not without a warning on every start.
void ProcessLocale::useUtf8()
{
    std::setlocale(LC_ALL, "");
    if (qstrcmp(nl_langinfo(CODESET), "UTF-8") != 0) {
        qputenv("LC_ALL", "C.UTF-8");
    }
}
