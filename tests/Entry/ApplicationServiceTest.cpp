// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Entry/ApplicationService.h"

#include "Platform/FakeBus.h"

#include <QDBusConnectionInterface>
#include <QDBusContext>
#include <QElapsedTimer>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

const QString serviceName = u"app.morvix.Morvix"_s;
const QString objectPath = u"/app/morvix/Morvix"_s;

constexpr ApplicationService::Limits limits{.bus = 300ms, .answer = 300ms};

/// The start that holds the name already, as far as others see it.
class FirstStart : public QObject, protected QDBusContext
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Application")

public:
    enum class Manner { answers, keepsSilent, leaves };

    FirstStart(const QDBusConnection &bus, Manner manner) : m_bus(bus), m_manner(manner)
    {
        EXPECT_TRUE(m_bus.registerObject(objectPath, this, QDBusConnection::ExportAllSlots));
        EXPECT_TRUE(m_bus.registerService(serviceName));
    }
    ~FirstStart() override
    {
        m_bus.unregisterObject(objectPath);
        m_bus.unregisterService(serviceName);
    }

    QStringList calls;
    QVariantMap platformData;

public Q_SLOTS:
    void Activate(const QVariantMap &data)
    {
        calls += u"Activate"_s;
        platformData = data;
        behave();
    }
    void Open(const QStringList &uris, const QVariantMap &)
    {
        calls += u"Open "_s + uris.join(u' ');
        behave();
    }

private:
    void behave()
    {
        if (m_manner == Manner::leaves) {
            m_bus.unregisterService(serviceName);
            sendErrorReply(QDBusError::NoReply, u"it has gone"_s);
        } else if (m_manner == Manner::keepsSilent) {
            setDelayedReply(true);
        }
    }

    QDBusConnection m_bus;
    const Manner m_manner;
};

/// What a start came to, in the order in which it was told.
class Outcomes
{
public:
    explicit Outcomes(const ApplicationService &service)
    {
        note(service, &ApplicationService::launchDue, u"launch"_s);
        note(service, &ApplicationService::handedOver, u"handed over"_s);
        note(service, &ApplicationService::unanswered, u"unanswered"_s);
    }

    const QStringList &words() const { return *m_words; }
    bool haveCome() const { return !m_words->isEmpty(); }

private:
    void note(const ApplicationService &service, void (ApplicationService::*signal)(),
              const QString &word)
    {
        QObject::connect(&service, signal, &service, [words = m_words, word] { *words += word; });
    }

    std::shared_ptr<QStringList> m_words = std::make_shared<QStringList>();
};

/// A start of the program on a bus, and what it comes to.
struct Start {
    explicit Start(const FakeBus &bus, const LaunchRequest &request = {})
        : service(bus.address(), request, limits)
        , outcomes(service)
    {
        service.start();
    }

    ApplicationService service;
    Outcomes outcomes;
};

class SingleInstance : public ::testing::Test
{
protected:
    static LaunchRequest twoFiles()
    {
        return {{QUrl::fromLocalFile(u"/films/a film #1.mp4"_s), QUrl(u"file:///films/two/"_s)},
                {{u"activation-token"_s, u"a token"_s}}};
    }

    bool isNameTaken() const
    {
        return m_bus.connection().interface()->isServiceRegistered(serviceName);
    }

    FakeBus m_bus;
};

} // namespace

TEST_F(SingleInstance, without_a_bus_the_program_runs_alone_at_once)
{
    const Start start(m_bus);

    EXPECT_EQ(start.outcomes.words(), QStringList{u"launch"_s});
}

TEST_F(SingleInstance, a_bus_that_hangs_holds_no_start_up_for_long)
{
    m_bus.start();
    m_bus.freeze();
    QElapsedTimer timer;
    timer.start();

    const Start start(m_bus);

    ASSERT_TRUE(happens([&] { return start.outcomes.haveCome(); }));
    EXPECT_EQ(start.outcomes.words(), QStringList{u"launch"_s});
    EXPECT_LT(timer.elapsed(), 2'000);
}

TEST_F(SingleInstance, the_first_start_takes_the_name_and_may_be_called)
{
    m_bus.start();

    Start start(m_bus);

    ASSERT_TRUE(happens([&] { return start.outcomes.haveCome(); }));
    EXPECT_EQ(start.outcomes.words(), QStringList{u"launch"_s});
    EXPECT_TRUE(isNameTaken());
}

TEST_F(SingleInstance, the_name_goes_with_the_service)
{
    m_bus.start();
    {
        const Start start(m_bus);
        ASSERT_TRUE(happens([&] { return start.outcomes.haveCome(); }));
    }

    EXPECT_TRUE(happens([this] { return !isNameTaken(); }));
}

TEST_F(SingleInstance, a_second_start_hands_its_files_over_and_then_asks_for_the_window)
{
    m_bus.start();
    FirstStart first(m_bus.connection(), FirstStart::Manner::answers);

    const Start second(m_bus, twoFiles());

    ASSERT_TRUE(happens([&] { return second.outcomes.haveCome(); }));
    EXPECT_EQ(second.outcomes.words(), QStringList{u"handed over"_s});
    EXPECT_EQ(first.calls,
              (QStringList{u"Open file:///films/a%20film%20%231.mp4 file:///films/two/"_s,
                           u"Activate"_s}));
    EXPECT_EQ(first.platformData, twoFiles().platformData);
}

TEST_F(SingleInstance, a_second_start_without_files_asks_for_the_window_alone)
{
    m_bus.start();
    FirstStart first(m_bus.connection(), FirstStart::Manner::answers);

    const Start second(m_bus);

    ASSERT_TRUE(happens([&] { return second.outcomes.haveCome(); }));
    EXPECT_EQ(first.calls, QStringList{u"Activate"_s});
}

TEST_F(SingleInstance, a_first_start_that_keeps_silent_is_told_of_in_the_end)
{
    m_bus.start();
    FirstStart first(m_bus.connection(), FirstStart::Manner::keepsSilent);

    const Start second(m_bus);

    ASSERT_TRUE(happens([&] { return second.outcomes.haveCome(); }));
    EXPECT_EQ(second.outcomes.words(), QStringList{u"unanswered"_s});
}

TEST_F(SingleInstance, a_start_takes_the_place_of_one_that_is_just_leaving)
{
    m_bus.start();
    FirstStart first(m_bus.connection(), FirstStart::Manner::leaves);

    const Start second(m_bus, twoFiles());

    ASSERT_TRUE(happens([&] { return second.outcomes.haveCome(); }));
    EXPECT_EQ(second.outcomes.words(), QStringList{u"launch"_s});
    EXPECT_TRUE(isNameTaken());
}

#include "ApplicationServiceTest.moc"
