// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "Platform/MediaPlayer.h"

#include <QPointer>
#include <QString>
#include <QWidget>

class NumberLabel;
class PictureView;
class QBoxLayout;
class QSlider;
class Scrubber;
class SymbolButton;

/// A player on the screen: its picture, and under it the controls. Space plays and pauses.
class AVPlayerViewWrap : public QWidget
{
    Q_OBJECT

public:
    /// What the controls are called, in tooltips and for screen readers.
    struct Labels {
        QString play;
        QString pause;
        QString position;
        QString mute;
        QString unmute;
        QString volume;
    };

    explicit AVPlayerViewWrap(const Labels &labels, QWidget *parent = nullptr);
    ~AVPlayerViewWrap() override;

    void setLabels(const Labels &labels);

    MediaPlayer *player() const { return m_player; }
    /// The player to show and to work; null for none. It stays the caller's, and the view lets go
    /// of the one before.
    void setPlayer(MediaPlayer *player);

protected:
    void keyPressEvent(QKeyEvent *event) override;

private:
    void buildControls(QBoxLayout *row);
    void connectControls();
    void connectPlayer();
    void refresh();
    void togglePlaying();

    Labels m_labels;
    QPointer<MediaPlayer> m_player;
    PictureView *m_picture;
    SymbolButton *m_playButton;
    NumberLabel *m_elapsed;
    Scrubber *m_scrubber;
    NumberLabel *m_length;
    SymbolButton *m_muteButton;
    QSlider *m_volume;
};
