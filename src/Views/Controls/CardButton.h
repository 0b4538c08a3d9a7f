// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QAbstractButton>

/// A card that is clicked as a whole. Its contents are laid out in it like in any widget and let
/// the pointer through.
class CardButton : public QAbstractButton
{
    Q_OBJECT

public:
    explicit CardButton(QWidget *parent = nullptr);

    /// Whether it is the chosen one among its like.
    bool isSelected() const { return m_selected; }
    void setSelected(bool selected);

    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    bool event(QEvent *event) override;

private:
    bool m_selected = false;
};
