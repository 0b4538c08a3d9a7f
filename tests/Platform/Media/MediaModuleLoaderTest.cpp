// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Platform/MediaModuleLoader.h"

#include "Platform/FrameGenerator.h"
#include "Platform/MediaBackend.h"
#include "support/Clips.h"
#include "support/EventLoop.h"
#include "support/TempFolder.h"

#include <QFile>
#include <QImage>
#include <QLibraryInfo>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

const QString moduleFolder = QStringLiteral(MORVIX_MEDIA_FOLDER);

TEST(MediaModuleLoaderTest, the_player_of_the_module_plays_a_film)
{
    const TempFolder folder;
    Clips::make(folder.path(u"a.mp4"_s), {.seconds = 1});
    MediaModuleLoader loader(moduleFolder);
    MediaBackend *backend = loader.backend();
    ASSERT_NE(backend, nullptr) << loader.errorDescription().toStdString();
    const std::unique_ptr<MediaPlayer> player = backend->makePlayer();
    player->setPictureSize({320, 320});
    bool isLoaded = false;
    QObject::connect(player.get(), &MediaPlayer::loaded, player.get(), [&] { isLoaded = true; });

    player->load(folder.url(u"a.mp4"_s));
    EventLoop::waitFor([&] { return isLoaded; }, player.get(), &MediaPlayer::loaded);

    EXPECT_TRUE(isLoaded);
    EXPECT_EQ(player->picture().size(), QSize(320, 180));
    EXPECT_TRUE(loader.errorDescription().isEmpty());
}

TEST(MediaModuleLoaderTest, the_frames_of_the_module_are_those_of_the_film)
{
    const TempFolder folder;
    Clips::make(folder.path(u"a.mp4"_s), {.seconds = 1});
    MediaModuleLoader loader(moduleFolder);
    ASSERT_NE(loader.backend(), nullptr) << loader.errorDescription().toStdString();

    const auto generator =
        loader.backend()->makeFrameGenerator(folder.url(u"a.mp4"_s), QSize(160, 160));

    EXPECT_EQ(generator->frame(0.5, FrameGenerator::Tolerance::zero).size(), QSize(160, 90));
}

TEST(MediaModuleLoaderTest, a_missing_module_is_told)
{
    const TempFolder folder;
    MediaModuleLoader loader(folder.path());

    EXPECT_EQ(loader.backend(), nullptr);
    EXPECT_FALSE(loader.errorDescription().isEmpty());
}

TEST(MediaModuleLoaderTest, a_broken_module_is_told)
{
    const TempFolder folder;
    const QByteArray content = contentOf(moduleFolder + u"/morvix-media.so"_s);
    folder.write(u"morvix-media.so"_s, content.left(20'000));
    MediaModuleLoader loader(folder.path());

    EXPECT_EQ(loader.backend(), nullptr);
    EXPECT_FALSE(loader.errorDescription().isEmpty());
}

TEST(MediaModuleLoaderTest, a_plugin_of_another_kind_is_told)
{
    const TempFolder folder;
    const QString other =
        QLibraryInfo::path(QLibraryInfo::PluginsPath) + u"/imageformats/libqico.so"_s;
    ASSERT_TRUE(QFile::copy(other, folder.path(u"morvix-media.so"_s)));
    MediaModuleLoader loader(folder.path());

    EXPECT_EQ(loader.backend(), nullptr);
    EXPECT_TRUE(loader.errorDescription().contains(u"morvix-media.so"_s));
}

TEST(MediaModuleLoaderTest, it_is_tried_only_once)
{
    const TempFolder folder;
    MediaModuleLoader loader(folder.path());
    EXPECT_EQ(loader.backend(), nullptr);

    folder.write(u"morvix-media.so"_s, contentOf(moduleFolder + u"/morvix-media.so"_s));

    EXPECT_EQ(loader.backend(), nullptr);
}

} // namespace
