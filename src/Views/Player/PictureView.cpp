// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Views/Player/PictureView.h"

#include <QImage>
#include <QPainter>

PictureView::PictureView(QWidget *parent) : QWidget(parent)
{
    setAttribute(Qt::WA_OpaquePaintEvent);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
}

PictureView::~PictureView()
{
    setPlayer(nullptr);
}

void PictureView::setPlayer(MediaPlayer *player)
{
    if (player == m_player) {
        return;
    }
    if (m_player) {
        disconnect(m_player, nullptr, this, nullptr);
        m_player->setPictureSize({});
    }
    m_player = player;
    if (m_player) {
        connect(m_player, &MediaPlayer::frameReady, this, qOverload<>(&QWidget::update));
        connect(m_player, &QObject::destroyed, this, qOverload<>(&QWidget::update));
    }
    tellRoom();
    update();
}

void PictureView::tellRoom()
{
    if (m_player) {
        m_player->setPictureSize(isVisible() ? size() * devicePixelRatioF() : QSize());
    }
}

// The picture's own pixels are put onto the screen's: in between they would be blurred.
void PictureView::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.fillRect(rect(), Qt::black);
    QImage picture = m_player ? m_player->picture() : QImage();
    if (picture.isNull()) {
        return;
    }
    const qreal ratio = devicePixelRatioF();
    const QSize room = (size() * ratio - picture.size()) / 2;
    picture.setDevicePixelRatio(ratio);
    painter.drawImage(QPointF(room.width(), room.height()) / ratio, picture);
}

void PictureView::resizeEvent(QResizeEvent *)
{
    tellRoom();
}

void PictureView::showEvent(QShowEvent *)
{
    tellRoom();
}

void PictureView::hideEvent(QHideEvent *)
{
    tellRoom();
}
