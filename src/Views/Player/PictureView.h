// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "Platform/MediaPlayer.h"

#include <QPointer>
#include <QWidget>

/// The picture of a player, fitted into the widget on black. A player paints only while its view
/// is in sight.
class PictureView : public QWidget
{
    Q_OBJECT

public:
    explicit PictureView(QWidget *parent = nullptr);
    ~PictureView() override;

    /// Null for none. The one before is let go.
    void setPlayer(MediaPlayer *player);

    QSize sizeHint() const override { return {480, 270}; }
    QSize minimumSizeHint() const override { return {160, 90}; }

protected:
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void showEvent(QShowEvent *event) override;
    void hideEvent(QHideEvent *event) override;

private:
    void tellRoom();

    QPointer<MediaPlayer> m_player;
};
