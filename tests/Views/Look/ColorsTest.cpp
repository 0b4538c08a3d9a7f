// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Views/Look/Colors.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>

using namespace Look;

namespace {

constexpr double readable = 4.5;

constexpr std::array inks{ColorRole::text,   ColorRole::secondaryText, ColorRole::accent,
                          ColorRole::green,  ColorRole::orange,        ColorRole::red,
                          ColorRole::purple, ColorRole::teal,          ColorRole::blue};
constexpr std::array grounds{ColorRole::window,  ColorRole::sidebar,      ColorRole::card,
                             ColorRole::control, ColorRole::controlHover, ColorRole::field};
constexpr std::array chips{ColorRole::accent, ColorRole::green, ColorRole::orange, ColorRole::red,
                           ColorRole::purple, ColorRole::teal,  ColorRole::blue};
constexpr std::array desktopAccents{0xff3584e4U, 0xfff6d32dU, 0xffe66100U, 0xff000000U,
                                    0xffffffffU, 0xff2ec27eU, 0xff9141acU, 0xff808080U};

struct Dress {
    Scheme scheme;
    QColor accent;
};

QList<Dress> dresses()
{
    QList<Dress> dresses{{Scheme::light, {}}, {Scheme::dark, {}}};
    for (const unsigned accent : desktopAccents) {
        dresses.append({Scheme::light, QColor::fromRgb(accent)});
        dresses.append({Scheme::dark, QColor::fromRgb(accent)});
    }
    return dresses;
}

std::string describe(const Dress &dress, ColorRole ink, ColorRole ground)
{
    return (dress.scheme == Scheme::dark ? "dark, accent " : "light, accent ") +
           dress.accent.name().toStdString() + ", ink " + std::to_string(static_cast<int>(ink)) +
           " on " + std::to_string(static_cast<int>(ground));
}

} // namespace

TEST(Colors, contrast_of_black_and_white_is_21)
{
    EXPECT_NEAR(contrast(Qt::black, Qt::white), 21, 1e-9);
    EXPECT_NEAR(contrast(Qt::white, Qt::black), 21, 1e-9);
    EXPECT_NEAR(contrast(Qt::red, Qt::red), 1, 1e-9);
}

TEST(Colors, contrast_of_a_known_grey_on_white_is_the_published_one)
{
    EXPECT_NEAR(contrast(QColor(0x76, 0x76, 0x76), Qt::white), 4.54, 0.005);
}

TEST(Colors, text_can_be_read_on_every_ground_whatever_the_accent)
{
    for (const Dress &dress : dresses()) {
        const Colors colors = Colors::of(dress.scheme, dress.accent);
        for (const ColorRole ink : inks) {
            for (const ColorRole ground : grounds) {
                EXPECT_GE(contrast(colors[ink], colors[ground]), readable)
                    << describe(dress, ink, ground);
            }
        }
    }
}

TEST(Colors, words_on_the_prominent_button_can_be_read_whatever_the_accent)
{
    for (const Dress &dress : dresses()) {
        const Colors colors = Colors::of(dress.scheme, dress.accent);
        for (const ColorRole face : {ColorRole::accentFill, ColorRole::accentFillHover}) {
            EXPECT_GE(contrast(colors[ColorRole::onAccent], colors[face]), readable)
                << describe(dress, ColorRole::onAccent, face);
        }
    }
}

TEST(Colors, text_can_be_read_behind_a_selection)
{
    for (const Dress &dress : dresses()) {
        const Colors colors = Colors::of(dress.scheme, dress.accent);
        for (const ColorRole ink : {ColorRole::text, ColorRole::secondaryText, ColorRole::accent}) {
            EXPECT_GE(contrast(colors[ink], colors[ColorRole::accentTint]), readable)
                << describe(dress, ink, ColorRole::accentTint);
        }
    }
}

TEST(Colors, a_chip_can_be_read_on_its_own_capsule)
{
    for (const Dress &dress : dresses()) {
        const Colors colors = Colors::of(dress.scheme, dress.accent);
        for (const ColorRole ink : chips) {
            for (const ColorRole ground : {ColorRole::card, ColorRole::window}) {
                const QColor capsule = blended(colors[ink], chipOpacity, colors[ground]);
                EXPECT_GE(contrast(colors[ink], capsule), readable) << describe(dress, ink, ground);
            }
        }
    }
}

TEST(Colors, an_accent_that_can_be_read_stays_as_it_is)
{
    const QColor accent(0x0b, 0x4f, 0xb0);
    EXPECT_EQ(Colors::of(Scheme::light, accent)[ColorRole::accent], accent);
    EXPECT_EQ(Colors::of(Scheme::light, accent)[ColorRole::accentFill], accent);
}

TEST(Colors, blending_keeps_the_ends)
{
    EXPECT_EQ(blended(Qt::red, 1, Qt::blue), QColor(Qt::red));
    EXPECT_EQ(blended(Qt::red, 0, Qt::blue), QColor(Qt::blue));
}
