// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "App/BackgroundPool.h"

#include "support/EventLoop.h"

#include <QList>
#include <QSemaphore>
#include <QThread>

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <memory>
#include <thread>

using namespace std::chrono_literals;

namespace {

/// Tells when results come in.
class Inbox : public QObject
{
    Q_OBJECT

public:
    void take(int result)
    {
        results += result;
        Q_EMIT taken();
    }

    bool waitForCount(qsizetype count)
    {
        return EventLoop::waitFor([&] { return results.size() >= count; }, this, &Inbox::taken);
    }

    QList<int> results;

Q_SIGNALS:
    void taken();
};

class BackgroundPoolTest : public ::testing::Test
{
protected:
    /// Lets through what a failed test left at the gate: the pool waits for it.
    ~BackgroundPoolTest() override { m_gate.release(1000); }

    /// Work of the pool that waits at the gate.
    void runBehindGate(int result)
    {
        m_pool->run(
            [this, result] {
                m_arrived.release();
                m_gate.acquire();
                return result;
            },
            [this](int given) { m_inbox.take(given); });
    }

    Inbox m_inbox;
    QSemaphore m_arrived;
    QSemaphore m_gate;
    std::unique_ptr<BackgroundPool> m_pool =
        std::make_unique<BackgroundPool>(2, QThread::InheritPriority);
};

// Notes the thread on which it is let go.
std::shared_ptr<int> noting(std::atomic<QThread *> &thread)
{
    return {new int(0), [&thread](const int *value) {
                delete value;
                thread = QThread::currentThread();
            }};
}

} // namespace

TEST_F(BackgroundPoolTest, work_runs_elsewhere_and_its_result_comes_to_the_main_thread)
{
    QThread *worker = nullptr;
    QThread *receiver = nullptr;
    m_pool->run(
        [&] {
            worker = QThread::currentThread();
            return 7;
        },
        [&](int result) {
            receiver = QThread::currentThread();
            m_inbox.take(result);
        });

    ASSERT_TRUE(m_inbox.waitForCount(1));

    EXPECT_EQ(m_inbox.results, QList<int>{7});
    EXPECT_EQ(receiver, QThread::currentThread());
    EXPECT_NE(worker, QThread::currentThread());
    EXPECT_NE(worker, nullptr);
}

TEST_F(BackgroundPoolTest, a_result_never_comes_before_the_loop_turns)
{
    m_pool->run([] { return 1; }, [this](int result) { m_inbox.take(result); });
    ASSERT_TRUE(m_pool->finish(10s));

    EXPECT_TRUE(m_inbox.results.isEmpty());
    EXPECT_TRUE(m_inbox.waitForCount(1));
}

TEST_F(BackgroundPoolTest, results_come_in_the_order_in_which_the_work_ends)
{
    runBehindGate(1);
    m_arrived.acquire();
    for (int i = 2; i <= 20; ++i) {
        m_pool->run([i] { return i; }, [this](int result) { m_inbox.take(result); });
    }
    ASSERT_TRUE(m_inbox.waitForCount(19));
    m_gate.release();
    ASSERT_TRUE(m_inbox.waitForCount(20));

    EXPECT_EQ(m_inbox.results.last(), 1);
    EXPECT_TRUE(std::ranges::is_sorted(m_inbox.results.first(19)));
}

TEST_F(BackgroundPoolTest, no_more_work_runs_at_once_than_there_are_threads)
{
    for (int i = 0; i < 6; ++i) {
        runBehindGate(i);
    }
    m_arrived.acquire(2);

    EXPECT_FALSE(m_arrived.tryAcquire(1, 20));

    m_gate.release();
    EXPECT_TRUE(m_arrived.tryAcquire(1, 10'000)) << "the next one comes in when one has ended";
    m_gate.release(5);
    EXPECT_TRUE(m_inbox.waitForCount(6));
}

TEST_F(BackgroundPoolTest, calls_that_are_posted_come_in_order_from_any_thread)
{
    QThread *receiver = nullptr;
    std::thread poster([&] {
        for (int i = 0; i < 100; ++i) {
            m_pool->post([&, i] {
                receiver = QThread::currentThread();
                m_inbox.take(i);
            });
        }
    });
    poster.join();
    m_pool->post([this] { m_inbox.take(100); });
    EXPECT_TRUE(m_inbox.results.isEmpty()) << "nothing comes before the loop turns";

    ASSERT_TRUE(m_inbox.waitForCount(101));

    EXPECT_TRUE(std::ranges::is_sorted(m_inbox.results));
    EXPECT_EQ(receiver, QThread::currentThread());
}

TEST_F(BackgroundPoolTest, what_work_posts_comes_before_its_result)
{
    m_pool->run(
        [this] {
            m_pool->post([this] { m_inbox.take(1); });
            m_pool->post([this] { m_inbox.take(2); });
            return 3;
        },
        [this](int result) { m_inbox.take(result); });

    ASSERT_TRUE(m_inbox.waitForCount(3));

    EXPECT_EQ(m_inbox.results, (QList<int>{1, 2, 3}));
}

TEST_F(BackgroundPoolTest, a_pool_at_rest_has_finished)
{
    EXPECT_TRUE(m_pool->finish(0ms));
    EXPECT_TRUE(m_pool->finish(10s));
}

TEST_F(BackgroundPoolTest, finishing_forgets_the_waiting_work_and_tells_whether_some_is_under_way)
{
    for (int i = 0; i < 6; ++i) {
        runBehindGate(i);
    }
    m_arrived.acquire(2);

    EXPECT_FALSE(m_pool->finish(1ms));
    m_gate.release(6);
    EXPECT_TRUE(m_pool->finish(10s));

    ASSERT_TRUE(m_inbox.waitForCount(2));
    EventLoop::deliverPosted();
    EXPECT_EQ(m_inbox.results.size(), 2) << "what had begun still gives its result";
    EXPECT_FALSE(m_arrived.tryAcquire(1));
}

TEST_F(BackgroundPoolTest, a_pool_that_has_finished_takes_new_work)
{
    ASSERT_TRUE(m_pool->finish(10s));

    m_pool->run([] { return 5; }, [this](int result) { m_inbox.take(result); });

    EXPECT_TRUE(m_inbox.waitForCount(1));
}

TEST_F(BackgroundPoolTest, results_of_a_pool_that_is_gone_are_dropped)
{
    runBehindGate(1);
    m_pool->post([this] { m_inbox.take(2); });
    m_gate.release();
    ASSERT_TRUE(m_pool->finish(10s));

    m_pool.reset();
    EventLoop::deliverPosted();

    EXPECT_TRUE(m_inbox.results.isEmpty());
}

TEST_F(BackgroundPoolTest, a_pool_goes_only_when_its_work_has_ended)
{
    std::atomic<bool> hasEnded = false;
    m_pool->run(
        [&] {
            m_arrived.release();
            m_gate.acquire();
            hasEnded = true;
            return 1;
        },
        [this](int result) { m_inbox.take(result); });
    m_arrived.acquire();
    std::thread opener([this] { m_gate.release(); });

    m_pool.reset();

    EXPECT_TRUE(hasEnded);
    EventLoop::deliverPosted();
    EXPECT_TRUE(m_inbox.results.isEmpty());
    opener.join();
}

TEST_F(BackgroundPoolTest, what_the_receiver_holds_is_let_go_behind_its_call)
{
    std::atomic<QThread *> thread = nullptr;
    m_pool->run([] { return 1; },
                [this, held = noting(thread)](int result) { m_inbox.take(result); });

    ASSERT_TRUE(m_inbox.waitForCount(1));
    ASSERT_TRUE(m_pool->finish(10s));

    EXPECT_NE(thread.load(), nullptr);
}

// The thread that posts a call holds it a little longer: when the main thread is quicker, what the
// call holds must not be let go over there.
TEST_F(BackgroundPoolTest, what_the_receiver_holds_is_let_go_on_the_main_thread)
{
    std::array<std::atomic<QThread *>, 5000> threads{};
    for (std::atomic<QThread *> &thread : threads) {
        m_pool->run([] { return 1; },
                    [this, held = noting(thread)](int result) { m_inbox.take(result); });
    }
    ASSERT_TRUE(m_inbox.waitForCount(5000));
    ASSERT_TRUE(m_pool->finish(10s));

    EXPECT_EQ(std::ranges::count(threads, QThread::currentThread(),
                                 [](const auto &thread) { return thread.load(); }),
              5000);
}

TEST_F(BackgroundPoolTest, what_the_receiver_of_a_dropped_result_holds_is_let_go_too)
{
    std::atomic<QThread *> ofEnded = nullptr;
    std::atomic<QThread *> ofForgotten = nullptr;
    m_pool->run([] { return 1; },
                [this, held = noting(ofEnded)](int result) { m_inbox.take(result); });
    ASSERT_TRUE(m_pool->finish(10s));
    runBehindGate(2);
    runBehindGate(3);
    m_arrived.acquire(2);
    m_pool->run([] { return 4; },
                [this, held = noting(ofForgotten)](int result) { m_inbox.take(result); });
    EXPECT_FALSE(m_pool->finish(0ms));
    EXPECT_EQ(ofForgotten.load(), QThread::currentThread());
    m_gate.release(2);

    m_pool.reset();

    EXPECT_EQ(ofEnded.load(), QThread::currentThread());
}

#include "BackgroundPoolTest.moc"
