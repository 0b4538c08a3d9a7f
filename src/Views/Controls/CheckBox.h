// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QCheckBox>

/// A box to tick, for choices inside a row of controls.
class CheckBox : public QCheckBox
{
    Q_OBJECT

public:
    explicit CheckBox(QWidget *parent = nullptr);

    /// A symbol of Look's table between the box and the words.
    void setSymbol(const QString &name);
    /// Changes the words only when they differ.
    void setWords(const QString &words);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void paintEvent(QPaintEvent *event) override;
    bool hitButton(const QPoint &position) const override { return rect().contains(position); }

private:
    QString m_symbol;
};
