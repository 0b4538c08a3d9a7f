// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "App/ServicesHandler.h"
#include "support/Command.h"
#include "support/TempFolder.h"

#include <QIcon>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

QString packaged(const QString &name)
{
    return QStringLiteral(MORVIX_PACKAGING) + u'/' + name;
}

QString desktopFile()
{
    return QString::fromUtf8(contentOf(packaged(u"app.morvix.Morvix.desktop"_s)));
}

} // namespace

TEST(DesktopFiles, the_desktop_knows_the_services_by_their_names_in_both_languages)
{
    const QString text = desktopFile();
    QString names;
    for (const ServicesHandler::Message &message : ServicesHandler::messages()) {
        names += message.name + u';';
        const QString section =
            text.section(u"[Desktop Action "_s + message.name + u']', 1).section(u'[', 0, 1);
        EXPECT_TRUE(section.contains(u"\nName="_s)) << message.name.data();
        EXPECT_TRUE(section.contains(u"\nName[zh_CN]="_s)) << message.name.data();
    }

    EXPECT_TRUE(text.contains(u"\nActions="_s + names + u'\n'));
}

TEST(DesktopFiles, the_desktop_file_is_valid)
{
    const CommandResult result =
        runCommand(u"desktop-file-validate"_s, {packaged(u"app.morvix.Morvix.desktop"_s)});

    EXPECT_EQ(result.exitCode, 0) << result.out.toStdString() << result.errors.toStdString();
}

TEST(DesktopFiles, the_description_for_software_centres_is_valid)
{
    const CommandResult result =
        runCommand(u"appstreamcli"_s,
                   {u"validate"_s, u"--no-net"_s, packaged(u"app.morvix.Morvix.metainfo.xml"_s)});

    EXPECT_EQ(result.exitCode, 0) << result.out.toStdString() << result.errors.toStdString();
}

TEST(DesktopFiles, the_icon_can_be_drawn)
{
    const QIcon icon(packaged(u"app.morvix.Morvix.svg"_s));

    EXPECT_EQ(icon.pixmap(64).toImage().pixelColor(32, 8).alpha(), 255);
    EXPECT_EQ(icon.pixmap(64).toImage().pixelColor(0, 0).alpha(), 0);
}
