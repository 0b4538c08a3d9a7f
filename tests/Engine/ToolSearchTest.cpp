// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Engine/ToolSearch.h"

#include "support/FakeTool.h"

#include <gtest/gtest.h>

#include <future>

using namespace Qt::StringLiterals;

namespace {

class ToolSearchTest : public ::testing::Test
{
protected:
    ToolSearchTest() { m_folder.writeExecutable(u"ffprobe"_s, "#!/bin/sh\n"); }

    FFmpegLocator locator() const { return FFmpegLocator({m_folder.url(QString())}); }

    const TempFolder m_folder;
};

} // namespace

TEST_F(ToolSearchTest, gives_the_tools_with_what_they_offer)
{
    const FakeTool ffmpeg(m_folder, "echo ' V....D libx264 x'\n");
    ToolSearch search(locator());

    const FFmpegToolset found{ffmpeg.url(), m_folder.url(u"ffprobe"_s), {u"libx264"_s}};

    EXPECT_EQ(search.result(), found);
}

TEST_F(ToolSearchTest, asks_ffmpeg_only_when_somebody_wants_to_know)
{
    const FakeTool ffmpeg(m_folder, "echo ' V....D libx264 x'\n");

    const ToolSearch search(locator());

    EXPECT_EQ(ffmpeg.runs(), 0);
}

TEST_F(ToolSearchTest, asks_ffmpeg_once_for_any_number_of_threads)
{
    const FakeTool ffmpeg(m_folder, "echo ' V....D libx264 x'\n");
    ToolSearch search(locator());

    const auto want = [&search] { return search.result(); };
    auto one = std::async(std::launch::async, want);
    auto other = std::async(std::launch::async, want);

    EXPECT_TRUE(search.result());
    EXPECT_EQ(one.get(), search.result());
    EXPECT_EQ(other.get(), search.result());
    EXPECT_EQ(ffmpeg.runs(), 1);
}

TEST_F(ToolSearchTest, looks_in_the_path_that_was_in_force_when_it_was_made)
{
    const FakeTool ffmpeg(m_folder, "echo ' V....D libx264 x'\n");
    std::optional<ScopedEnvironment> path;
    path.emplace("PATH", m_folder.path().toUtf8() + ":/usr/bin:/bin");
    ToolSearch search{FFmpegLocator(QList<QUrl>())};
    path.reset();
    path.emplace("PATH", "/nowhere:/usr/bin:/bin");

    ASSERT_TRUE(search.result());
    EXPECT_EQ(search.result()->ffmpegURL, ffmpeg.url());
}

TEST_F(ToolSearchTest, an_ffmpeg_that_is_ended_before_it_has_told_counts_as_none)
{
    const FakeTool ffmpeg(m_folder, "exec sleep 600\n");
    ToolSearch search(locator(),
                      [](const std::shared_ptr<ChildProcess> &child) { child->terminate(); });

    EXPECT_FALSE(search.result());
}
