// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QSlider>

/// A slider that jumps to where it is clicked. Turning the wheel over it scrolls the panel, not the
/// slider.
class Slider : public QSlider
{
    Q_OBJECT

public:
    explicit Slider(Qt::Orientation orientation, QWidget *parent = nullptr);

    /// Shows a value without telling anyone; what is being dragged is left to the person.
    void setShown(int value);

Q_SIGNALS:
    /// The person moved it, by pointer or key.
    void moved(int value);

protected:
    void mousePressEvent(QMouseEvent *event) override;
    void wheelEvent(QWheelEvent *event) override;

private:
    int valueAt(QPoint position) const;
};
