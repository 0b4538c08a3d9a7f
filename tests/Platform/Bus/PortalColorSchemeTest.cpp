// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Platform/Bus/PortalColorScheme.h"

#include "Platform/Bus/SessionBus.h"
#include "Platform/FakeBus.h"
#include "Platform/FakeDesktop.h"
#include "Platform/MessageListener.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

using Manner = FakeDesktopService::Manner;
using Preference = ColorScheme::Preference;
using AccentColor = ColorScheme::AccentColor;

const QString scheme = u"color-scheme"_s;
const QString accent = u"accent-color"_s;

class PortalColorSchemeTest : public ::testing::Test
{
protected:
    PortalColorSchemeTest() { m_bus.start(); }

    // The portal answers in order, or never within the limit: after this question the ones before
    // it have their answers.
    void letItBeAnswered(const QString &key = u"something"_s, std::chrono::milliseconds limit = 60s)
    {
        QObject context;
        bool isAnswered = false;
        QDBusMessage question = QDBusMessage::createMethodCall(
            u"org.freedesktop.portal.Desktop"_s, u"/org/freedesktop/portal/desktop"_s,
            u"org.freedesktop.portal.Settings"_s, u"Read"_s);
        question << u"org.freedesktop.appearance"_s << key;
        m_session->call(question, limit, &context,
                        [&](const QDBusMessage &) { isAnswered = true; });
        ASSERT_TRUE(happens([&] { return isAnswered; }));
    }

    FakeBus m_bus;
    const std::shared_ptr<SessionBus> m_session =
        std::make_shared<SessionBus>(m_bus.address(), 60s);
};

} // namespace

TEST_F(PortalColorSchemeTest, the_portal_is_asked_for_the_scheme_and_the_accent_of_the_looks)
{
    const FakeSettingsPortal portal(m_bus.connection());

    const PortalColorScheme colors(m_session);
    letItBeAnswered();

    EXPECT_EQ(portal.askedFor().first(2),
              (QStringList{u"org.freedesktop.appearance color-scheme"_s,
                           u"org.freedesktop.appearance accent-color"_s}));
    EXPECT_EQ(colors.preference(), Preference::none);
    EXPECT_EQ(colors.accentColor(), std::nullopt);
}

TEST_F(PortalColorSchemeTest, numbers_of_the_portal_become_preferences)
{
    const QList<std::pair<QVariant, Preference>> cases{
        {0U, Preference::none}, {1U, Preference::dark}, {2U, Preference::light},
        {3U, Preference::none}, {1, Preference::none},  {u"1"_s, Preference::none},
    };
    for (const auto &[value, expected] : cases) {
        FakeSettingsPortal portal(m_bus.connection());
        portal.set(scheme, value);
        const PortalColorScheme colors(m_session);
        letItBeAnswered();
        EXPECT_EQ(colors.preference(), expected) << value.toString().toStdString();
    }
}

TEST_F(PortalColorSchemeTest, a_color_with_a_part_out_of_range_or_of_another_type_is_none)
{
    const QList<std::pair<QVariant, std::optional<AccentColor>>> cases{
        {FakeSettingsPortal::color(0.25, 0.5, 1), AccentColor{0.25, 0.5, 1}},
        {FakeSettingsPortal::color(0, 0, 0), AccentColor{}},
        {FakeSettingsPortal::color(-1, 0.5, 1), std::nullopt},
        {FakeSettingsPortal::color(0.25, 1.01, 1), std::nullopt},
        {FakeSettingsPortal::color(0.25, 0.5, qQNaN()), std::nullopt},
        {u"blue"_s, std::nullopt},
        {QStringList{u"blue"_s}, std::nullopt},
    };
    for (const auto &[value, expected] : cases) {
        FakeSettingsPortal portal(m_bus.connection());
        portal.set(accent, value);
        const PortalColorScheme colors(m_session);
        letItBeAnswered();
        EXPECT_EQ(colors.accentColor(), expected);
    }
}

TEST_F(PortalColorSchemeTest, a_change_is_told_once_and_only_when_it_is_one)
{
    FakeSettingsPortal portal(m_bus.connection());
    portal.set(scheme, 1U);
    PortalColorScheme colors(m_session);
    QList<Preference> told;
    QObject::connect(&colors, &ColorScheme::changed, &colors, [&] { told += colors.preference(); });
    letItBeAnswered();
    EXPECT_EQ(told, QList{Preference::dark});

    portal.change(scheme, 1U);
    portal.tell(u"org.gnome.desktop.interface"_s, scheme, 2U);
    portal.change(u"contrast"_s, 1U);
    portal.change(scheme, 2U);
    EXPECT_TRUE(happens([&] { return told.size() == 2; }));
    EXPECT_EQ(told, (QList{Preference::dark, Preference::light}));
    portal.change(accent, FakeSettingsPortal::color(1, 0, 0));
    EXPECT_TRUE(happens([&] { return told.size() == 3; }));

    EXPECT_EQ(colors.accentColor(), (AccentColor{1, 0, 0}));
}

TEST_F(PortalColorSchemeTest, a_portal_that_refuses_is_no_preference_and_nothing_is_said)
{
    const MessageListener listener;
    FakeSettingsPortal portal(m_bus.connection(), Manner::refuses);
    portal.set(scheme, 1U);

    const PortalColorScheme colors(m_session);
    letItBeAnswered();

    EXPECT_EQ(colors.preference(), Preference::none);
    EXPECT_EQ(listener.heard, QStringList());
}

TEST_F(PortalColorSchemeTest, a_portal_that_hangs_is_no_preference_but_is_still_listened_to)
{
    FakeSettingsPortal portal(m_bus.connection(), Manner::hangs);
    portal.set(scheme, 1U);
    const PortalColorScheme colors(m_session, 50ms);

    letItBeAnswered(scheme, 60ms);
    EXPECT_EQ(colors.preference(), Preference::none);
    portal.change(scheme, 2U);

    EXPECT_TRUE(happens([&] { return colors.preference() == Preference::light; }));
}

TEST(PortalColorSchemeWithoutBusTest, nothing_is_preferred_and_nothing_is_said)
{
    const MessageListener listener;
    const PortalColorScheme colors(std::make_shared<SessionBus>(QString(), 60s));

    EXPECT_EQ(colors.preference(), Preference::none);
    EXPECT_EQ(colors.accentColor(), std::nullopt);
    EXPECT_EQ(listener.heard, QStringList());
}
