// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Engine/ChildGroup.h"

#include "Engine/ChildSpawner.h"
#include "support/Processes.h"
#include "support/TempFolder.h"

#include <gtest/gtest.h>

#include <csignal>
#include <thread>

using namespace Qt::StringLiterals;

namespace {

// Runs until it is ended.
std::shared_ptr<ChildProcess> sleeper()
{
    return ChildSpawner::spawn({u"/bin/sleep"_s, {u"600"_s}});
}

} // namespace

TEST(ChildGroup, all_children_are_ended_together)
{
    ChildGroup group;
    const std::shared_ptr<ChildProcess> first = sleeper();
    const std::shared_ptr<ChildProcess> second = sleeper();
    group.adopt(first);
    group.adopt(second);

    group.terminateAll();

    EXPECT_EQ(first->wait(), SIGTERM);
    EXPECT_EQ(second->wait(), SIGTERM);
}

TEST(ChildGroup, a_child_that_comes_after_the_end_is_ended_at_once)
{
    ChildGroup group;
    group.terminateAll();
    const std::shared_ptr<ChildProcess> late = sleeper();

    group.adopt(late);

    EXPECT_EQ(late->wait(), SIGTERM);
}

TEST(ChildGroup, the_end_is_asked_for_again_of_those_who_did_not_hear_it)
{
    const TempFolder folder;
    // Ends at the second asking only.
    const QString stubborn =
        folder.writeExecutable(u"stubborn"_s, "#!/bin/sh\n"
                                              "asked=0\n"
                                              "trap 'asked=$((asked + 1))' TERM\n"
                                              "touch ready\n"
                                              "while [ $asked -lt 1 ]; do sleep 0.01; done\n"
                                              "touch asked\n"
                                              "while [ $asked -lt 2 ]; do sleep 0.01; done\n"
                                              "exit 7\n");
    ChildGroup group;
    const std::shared_ptr<ChildProcess> child =
        ChildSpawner::spawn({u"/usr/bin/env"_s, {u"-C"_s, folder.path(), stubborn}});
    group.adopt(child);
    ASSERT_TRUE(Processes::eventually([&] { return folder.names().contains(u"ready"_s); }));

    group.terminateAll();
    ASSERT_TRUE(Processes::eventually([&] { return folder.names().contains(u"asked"_s); }));
    group.terminateAll();

    EXPECT_EQ(child->wait(), 7);
}

TEST(ChildGroup, a_child_belongs_to_those_who_run_it)
{
    ChildGroup group;
    std::shared_ptr<ChildProcess> child = sleeper();
    const std::weak_ptr<ChildProcess> watched = child;
    group.adopt(child);

    child.reset();

    EXPECT_TRUE(watched.expired());
    group.terminateAll();
}

TEST(ChildGroup, a_child_that_has_ended_is_no_trouble)
{
    ChildGroup group;
    const std::shared_ptr<ChildProcess> child = ChildSpawner::spawn({u"/bin/true"_s, {}});
    group.adopt(child);
    EXPECT_EQ(child->wait(), 0);

    group.terminateAll();
    group.adopt(child);

    EXPECT_EQ(child->wait(), -1) << "it can be waited for only once";
}

TEST(ChildGroup, none_escapes_that_is_adopted_while_the_end_is_near)
{
    ChildGroup group;
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i) {
        threads.emplace_back([&] {
            // The runner of a question waits for its child: only the group can end it.
            for (int run = 0; run < 5; ++run) {
                EXPECT_NE(ProcessRunner::runSync(QUrl::fromLocalFile(u"/bin/sleep"_s), {u"600"_s},
                                                 [&](const auto &child) { group.adopt(child); })
                              .exitCode,
                          0);
            }
        });
    }

    group.terminateAll();

    for (std::thread &thread : threads) {
        thread.join();
    }
}
