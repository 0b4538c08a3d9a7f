// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Views/Look/Symbols.h"

#include "Models/ActionKind.h"
#include "Views/Look/Theme.h"

#include <QImage>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

TEST(Symbols, every_action_has_its_symbol)
{
    for (const auto &row : RawValues<ActionKind>::table) {
        EXPECT_TRUE(Look::hasSymbol(symbolName(row.value))) << row.text.data();
    }
}

TEST(Symbols, an_unknown_name_is_an_empty_icon)
{
    EXPECT_FALSE(Look::hasSymbol(u"no.such.symbol"_s));
    EXPECT_TRUE(Look::symbol(u"no.such.symbol"_s).isNull());
}

TEST(Symbols, are_drawn_in_the_colour_asked_for_and_at_the_scale_of_the_screen)
{
    const QPixmap pixmap = Look::symbolPixmap(u"plus"_s, Qt::red, 16, 2.0);

    EXPECT_EQ(pixmap.size(), QSize(32, 32));
    EXPECT_EQ(pixmap.devicePixelRatio(), 2.0);
    EXPECT_EQ(pixmap.toImage().pixelColor(16, 16), QColor(Qt::red));
}

TEST(Symbols, follow_the_scheme_without_being_made_anew)
{
    Look::apply(Look::Scheme::light);
    const QIcon icon = Look::symbol(u"plus"_s);
    const QColor onLight = icon.pixmap(16, 16).toImage().pixelColor(8, 8);
    Look::apply(Look::Scheme::dark);
    const QColor onDark = icon.pixmap(16, 16).toImage().pixelColor(8, 8);
    Look::apply(Look::Scheme::light);

    EXPECT_LT(onLight.lightness(), 80);
    EXPECT_GT(onDark.lightness(), 200);
}

TEST(Symbols, in_a_menu_take_the_colour_of_what_stands_on_the_highlight)
{
    Look::apply(Look::Scheme::light);
    const QIcon icon = Look::menuSymbol(u"plus"_s);

    const auto inkIn = [&icon](QIcon::Mode mode) {
        return icon.pixmap({32, 32}, mode).toImage().pixelColor(16, 16).name();
    };

    EXPECT_EQ(inkIn(QIcon::Normal), Look::color(Look::ColorRole::text).name());
    EXPECT_EQ(inkIn(QIcon::Active), Look::color(Look::ColorRole::onAccent).name());
    EXPECT_EQ(inkIn(QIcon::Disabled), Look::color(Look::ColorRole::disabledText).name());
}
