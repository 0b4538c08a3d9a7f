// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Views/AVPlayerViewWrap.h"

#include "App/Fmt.h"
#include "Views/Controls/NumberLabel.h"
#include "Views/Controls/SymbolButton.h"
#include "Views/Look/Metrics.h"
#include "Views/Player/PictureView.h"
#include "Views/Player/Scrubber.h"

#include <QBoxLayout>
#include <QKeyEvent>
#include <QSignalBlocker>
#include <QSlider>

#include <cmath>

using namespace Qt::StringLiterals;

namespace {

constexpr int volumeWidth = 80;
constexpr int volumeSteps = 100;

} // namespace

AVPlayerViewWrap::AVPlayerViewWrap(const Labels &labels, QWidget *parent)
    : QWidget(parent)
    , m_labels(labels)
    , m_picture(new PictureView(this))
    , m_playButton(new SymbolButton(u"play.fill"_s, this))
    , m_elapsed(new NumberLabel(Look::TextSize::caption, Look::ColorRole::secondaryText))
    , m_scrubber(new Scrubber(this))
    , m_length(new NumberLabel(Look::TextSize::caption, Look::ColorRole::secondaryText))
    , m_muteButton(new SymbolButton(u"speaker.fill"_s, this))
    , m_volume(new QSlider(Qt::Horizontal, this))
{
    setFocusPolicy(Qt::StrongFocus);
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(Look::Space::small);
    column->addWidget(m_picture, 1);
    auto *row = new QHBoxLayout;
    buildControls(row);
    column->addLayout(row);
    connectControls();
    refresh();
}

AVPlayerViewWrap::~AVPlayerViewWrap()
{
    setPlayer(nullptr);
}

void AVPlayerViewWrap::buildControls(QBoxLayout *row)
{
    m_volume->setRange(0, volumeSteps);
    m_volume->setFixedWidth(volumeWidth);
    row->setSpacing(Look::Space::small);
    row->addWidget(m_playButton);
    row->addWidget(m_elapsed);
    row->addWidget(m_scrubber, 1);
    row->addWidget(m_length);
    row->addWidget(m_muteButton);
    row->addWidget(m_volume);
}

// While a drag goes on, pictures that come at once help more than the very frame.
void AVPlayerViewWrap::connectControls()
{
    const auto seek = [this](MediaPlayer::Tolerance tolerance) {
        return [this, tolerance](double seconds) {
            if (m_player) {
                m_player->seek(seconds, tolerance);
            }
        };
    };
    connect(m_scrubber, &Scrubber::passed, this, seek(MediaPlayer::Tolerance::keyframe));
    connect(m_scrubber, &Scrubber::settled, this, seek(MediaPlayer::Tolerance::zero));
    connect(m_playButton, &SymbolButton::clicked, this, &AVPlayerViewWrap::togglePlaying);
    connect(m_muteButton, &SymbolButton::clicked, this, [this] {
        if (m_player) {
            m_player->setMuted(!m_player->isMuted());
        }
    });
    connect(m_volume, &QSlider::valueChanged, this, [this](int value) {
        if (m_player) {
            m_player->setVolume(static_cast<double>(value) / volumeSteps);
        }
    });
}

void AVPlayerViewWrap::setLabels(const Labels &labels)
{
    m_labels = labels;
    refresh();
}

void AVPlayerViewWrap::setPlayer(MediaPlayer *player)
{
    if (player == m_player) {
        return;
    }
    if (m_player) {
        disconnect(m_player, nullptr, this, nullptr);
    }
    m_player = player;
    m_picture->setPlayer(player);
    connectPlayer();
    refresh();
}

void AVPlayerViewWrap::connectPlayer()
{
    if (!m_player) {
        return;
    }
    for (const auto signal : {&MediaPlayer::rateChanged, &MediaPlayer::durationChanged,
                              &MediaPlayer::volumeChanged, &MediaPlayer::loaded}) {
        connect(m_player, signal, this, &AVPlayerViewWrap::refresh);
    }
    connect(m_player, &MediaPlayer::positionChanged, this, &AVPlayerViewWrap::refresh);
    connect(m_player, &QObject::destroyed, this, &AVPlayerViewWrap::refresh);
}

void AVPlayerViewWrap::refresh()
{
    const bool isPlaying = m_player && m_player->rate() > 0;
    const bool isMuted = m_player && m_player->isMuted();
    const double length = m_player ? m_player->duration() : 0;
    const double position = m_player ? m_player->position() : 0;

    m_playButton->setSymbol(isPlaying ? u"pause.fill"_s : u"play.fill"_s);
    m_playButton->setWords(isPlaying ? m_labels.pause : m_labels.play);
    m_playButton->setEnabled(length > 0);
    m_elapsed->setText(Fmt::time(position));
    m_length->setText(Fmt::time(length));
    m_scrubber->setAccessibleName(m_labels.position);
    m_scrubber->setDuration(length);
    m_scrubber->showPosition(position);
    m_muteButton->setSymbol(isMuted ? u"speaker.slash"_s : u"speaker.fill"_s);
    m_muteButton->setWords(isMuted ? m_labels.unmute : m_labels.mute);
    m_volume->setAccessibleName(m_labels.volume);
    const QSignalBlocker silence(m_volume);
    m_volume->setValue(m_player ? static_cast<int>(std::lround(m_player->volume() * volumeSteps))
                                : volumeSteps);
}

void AVPlayerViewWrap::togglePlaying()
{
    if (!m_player || m_player->duration() <= 0) {
        return;
    }
    if (m_player->rate() > 0) {
        m_player->pause();
    } else {
        m_player->play();
    }
}

void AVPlayerViewWrap::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Space && !event->isAutoRepeat()) {
        togglePlaying();
    } else {
        QWidget::keyPressEvent(event);
    }
}
