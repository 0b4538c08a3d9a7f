// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Platform/SilentServices.h"

#include "support/TempFolder.h"

#include <QFile>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

bool isComplete(const PlatformServices &services)
{
    return services.doneSound && services.notifier && services.applicationState &&
           services.sleepInhibitor && services.desktopServices && services.launcherProgress &&
           services.colorScheme;
}

} // namespace

TEST(SilentServicesTest, none_is_missing)
{
    EXPECT_TRUE(isComplete(makeSilentServices()));
    EXPECT_TRUE(isComplete(makeHeadlessServices()));
}

TEST(SilentServicesTest, there_is_no_trash_and_nothing_is_deleted_instead)
{
    const TempFolder folder;
    const QString film = folder.write(u"film.mp4"_s, "film");
    const PlatformServices services = makeSilentServices();

    EXPECT_FALSE(services.desktopServices->moveToTrash(QUrl::fromLocalFile(film)));

    EXPECT_TRUE(QFile::exists(film));
}

TEST(SilentServicesTest, no_colors_are_preferred_and_the_program_counts_as_looked_at)
{
    const PlatformServices services = makeSilentServices();

    EXPECT_EQ(services.colorScheme->preference(), ColorScheme::Preference::none);
    EXPECT_EQ(services.colorScheme->accentColor(), std::nullopt);
    EXPECT_TRUE(services.applicationState->isActive());
}
