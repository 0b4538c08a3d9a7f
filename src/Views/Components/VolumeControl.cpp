// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Views/Components/VolumeControl.h"

#include "Engine/Text.h"
#include "Views/Controls/NumberLabel.h"
#include "Views/Controls/Slider.h"
#include "Views/Look/Metrics.h"

#include <QHBoxLayout>

#include <algorithm>
#include <cmath>

using namespace Qt::StringLiterals;

namespace {

constexpr int leastDecibels = -30;
constexpr int mostDecibels = 12;
constexpr int sliderWidth = 260;
constexpr int readoutWidth = 56;

/// As C's "%+.0f" prints it, so "+0 dB" for a stored gain of nothing.
QString readout(std::optional<double> decibels)
{
    if (!decibels) {
        return u"0 dB"_s;
    }
    const QString sign = std::signbit(*decibels) ? QString() : u"+"_s;
    return sign + Text::fixed(*decibels, 0) + u" dB"_s;
}

} // namespace

VolumeControl::VolumeControl(QWidget *parent)
    : QWidget(parent)
    , m_slider(new Slider(Qt::Horizontal))
    , m_readout(new NumberLabel)
{
    auto *row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(Look::Space::medium);
    m_slider->setRange(leastDecibels, mostDecibels);
    m_slider->setFixedWidth(sliderWidth);
    m_readout->setFixedWidth(readoutWidth);
    row->addWidget(m_slider);
    row->addWidget(m_readout);
    row->addStretch();
    // As high as the pickers above it.
    setMinimumHeight(Look::Height::control);
    setVolume({});
    connect(m_slider, &Slider::moved, this, [this](int decibels) {
        Q_EMIT picked(decibels == 0 ? std::nullopt : std::optional<double>(decibels));
    });
}

void VolumeControl::setVolume(std::optional<double> decibels)
{
    m_slider->setShown(static_cast<int>(
        std::lround(std::clamp<double>(decibels.value_or(0), leastDecibels, mostDecibels))));
    m_readout->setText(readout(decibels));
}
