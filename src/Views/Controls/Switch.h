// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QAbstractButton>

/// On or off, with words beside it and perhaps a symbol before them. Acts at once. Without words it
/// is the track alone, for a place that names it otherwise.
class Switch : public QAbstractButton
{
    Q_OBJECT

public:
    /// Between the track and the edges of the widget, where the ring of the focus has its place.
    static constexpr int overhang = 3;

    explicit Switch(QWidget *parent = nullptr);

    /// A symbol of Look's table.
    void setSymbol(const QString &name);
    /// Changes the words only when they differ. They break into lines where the width ends.
    void setWords(const QString &words);
    /// Where the words begin, for what stands under them.
    int wordsLeft() const;

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;
    bool hasHeightForWidth() const override { return true; }
    int heightForWidth(int width) const override;

protected:
    void paintEvent(QPaintEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    bool hitButton(const QPoint &position) const override;

private:
    QRect trackRect() const;
    void paintTrack(QPainter &painter) const;

    QString m_symbol;
};
