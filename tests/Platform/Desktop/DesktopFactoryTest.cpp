// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Platform/Desktop/DesktopFactory.h"

#include "Platform/FakeBus.h"
#include "Platform/FakeBusServices.h"
#include "Platform/FakeDesktop.h"
#include "Platform/MessageListener.h"
#include "support/TempFolder.h"

#include <QDBusServiceWatcher>
#include <QGuiApplication>
#include <QWidget>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

class DesktopFactoryTest : public ::testing::Test
{
protected:
    const ScopedEnvironment &at(const FakeBus &bus)
    {
        m_system.emplace("DBUS_SYSTEM_BUS_ADDRESS", "unix:path=/nowhere");
        return m_session.emplace("DBUS_SESSION_BUS_ADDRESS", bus.address().toUtf8());
    }

    FakeBus m_bus;

private:
    std::optional<ScopedEnvironment> m_system;
    std::optional<ScopedEnvironment> m_session;
};

} // namespace

TEST_F(DesktopFactoryTest, the_services_are_those_of_the_users_bus)
{
    m_bus.start();
    const FakeNotifications notifications(m_bus.connection());
    const FakeFileManager manager(m_bus.connection());
    const FakeLauncher dock(m_bus.connection());
    FakeSettingsPortal portal(m_bus.connection());
    portal.set(u"color-scheme"_s, 1U);
    at(m_bus);

    const PlatformServices services = makeDesktopServices();
    services.notifier->post(u"Morvix"_s, u"film.mp4"_s);
    services.launcherProgress->setFraction(0.5);
    services.desktopServices->reveal({QUrl(u"file:///films/a.mp4"_s)});

    EXPECT_TRUE(happens([&] { return notifications.calls().size() == 1; }));
    EXPECT_TRUE(happens([&] { return manager.calls().size() == 1; }));
    EXPECT_TRUE(happens([&] { return dock.updates().size() == 1; }));
    EXPECT_TRUE(happens(
        [&] { return services.colorScheme->preference() == ColorScheme::Preference::dark; }));
}

TEST_F(DesktopFactoryTest, sleep_is_held_off_on_the_users_bus)
{
    m_bus.start();
    const FakeBusPortal portal(m_bus.connection(), FakeAnswer::grant);
    at(m_bus);

    const PlatformServices services = makeDesktopServices();
    services.sleepInhibitor->hold(u"Exporting a video"_s);

    EXPECT_TRUE(happens([&] { return portal.openRequests().size() == 1; }));
}

TEST_F(DesktopFactoryTest, without_a_bus_all_is_quiet)
{
    const MessageListener listener;
    at(m_bus);

    const PlatformServices services = makeDesktopServices();
    services.notifier->post(u"Morvix"_s, u"film.mp4"_s);
    services.launcherProgress->setFraction(0.5);

    EXPECT_EQ(services.colorScheme->preference(), ColorScheme::Preference::none);
    EXPECT_EQ(listener.heard, QStringList());
}

TEST_F(DesktopFactoryTest, the_program_is_active_while_one_of_its_windows_is)
{
    at(m_bus);
    const PlatformServices services = makeDesktopServices();
    EXPECT_FALSE(services.applicationState->isActive());

    QWidget window;
    window.show();
    window.activateWindow();

    EXPECT_TRUE(happens([&] { return services.applicationState->isActive(); }));
}
