// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QWidget>

#include <optional>

class NumberLabel;
class Slider;

/// A gain in whole decibels from -30 to +12, with its number beside it.
class VolumeControl : public QWidget
{
    Q_OBJECT

public:
    explicit VolumeControl(QWidget *parent = nullptr);

    /// Absent stands at 0. Tells nobody.
    void setVolume(std::optional<double> decibels);
    /// What is moved, for its accessible name.
    Slider *slider() const { return m_slider; }

Q_SIGNALS:
    /// The person moved it; absent at 0, which is the same as untouched.
    void picked(std::optional<double> decibels);

private:
    Slider *m_slider;
    NumberLabel *m_readout;
};
