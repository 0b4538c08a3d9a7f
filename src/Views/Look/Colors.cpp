// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Views/Look/Colors.h"

#include <QList>

#include <algorithm>
#include <cmath>

namespace Look {
namespace {

constexpr double readable = 4.5;

struct Shade {
    ColorRole role;
    QRgb light;
    QRgb dark;
};

constexpr auto shades = std::to_array<Shade>({
    {ColorRole::window, 0xfff5f6f8, 0xff1b1c1f},
    {ColorRole::sidebar, 0xffedeff2, 0xff161719},
    {ColorRole::card, 0xffffffff, 0xff242629},
    {ColorRole::control, 0xffffffff, 0xff2f3236},
    {ColorRole::controlHover, 0xfff0f2f5, 0xff383c41},
    {ColorRole::field, 0xffffffff, 0xff1b1c1f},
    {ColorRole::hairline, 0xffe1e4e8, 0xff34373c},
    {ColorRole::outline, 0xffc9cdd4, 0xff4a4e55},
    {ColorRole::text, 0xff1c1e21, 0xfff1f2f4},
    {ColorRole::secondaryText, 0xff5c626b, 0xffa6acb5},
    {ColorRole::disabledText, 0xff9aa0a9, 0xff6d737c},
    {ColorRole::onAccent, 0xffffffff, 0xffffffff},
    {ColorRole::green, 0xff146c35, 0xff55cf85},
    {ColorRole::orange, 0xff944200, 0xfff5a54a},
    {ColorRole::red, 0xffb3202c, 0xffff8585},
    {ColorRole::purple, 0xff7434b8, 0xffc99bff},
    {ColorRole::teal, 0xff0a646d, 0xff4fc7d1},
    {ColorRole::blue, 0xff0b57b5, 0xff77b3ff},
    {ColorRole::track, 0xffd9dde3, 0xff3d4147},
});

constexpr QRgb ownAccent = 0xff0b62d6;

double linear(double channel)
{
    return channel <= 0.04045 ? channel / 12.92 : std::pow((channel + 0.055) / 1.055, 2.4);
}

double luminance(const QColor &color)
{
    return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) +
           0.0722 * linear(color.blueF());
}

bool isReadable(const QColor &ink, const QList<QColor> &grounds)
{
    return std::all_of(grounds.begin(), grounds.end(),
                       [&](const QColor &ground) { return contrast(ink, ground) >= readable; });
}

/// Whether an ink also stands on a capsule of its own colour, on the first of its grounds.
enum class OwnCapsule { counts, none };

enum class Towards { light, dark };

/// The same hue, as strong as it was, so much nearer to white or black (0 to 1).
QColor lit(const QColor &color, Towards end, double way)
{
    float hue = 0;
    float saturation = 0;
    float lightness = 0;
    color.getHslF(&hue, &saturation, &lightness);
    const auto part = static_cast<float>(way);
    const float nearer =
        end == Towards::light ? lightness + (1 - lightness) * part : lightness * (1 - part);
    return QColor::fromHslF(hue, saturation, nearer);
}

/// The colour itself, or as little lighter or darker as it takes to be read on all grounds.
QColor moved(const QColor &color, Towards end, const QList<QColor> &grounds, OwnCapsule capsule)
{
    const auto isFit = [&](const QColor &ink) {
        return isReadable(ink, grounds) &&
               (capsule == OwnCapsule::none ||
                contrast(ink, blended(ink, chipOpacity, grounds.first())) >= readable);
    };
    QColor result = color;
    for (double way = 0.02; way < 1 && !isFit(result); way += 0.02) {
        result = lit(color, end, way);
    }
    return result;
}

/// The colour laid on the ground as strongly as the inks on it allow.
QColor tint(const QColor &color, double opacity, const QColor &ground, const QList<QColor> &inks)
{
    QColor result = blended(color, opacity, ground);
    for (; opacity > 0 && !isReadable(result, inks); opacity -= 0.01) {
        result = blended(color, opacity, ground);
    }
    return result;
}

} // namespace

Colors Colors::of(Scheme scheme, const QColor &accent)
{
    Colors colors;
    const auto set = [&colors](ColorRole role, const QColor &color) {
        colors.m_colors[static_cast<std::size_t>(role)] = color;
    };
    const bool dark = scheme == Scheme::dark;
    for (const Shade &shade : shades) {
        set(shade.role, QColor::fromRgb(dark ? shade.dark : shade.light));
    }
    const QColor base = accent.isValid() ? accent.toRgb() : QColor::fromRgb(ownAccent);
    const QColor card = colors[ColorRole::card];
    const QColor tinted = tint(base, dark ? 0.22 : 0.11, card,
                               {colors[ColorRole::text], colors[ColorRole::secondaryText]});
    set(ColorRole::accentTint, tinted);
    // The ground that is nearest to the ink decides; a chip's capsule lies on any of them.
    const QColor nearest = colors[dark ? ColorRole::controlHover : ColorRole::sidebar];
    const QColor accentInk =
        moved(base, dark ? Towards::light : Towards::dark, {nearest, tinted}, OwnCapsule::counts);
    set(ColorRole::accent, accentInk);
    const QColor fill = moved(base, Towards::dark, {colors[ColorRole::onAccent]}, OwnCapsule::none);
    set(ColorRole::accentFill, fill);
    set(ColorRole::accentFillHover, blended(Qt::black, 0.1, fill));
    set(ColorRole::scrim, QColor(0, 0, 0, dark ? 150 : 90));
    return colors;
}

double contrast(const QColor &one, const QColor &other)
{
    const double a = luminance(one);
    const double b = luminance(other);
    return (std::max(a, b) + 0.05) / (std::min(a, b) + 0.05);
}

QColor blended(const QColor &over, double opacity, const QColor &ground)
{
    const auto part = static_cast<float>(opacity);
    const auto mix = [part](float top, float bottom) { return top * part + bottom * (1 - part); };
    return QColor::fromRgbF(mix(over.redF(), ground.redF()), mix(over.greenF(), ground.greenF()),
                            mix(over.blueF(), ground.blueF()));
}

} // namespace Look
