// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Platform/Bus/BusLauncherProgress.h"

#include "Platform/Bus/SessionBus.h"
#include "Platform/FakeBus.h"
#include "Platform/FakeDesktop.h"
#include "Platform/MessageListener.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

QVariantMap bar(double fraction)
{
    return {{u"progress"_s, fraction}, {u"progress-visible"_s, true}};
}

const QVariantMap noBar{{u"progress"_s, 0.0}, {u"progress-visible"_s, false}};

QDBusConnection started(FakeBus &bus)
{
    bus.start();
    return bus.connection();
}

class BusLauncherProgressTest : public ::testing::Test
{
protected:
    // What the dock was told, once it was told so many times.
    QList<QVariantMap> told(qsizetype count) const
    {
        EXPECT_TRUE(happens([&] { return m_dock.updates().size() >= count; }));
        QList<QVariantMap> told;
        for (const FakeLauncher::Update &update : m_dock.updates()) {
            told += update.properties;
        }
        return told;
    }

    FakeBus m_bus;
    const FakeLauncher m_dock{started(m_bus)};
    BusLauncherProgress m_progress{std::make_shared<SessionBus>(m_bus.address(), 60s)};
};

} // namespace

TEST_F(BusLauncherProgressTest, the_signal_names_the_desktop_file_and_comes_from_its_place)
{
    m_progress.setFraction(0.42);

    EXPECT_EQ(told(1), QList<QVariantMap>{bar(0.42)});
    EXPECT_EQ(m_dock.updates().first().entry, u"application://app.morvix.Morvix.desktop"_s);
    EXPECT_EQ(m_dock.updates().first().path, u"/com/canonical/unity/launcherentry/1436673504"_s);
}

TEST_F(BusLauncherProgressTest, only_another_percent_is_told_cut_and_held_to_the_bar)
{
    for (const double fraction : {0.0, 0.005, 0.0099, 0.01, 0.0199, 0.5, 0.504, 1.0, 1.5, -1.0}) {
        m_progress.setFraction(fraction);
    }

    EXPECT_EQ(told(5), (QList<QVariantMap>{bar(0), bar(0.01), bar(0.5), bar(1), bar(0)}));
}

TEST_F(BusLauncherProgressTest, the_bar_is_taken_away_once)
{
    m_progress.setFraction(std::nullopt);
    m_progress.setFraction(0.3);
    m_progress.setFraction(std::nullopt);
    m_progress.setFraction(std::nullopt);
    m_progress.setFraction(0.3);

    EXPECT_EQ(told(3), (QList<QVariantMap>{bar(0.3), noBar, bar(0.3)}));
}

TEST(BusLauncherProgressWithoutBusTest, nothing_is_said)
{
    const MessageListener listener;
    BusLauncherProgress progress(std::make_shared<SessionBus>(QString(), 60s));

    progress.setFraction(0.3);

    EXPECT_EQ(listener.heard, QStringList());
}
