// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Platform/Bus/DBusSleepInhibitor.h"

#include "Platform/FakeBus.h"
#include "Platform/FakeBusServices.h"
#include "Platform/MessageListener.h"
#include "support/FakeTool.h"

#include <QProcess>

#include <gtest/gtest.h>

#include <chrono>
#include <memory>
#include <optional>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

const QString reason = u"Exporting a video"_s;

QStringList loginCall(const QString &why)
{
    return {u"sleep"_s, u"Morvix"_s, why, u"block"_s};
}

class SleepInhibitorTest : public ::testing::Test
{
protected:
    // A service on a bus that runs from then on.
    FakeBusLogin &login(FakeAnswer answer)
    {
        m_systemBus.start();
        return m_login.emplace(m_systemBus.connection(), answer);
    }

    FakeBusPortal &portal(FakeAnswer answer)
    {
        m_sessionBus.start();
        return m_portal.emplace(m_sessionBus.connection(), answer);
    }

    // Limits beyond what a test waits for; one that needs a limit to pass sets its own.
    InhibitorBuses buses() const
    {
        return {m_systemBus.address(), m_sessionBus.address(), 60s, 60s};
    }

    FakeBus m_systemBus;
    FakeBus m_sessionBus;
    TempFolder m_folder;

private:
    std::optional<FakeBusLogin> m_login;
    std::optional<FakeBusPortal> m_portal;
};

} // namespace

TEST_F(SleepInhibitorTest, the_login_manager_is_asked_to_block_sleep_for_the_reason_given)
{
    const FakeBusLogin &manager = login(FakeAnswer::grant);
    DBusSleepInhibitor inhibitor(buses());

    inhibitor.hold(reason);

    ASSERT_TRUE(happens([&] { return manager.calls().size() == 1; }));
    EXPECT_EQ(manager.calls().first(), loginCall(reason));
}

TEST_F(SleepInhibitorTest, the_login_managers_lock_stays_open_until_it_is_released)
{
    const FakeBusLogin &manager = login(FakeAnswer::grant);
    DBusSleepInhibitor inhibitor(buses());
    DBusSleepInhibitor later(buses());

    inhibitor.hold(reason);
    ASSERT_TRUE(happens([&] { return manager.received() == 1; }));
    later.hold(u"another"_s);
    ASSERT_TRUE(happens([&] { return manager.received() == 2; }));
    EXPECT_EQ(manager.heldLocks(), 2);
    inhibitor.release();

    EXPECT_TRUE(happens([&] { return manager.heldLocks() == 1; }));
}

TEST_F(SleepInhibitorTest, a_second_hold_asks_nobody)
{
    const FakeBusLogin &manager = login(FakeAnswer::grant);
    DBusSleepInhibitor inhibitor(buses());
    DBusSleepInhibitor other(buses());

    inhibitor.hold(reason);
    inhibitor.hold(u"while it is asked for"_s);
    ASSERT_TRUE(happens([&] { return manager.received() == 1; }));
    inhibitor.hold(u"while it is held"_s);
    other.hold(u"the end"_s);

    const QList<QStringList> expected{loginCall(reason), loginCall(u"the end"_s)};
    ASSERT_TRUE(happens([&] { return manager.calls().contains(expected.last()); }));
    EXPECT_EQ(manager.calls(), expected);
}

TEST_F(SleepInhibitorTest, a_hold_after_a_release_asks_anew)
{
    const FakeBusLogin &manager = login(FakeAnswer::grant);
    DBusSleepInhibitor inhibitor(buses());
    inhibitor.hold(reason);
    ASSERT_TRUE(happens([&] { return manager.received() == 1; }));
    inhibitor.release();
    ASSERT_TRUE(happens([&] { return manager.heldLocks() == 0; }));

    inhibitor.hold(u"the next film"_s);

    ASSERT_TRUE(happens([&] { return manager.heldLocks() == 1; }));
    EXPECT_EQ(manager.calls().last(), loginCall(u"the next film"_s));
}

TEST_F(SleepInhibitorTest, the_end_of_the_inhibitor_gives_the_lock_back)
{
    const FakeBusLogin &manager = login(FakeAnswer::grant);
    auto inhibitor = std::make_unique<DBusSleepInhibitor>(buses());
    inhibitor->hold(reason);
    ASSERT_TRUE(happens([&] { return manager.received() == 1; }));

    inhibitor.reset();

    EXPECT_TRUE(happens([&] { return manager.heldLocks() == 0; }));
}

TEST_F(SleepInhibitorTest, a_child_that_outlives_the_hold_has_no_share_in_it)
{
    const FakeBusLogin &manager = login(FakeAnswer::grant);
    DBusSleepInhibitor inhibitor(buses());
    inhibitor.hold(reason);
    ASSERT_TRUE(happens([&] { return manager.received() == 1; }));
    QProcess child;
    child.start(u"cat"_s, {});
    ASSERT_TRUE(child.waitForStarted());

    inhibitor.release();

    EXPECT_TRUE(happens([&] { return manager.heldLocks() == 0; }));
    EXPECT_EQ(child.state(), QProcess::Running);
    child.closeWriteChannel();
    child.waitForFinished();
}

TEST_F(SleepInhibitorTest, a_release_while_the_login_manager_is_asked_lets_the_late_lock_go)
{
    FakeBusLogin &manager = login(FakeAnswer::keepBack);
    DBusSleepInhibitor inhibitor(buses());
    inhibitor.hold(reason);
    ASSERT_TRUE(happens([&] { return manager.calls().size() == 1; }));

    inhibitor.release();
    manager.grantNow();

    EXPECT_EQ(manager.heldLocks(), 1);
    EXPECT_TRUE(happens([&] { return manager.heldLocks() == 0; }));
}

TEST_F(SleepInhibitorTest, a_hold_anew_is_not_taken_for_the_one_released_before_its_answer)
{
    FakeBusLogin &manager = login(FakeAnswer::keepBack);
    DBusSleepInhibitor inhibitor(buses());
    inhibitor.hold(reason);
    ASSERT_TRUE(happens([&] { return manager.calls().size() == 1; }));
    inhibitor.release();
    inhibitor.hold(reason);
    ASSERT_TRUE(happens([&] { return manager.calls().size() == 2; }));

    manager.grantNow();

    EXPECT_EQ(manager.heldLocks(), 2);
    EXPECT_TRUE(happens([&] { return manager.heldLocks() == 1; }));
}

TEST_F(SleepInhibitorTest, the_portal_is_asked_to_prevent_suspending_when_the_login_manager_refuses)
{
    login(FakeAnswer::refuse);
    const FakeBusPortal &desktop = portal(FakeAnswer::grant);
    DBusSleepInhibitor inhibitor(buses());

    inhibitor.hold(reason);

    ASSERT_TRUE(happens([&] { return desktop.calls().size() == 1; }));
    const FakePortalCall call = desktop.calls().first();
    EXPECT_EQ(call.window, QString());
    EXPECT_EQ(call.flags, 4U);
    EXPECT_EQ(call.options, (QVariantMap{{u"reason"_s, reason}}));
}

TEST_F(SleepInhibitorTest, a_release_closes_the_portals_request_and_leaves_its_bus)
{
    const FakeBusPortal &desktop = portal(FakeAnswer::grant);
    DBusSleepInhibitor inhibitor(buses());
    inhibitor.hold(reason);
    ASSERT_TRUE(happens([&] { return desktop.received() == 1; }));

    inhibitor.release();

    EXPECT_TRUE(happens([&] { return desktop.openRequests().isEmpty(); }));
    EXPECT_TRUE(happens([&] { return desktop.hasLostCaller(); }));
}

TEST_F(SleepInhibitorTest, the_end_of_the_inhibitor_closes_the_portals_request)
{
    const FakeBusPortal &desktop = portal(FakeAnswer::grant);
    auto inhibitor = std::make_unique<DBusSleepInhibitor>(buses());
    inhibitor->hold(reason);
    ASSERT_TRUE(happens([&] { return desktop.received() == 1; }));

    inhibitor.reset();

    EXPECT_TRUE(happens([&] { return desktop.openRequests().isEmpty(); }));
}

TEST_F(SleepInhibitorTest, a_release_while_the_portal_is_asked_closes_the_late_request)
{
    FakeBusPortal &desktop = portal(FakeAnswer::keepBack);
    DBusSleepInhibitor inhibitor(buses());
    inhibitor.hold(reason);
    ASSERT_TRUE(happens([&] { return desktop.calls().size() == 1; }));

    inhibitor.release();
    desktop.grantNow();

    EXPECT_EQ(desktop.openRequests().size(), 1);
    EXPECT_TRUE(happens([&] { return desktop.openRequests().isEmpty(); }));
    EXPECT_TRUE(happens([&] { return desktop.hasLostCaller(); }));
}

TEST_F(SleepInhibitorTest,
       the_end_of_the_inhibitor_while_the_portal_is_asked_closes_the_late_request)
{
    FakeBusPortal &desktop = portal(FakeAnswer::keepBack);
    auto inhibitor = std::make_unique<DBusSleepInhibitor>(buses());
    inhibitor->hold(reason);
    ASSERT_TRUE(happens([&] { return desktop.calls().size() == 1; }));

    inhibitor.reset();
    desktop.grantNow();

    EXPECT_TRUE(happens([&] { return desktop.openRequests().isEmpty(); }));
}

TEST_F(SleepInhibitorTest, a_portal_that_never_answers_loses_its_caller)
{
    const FakeBusPortal &desktop = portal(FakeAnswer::keepBack);
    InhibitorBuses impatient = buses();
    impatient.portalLimit = 50ms;
    DBusSleepInhibitor inhibitor(impatient);

    inhibitor.hold(reason);

    EXPECT_TRUE(happens([&] { return desktop.hasLostCaller(); }));
    EXPECT_EQ(desktop.calls().size(), 1);
}

TEST_F(SleepInhibitorTest, the_portal_is_asked_when_the_login_manager_never_answers)
{
    FakeBusLogin &manager = login(FakeAnswer::keepBack);
    const FakeBusPortal &desktop = portal(FakeAnswer::grant);
    InhibitorBuses impatient = buses();
    impatient.answerLimit = 500ms;
    DBusSleepInhibitor inhibitor(impatient);
    inhibitor.hold(reason);
    ASSERT_TRUE(happens([&] { return desktop.received() == 1; }));

    manager.grantNow();

    EXPECT_TRUE(happens([&] { return manager.heldLocks() == 0; }));
    EXPECT_EQ(desktop.openRequests().size(), 1);
}

TEST_F(SleepInhibitorTest, a_bus_that_hangs_holds_nobody_up)
{
    m_systemBus.start();
    m_systemBus.freeze();
    const FakeBusPortal &desktop = portal(FakeAnswer::grant);
    InhibitorBuses impatient = buses();
    impatient.answerLimit = 500ms;
    DBusSleepInhibitor inhibitor(impatient);

    inhibitor.hold(reason);

    EXPECT_TRUE(happens([&] { return desktop.openRequests().size() == 1; }));
}

TEST_F(SleepInhibitorTest, a_login_manager_that_does_not_run_is_not_started)
{
    const FakeTool manager(m_folder, "exit 1\n", u"login-manager"_s);
    m_systemBus.offer(u"org.freedesktop.login1"_s, manager.path());
    m_systemBus.start();
    const FakeBusPortal &desktop = portal(FakeAnswer::grant);
    DBusSleepInhibitor inhibitor(buses());

    inhibitor.hold(reason);

    EXPECT_TRUE(happens([&] { return desktop.openRequests().size() == 1; }));
    EXPECT_EQ(manager.runs(), 0);
}

TEST_F(SleepInhibitorTest, a_portal_that_does_not_run_is_started)
{
    const FakeTool desktop(m_folder, "exit 1\n", u"portal"_s);
    m_sessionBus.offer(u"org.freedesktop.portal.Desktop"_s, desktop.path());
    m_sessionBus.start();
    DBusSleepInhibitor inhibitor(buses());

    inhibitor.hold(reason);

    EXPECT_TRUE(happens([&] { return desktop.runs() == 1; }));
}

TEST_F(SleepInhibitorTest, where_everybody_refuses_nothing_is_said_and_the_next_hold_asks_again)
{
    const MessageListener listener;
    const FakeBusLogin &manager = login(FakeAnswer::refuse);
    const FakeBusPortal &desktop = portal(FakeAnswer::refuse);
    DBusSleepInhibitor inhibitor(buses());
    inhibitor.hold(reason);
    ASSERT_TRUE(happens([&] { return desktop.hasLostCaller(); }));

    inhibitor.hold(reason);

    EXPECT_TRUE(happens([&] { return desktop.calls().size() == 2; }));
    EXPECT_EQ(manager.calls().size(), 2);
    inhibitor.release();
    EXPECT_EQ(listener.heard, QStringList());
}

TEST_F(SleepInhibitorTest, without_a_bus_nothing_is_said_and_one_that_comes_later_is_found)
{
    const MessageListener listener;
    DBusSleepInhibitor inhibitor(buses());
    inhibitor.hold(reason);
    inhibitor.release();
    inhibitor.hold(reason);
    EXPECT_EQ(listener.heard, QStringList());

    const FakeBusLogin &manager = login(FakeAnswer::grant);
    inhibitor.hold(reason);

    EXPECT_TRUE(happens([&] { return manager.heldLocks() == 1; }));
}

TEST_F(SleepInhibitorTest, addresses_may_be_lists_and_name_sockets_without_a_file)
{
    const FakeBusLogin &manager = login(FakeAnswer::grant);
    const QString list = u"tcp:host=localhost,port=1;"_s + m_systemBus.abstractAddress();
    DBusSleepInhibitor inhibitor({list, QString()});

    inhibitor.hold(reason);

    EXPECT_TRUE(happens([&] { return manager.heldLocks() == 1; }));
}

TEST_F(SleepInhibitorTest, addresses_that_make_no_sense_are_no_bus)
{
    const FakeBusPortal &desktop = portal(FakeAnswer::grant);
    const QString tooLong = u"unix:path=/"_s + QString(200, u'x');
    const QStringList senseless{QString(),       u"nonsense"_s,    u"unix:"_s,
                                u"unix:path="_s, u"autolaunch:"_s, tooLong};
    for (const QString &address : senseless) {
        DBusSleepInhibitor inhibitor({address, m_sessionBus.address()});
        inhibitor.hold(address);
        EXPECT_TRUE(happens([&] {
            return !desktop.calls().isEmpty() &&
                   desktop.calls().last().options == QVariantMap{{u"reason"_s, address}};
        })) << address.toStdString();
    }
}

TEST_F(SleepInhibitorTest, the_desktops_buses_are_those_that_the_environment_names)
{
    const FakeBusLogin &manager = login(FakeAnswer::grant);
    const ScopedEnvironment system("DBUS_SYSTEM_BUS_ADDRESS", m_systemBus.address().toUtf8());
    const ScopedEnvironment session("DBUS_SESSION_BUS_ADDRESS", "unix:path=/nowhere");
    DBusSleepInhibitor inhibitor;

    inhibitor.hold(reason);

    EXPECT_TRUE(happens([&] { return manager.heldLocks() == 1; }));
    EXPECT_EQ(InhibitorBuses::ofDesktop().sessionAddress, u"unix:path=/nowhere"_s);
}

TEST_F(SleepInhibitorTest, the_desktops_buses_stand_at_their_usual_places_where_none_is_named)
{
    const ScopedEnvironment system("DBUS_SYSTEM_BUS_ADDRESS", "");
    const ScopedEnvironment session("DBUS_SESSION_BUS_ADDRESS", "");
    const ScopedEnvironment runtime("XDG_RUNTIME_DIR", "/run/user/7");
    qunsetenv("DBUS_SYSTEM_BUS_ADDRESS");
    qunsetenv("DBUS_SESSION_BUS_ADDRESS");

    const InhibitorBuses usual = InhibitorBuses::ofDesktop();
    qunsetenv("XDG_RUNTIME_DIR");
    const InhibitorBuses bare = InhibitorBuses::ofDesktop();

    EXPECT_EQ(usual.systemAddress, u"unix:path=/run/dbus/system_bus_socket"_s);
    EXPECT_EQ(usual.sessionAddress, u"unix:path=/run/user/7/bus"_s);
    EXPECT_EQ(bare.sessionAddress, QString());
}
