// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QSlider>

/// Where a film stands, to be dragged elsewhere. A press anywhere takes the handle there; the arrow
/// keys move by a second.
class Scrubber : public QSlider
{
    Q_OBJECT

public:
    explicit Scrubber(QWidget *parent = nullptr);

    /// In seconds; 0 for nothing to move in.
    void setDuration(double seconds);
    /// Moves the handle unless it is being dragged; tells nobody.
    void showPosition(double seconds);

Q_SIGNALS:
    /// On the way of a drag.
    void passed(double seconds);
    /// At the end of a drag, and for each key.
    void settled(double seconds);

protected:
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void wheelEvent(QWheelEvent *event) override;

private:
    void dragTo(int x);
    void tell(int milliseconds);
};
