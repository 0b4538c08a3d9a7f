// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Views/Look/Theme.h"

#include "Views/Look/StyleSheet.h"
#include "Views/Look/Type.h"

#include <QApplication>
#include <QPalette>
#include <QStyle>
#include <QStyleFactory>

#include <array>

using namespace Qt::StringLiterals;

namespace Look {
namespace {

struct Dress {
    Scheme scheme = Scheme::light;
    Colors colors = Colors::of(Scheme::light);
};

Dress &dress()
{
    static Dress dress;
    return dress;
}

struct PaletteRow {
    QPalette::ColorRole role;
    ColorRole color;
};

constexpr auto paletteRows = std::to_array<PaletteRow>({
    {QPalette::Window, ColorRole::window},
    {QPalette::WindowText, ColorRole::text},
    {QPalette::Base, ColorRole::field},
    {QPalette::AlternateBase, ColorRole::sidebar},
    {QPalette::ToolTipBase, ColorRole::card},
    {QPalette::ToolTipText, ColorRole::text},
    {QPalette::PlaceholderText, ColorRole::secondaryText},
    {QPalette::Text, ColorRole::text},
    {QPalette::Button, ColorRole::control},
    {QPalette::ButtonText, ColorRole::text},
    {QPalette::BrightText, ColorRole::red},
    {QPalette::Light, ColorRole::control},
    {QPalette::Midlight, ColorRole::controlHover},
    {QPalette::Mid, ColorRole::outline},
    {QPalette::Dark, ColorRole::outline},
    {QPalette::Shadow, ColorRole::hairline},
    {QPalette::Highlight, ColorRole::accentFill},
    {QPalette::HighlightedText, ColorRole::onAccent},
    {QPalette::Link, ColorRole::accent},
    {QPalette::LinkVisited, ColorRole::purple},
});

QPalette palette(const Colors &colors)
{
    QPalette palette;
    for (const PaletteRow &row : paletteRows) {
        palette.setColor(row.role, colors[row.color]);
    }
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText}) {
        palette.setColor(QPalette::Disabled, role, colors[ColorRole::disabledText]);
    }
    return palette;
}

} // namespace

void apply(Scheme scheme, const QColor &accent)
{
    dress() = {scheme, Colors::of(scheme, accent)};
    if (qApp->style()->name() != "fusion"_L1) {
        QApplication::setStyle(QStyleFactory::create(u"Fusion"_s));
    }
    QApplication::setFont(font(TextSize::body));
    QApplication::setPalette(palette(dress().colors));
    qApp->setStyleSheet(styleSheet(dress().colors));
}

Scheme schemeOfPalette()
{
    const QPalette palette = QApplication::palette();
    const bool lightText = palette.color(QPalette::WindowText).lightness() >
                           palette.color(QPalette::Window).lightness();
    return lightText ? Scheme::dark : Scheme::light;
}

const Colors &colors()
{
    return dress().colors;
}

Scheme scheme()
{
    return dress().scheme;
}

} // namespace Look
