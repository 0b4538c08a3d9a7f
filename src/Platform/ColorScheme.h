// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QObject>

#include <optional>

/// What the user chose for the looks of all programs. Main thread only; known some time after the
/// start, and until then as where nothing was chosen.
class ColorScheme : public QObject
{
    Q_OBJECT

public:
    enum class Preference { none, dark, light };
    Q_ENUM(Preference)

    /// Each part in sRGB, 0 to 1.
    struct AccentColor {
        double red = 0;
        double green = 0;
        double blue = 0;
        bool operator==(const AccentColor &) const = default;
    };

    virtual Preference preference() const = 0;
    /// Absent when none was chosen.
    virtual std::optional<AccentColor> accentColor() const = 0;

Q_SIGNALS:
    /// One of the two is another one now.
    void changed();
};
