// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Engine/OutputNaming.h"

#include "Engine/Text.h"
#include "Models/BlankTrimming.h"

#include <QDate>
#include <QFileInfo>
#include <QLocale>

using namespace Qt::StringLiterals;

namespace {

QString baseName(const QUrl &source)
{
    return Text::splitExtension(source.adjusted(QUrl::StripTrailingSlash).fileName()).stem;
}

QString today()
{
    return QLocale::system().toString(QDate::currentDate(), QLocale::ShortFormat);
}

} // namespace

QString OutputNaming::renderBase(const QUrl &source, const QString &suffix, const QString &ext,
                                 const std::optional<QString> &nameTemplate)
{
    const QString name = baseName(source);
    QString base = trimmedOfBlanks(nameTemplate.value_or(QString())).toString();
    if (base.isEmpty()) {
        return name + u'-' + suffix;
    }
    base.replace("{name}"_L1, name);
    base.replace("{suffix}"_L1, suffix);
    base.replace("{ext}"_L1, ext);
    base.replace("{date}"_L1, today());
    return base;
}

QUrl OutputNaming::unique(const QUrl &url)
{
    const QString path = Text::path(url);
    if (!QFileInfo::exists(path)) {
        return url;
    }
    const Text::SplitPath parts = Text::splitExtension(path);
    for (int number = 2; number <= 999; ++number) {
        const QString candidate =
            u"%1 %2.%3"_s.arg(parts.stem, QString::number(number), parts.extension);
        if (!QFileInfo::exists(candidate)) {
            return QUrl::fromLocalFile(candidate);
        }
    }
    return QUrl::fromLocalFile(
        u"%1-%2.%3"_s.arg(parts.stem, Text::uuid(QUuid::createUuid()), parts.extension));
}
