// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Platform/Bus/SessionBus.h"

#include "Platform/FakeBus.h"
#include "Platform/FakeDesktop.h"
#include "Platform/MessageListener.h"

#include <gtest/gtest.h>

#include <optional>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

constexpr auto patient = 60s;

QDBusMessage showNothing()
{
    QDBusMessage message = QDBusMessage::createMethodCall(
        u"org.freedesktop.FileManager1"_s, u"/org/freedesktop/FileManager1"_s,
        u"org.freedesktop.FileManager1"_s, u"ShowItems"_s);
    message << QStringList() << QString();
    return message;
}

class SessionBusTest : public ::testing::Test
{
protected:
    // Asks, and gives the answers as they come.
    void ask(SessionBus &bus, std::chrono::milliseconds limit = patient)
    {
        bus.call(showNothing(), limit, &m_context,
                 [this](const QDBusMessage &answer) { m_answers += answer.errorName(); });
    }

    FakeBus m_bus;
    QObject m_context;
    QStringList m_answers;
};

} // namespace

TEST_F(SessionBusTest, calls_made_while_the_bus_is_being_reached_are_all_answered_in_order)
{
    m_bus.start();
    const FakeFileManager manager(m_bus.connection());
    SessionBus session(m_bus.address(), patient);

    ask(session);
    ask(session);
    EXPECT_EQ(m_answers, QStringList());

    EXPECT_TRUE(happens([this] { return m_answers.size() == 2; }));
    EXPECT_EQ(m_answers, (QStringList{QString(), QString()}));
    EXPECT_EQ(manager.calls().size(), 2);
}

TEST_F(SessionBusTest, without_a_bus_the_answer_is_an_error_that_comes_later_and_nothing_is_said)
{
    const MessageListener listener;
    SessionBus session(QString(), patient);

    ask(session);
    session.send(QDBusMessage::createSignal(u"/x"_s, u"x.y"_s, u"Z"_s));
    EXPECT_EQ(m_answers, QStringList());

    EXPECT_TRUE(happens([this] { return m_answers.size() == 1; }));
    EXPECT_EQ(m_answers.first(), u"org.freedesktop.DBus.Error.Disconnected"_s);
    EXPECT_EQ(listener.heard, QStringList());
}

TEST_F(SessionBusTest, a_bus_that_hangs_is_given_up_after_the_limit)
{
    m_bus.start();
    m_bus.freeze();
    SessionBus session(m_bus.address(), 50ms);

    ask(session);

    EXPECT_TRUE(happens([this] { return m_answers.size() == 1; }));
    EXPECT_EQ(m_answers.first(), u"org.freedesktop.DBus.Error.Disconnected"_s);
}

TEST_F(SessionBusTest, a_service_that_hangs_is_given_up_after_the_limit)
{
    m_bus.start();
    const FakeFileManager manager(m_bus.connection(), FakeDesktopService::Manner::hangs);
    SessionBus session(m_bus.address(), patient);

    ask(session, 50ms);

    EXPECT_TRUE(happens([this] { return m_answers.size() == 1; }));
    EXPECT_EQ(m_answers.first(), u"org.freedesktop.DBus.Error.NoReply"_s);
}

TEST_F(SessionBusTest, who_is_gone_is_not_answered)
{
    m_bus.start();
    const FakeFileManager manager(m_bus.connection());
    SessionBus session(m_bus.address(), patient);
    auto gone = std::make_unique<QObject>();
    session.call(showNothing(), patient, gone.get(),
                 [this](const QDBusMessage &) { m_answers += u"gone"_s; });

    gone.reset();
    ask(session);

    EXPECT_TRUE(happens([this] { return !m_answers.isEmpty(); }));
    EXPECT_EQ(m_answers, QStringList{QString()});
    EXPECT_EQ(manager.calls().size(), 1);
}

TEST_F(SessionBusTest, a_bus_that_comes_later_is_found)
{
    SessionBus session(m_bus.address(), patient);
    ask(session);
    ASSERT_TRUE(happens([this] { return m_answers.size() == 1; }));

    m_bus.start();
    const FakeFileManager manager(m_bus.connection());
    ask(session);

    EXPECT_TRUE(happens([this] { return m_answers.size() == 2; }));
    EXPECT_EQ(m_answers.last(), QString());
}

TEST_F(SessionBusTest, a_bus_that_went_is_sought_again)
{
    m_bus.start();
    std::optional<FakeFileManager> manager(m_bus.connection());
    SessionBus session(m_bus.address(), patient);
    ask(session);
    ASSERT_TRUE(happens([this] { return m_answers.size() == 1; }));
    manager.reset();
    m_bus.stop();

    m_bus.start();
    manager.emplace(m_bus.connection());
    qsizetype asked = 1;
    // The end of the old one may take its time to be seen.
    EXPECT_TRUE(happens([&] {
        if (asked == m_answers.size() && manager->calls().isEmpty()) {
            ask(session);
            ++asked;
        }
        return m_answers.size() == asked && m_answers.last().isEmpty();
    }));
    EXPECT_EQ(manager->calls().size(), 1);
}
