// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Platform/Bus/BusNotifier.h"

#include "Platform/Bus/SessionBus.h"
#include "Platform/FakeBus.h"
#include "Platform/FakeDesktop.h"
#include "Platform/MessageListener.h"

#include <gtest/gtest.h>

#include <optional>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

using Manner = FakeDesktopService::Manner;

class BusNotifierTest : public ::testing::Test
{
protected:
    FakeNotifications &service(Manner manner)
    {
        m_bus.start();
        return m_service.emplace(m_bus.connection(), manner);
    }

    FakeBus m_bus;
    const std::shared_ptr<SessionBus> m_session =
        std::make_shared<SessionBus>(m_bus.address(), 60s);
    BusNotifier m_notifier{m_session, 60s};

private:
    std::optional<FakeNotifications> m_service;
};

} // namespace

TEST_F(BusNotifierTest, a_message_carries_the_programs_name_and_icon_and_no_sound)
{
    const FakeNotifications &desktop = service(Manner::answers);

    m_notifier.post(u"Morvix"_s, u"film.mp4: 1.2 MB"_s);

    ASSERT_TRUE(happens([&] { return desktop.calls().size() == 1; }));
    const FakeNotifications::Call call = desktop.calls().first();
    EXPECT_EQ(call.application, u"Morvix"_s);
    EXPECT_EQ(call.replaces, 0U);
    EXPECT_EQ(call.icon, u"app.morvix.Morvix"_s);
    EXPECT_EQ(call.summary, u"Morvix"_s);
    EXPECT_EQ(call.body, u"film.mp4: 1.2 MB"_s);
    EXPECT_EQ(call.actions, QStringList());
    EXPECT_EQ(call.hints, (QVariantMap{{u"desktop-entry"_s, u"app.morvix.Morvix"_s},
                                       {u"suppress-sound"_s, true}}));
    EXPECT_EQ(call.timeout, -1);
}

TEST_F(BusNotifierTest, what_would_be_markup_in_the_body_is_escaped_and_the_title_is_left_alone)
{
    const FakeNotifications &desktop = service(Manner::answers);

    m_notifier.post(u"a & <b>"_s, u"<b>\"Tom\" & Jerry's</b> &amp; 影片.mp4"_s);

    ASSERT_TRUE(happens([&] { return desktop.calls().size() == 1; }));
    EXPECT_EQ(desktop.calls().first().summary, u"a & <b>"_s);
    EXPECT_EQ(desktop.calls().first().body,
              u"&lt;b&gt;\"Tom\" &amp; Jerry's&lt;/b&gt; &amp;amp; 影片.mp4"_s);
}

TEST_F(BusNotifierTest, a_message_takes_the_place_of_the_one_before_it)
{
    const FakeNotifications &desktop = service(Manner::answers);

    for (const QString &body : {u"one"_s, u"two"_s, u"three"_s}) {
        m_notifier.post(u"Morvix"_s, body);
    }

    ASSERT_TRUE(happens([&] { return desktop.calls().size() == 3; }));
    EXPECT_EQ(desktop.bodies(), (QStringList{u"one"_s, u"two"_s, u"three"_s}));
    EXPECT_EQ(desktop.calls().at(0).replaces, 0U);
    EXPECT_EQ(desktop.calls().at(1).replaces, 41U);
    EXPECT_EQ(desktop.calls().at(2).replaces, 41U);
}

TEST_F(BusNotifierTest, messages_wait_for_the_answer_to_the_first_one)
{
    FakeNotifications &desktop = service(Manner::hangs);
    m_notifier.post(u"Morvix"_s, u"one"_s);
    m_notifier.post(u"Morvix"_s, u"two"_s);
    ASSERT_TRUE(happens([&] { return !desktop.calls().isEmpty(); }));

    m_notifier.post(u"Morvix"_s, u"three"_s);
    EXPECT_EQ(desktop.bodies(), QStringList{u"one"_s});
    desktop.setManner(Manner::answers);
    desktop.answerKept();

    ASSERT_TRUE(happens([&] { return desktop.calls().size() == 3; }));
    EXPECT_EQ(desktop.bodies(), (QStringList{u"one"_s, u"two"_s, u"three"_s}));
    EXPECT_EQ(desktop.calls().at(1).replaces, 41U);
}

TEST_F(BusNotifierTest, a_refusal_is_silent_and_the_next_message_is_tried)
{
    const MessageListener listener;
    FakeNotifications &desktop = service(Manner::refuses);
    m_notifier.post(u"Morvix"_s, u"one"_s);
    m_notifier.post(u"Morvix"_s, u"two"_s);
    ASSERT_TRUE(happens([&] { return desktop.calls().size() == 2; }));

    desktop.setManner(Manner::answers);
    m_notifier.post(u"Morvix"_s, u"three"_s);

    ASSERT_TRUE(happens([&] { return desktop.calls().size() == 3; }));
    EXPECT_EQ(desktop.calls().last().replaces, 0U);
    EXPECT_EQ(listener.heard, QStringList());
}

TEST_F(BusNotifierTest, a_service_that_hangs_keeps_the_next_message_no_longer_than_the_limit)
{
    const FakeNotifications &desktop = service(Manner::hangs);
    BusNotifier impatient(m_session, 50ms);

    impatient.post(u"Morvix"_s, u"one"_s);
    impatient.post(u"Morvix"_s, u"two"_s);

    EXPECT_TRUE(happens([&] { return desktop.calls().size() == 2; }));
}

TEST_F(BusNotifierTest, without_a_bus_nothing_is_said_and_one_that_comes_later_is_told)
{
    const MessageListener listener;
    m_notifier.post(u"Morvix"_s, u"nobody hears"_s);
    EXPECT_EQ(listener.heard, QStringList());

    const FakeNotifications &desktop = service(Manner::answers);
    // What was lost is over once this one, behind it, is answered.
    QObject context;
    bool isOver = false;
    const QDBusMessage ping = QDBusMessage::createMethodCall(
        u"org.freedesktop.Notifications"_s, u"/org/freedesktop/Notifications"_s,
        u"org.freedesktop.DBus.Peer"_s, u"Ping"_s);
    m_session->call(ping, 60s, &context, [&](const QDBusMessage &) { isOver = true; });
    ASSERT_TRUE(happens([&] { return isOver; }));
    m_notifier.post(u"Morvix"_s, u"somebody does"_s);

    ASSERT_TRUE(happens([&] { return !desktop.calls().isEmpty(); }));
    EXPECT_EQ(desktop.bodies(), QStringList{u"somebody does"_s});
}

TEST_F(BusNotifierTest, a_bus_that_hangs_holds_nobody_up)
{
    const MessageListener listener;
    m_bus.start();
    m_bus.freeze();
    const auto session = std::make_shared<SessionBus>(m_bus.address(), 50ms);
    BusNotifier notifier(session, 60s);

    notifier.post(u"Morvix"_s, u"one"_s);

    // Behind the message, so that its answer comes after it.
    QObject context;
    bool isOver = false;
    session->call(QDBusMessage::createMethodCall(u"x.y"_s, u"/"_s, u"x.y"_s, u"Z"_s), 60s, &context,
                  [&](const QDBusMessage &) { isOver = true; });
    EXPECT_TRUE(happens([&] { return isOver; }));
    EXPECT_EQ(listener.heard, QStringList());
}
