// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "Views/Controls/Card.h"

#include <QPointer>
#include <QVBoxLayout>
#include <QWidget>

/// A card laid over the whole window for one matter that has to be settled first. What is behind it
/// can't be reached until it is gone; Esc dismisses it.
class Sheet : public QWidget
{
    Q_OBJECT

public:
    /// Covers the window of `over`, shown at once. `width` is that of the card.
    Sheet(QWidget *over, int width);

    /// Where the contents go, top to bottom.
    QVBoxLayout *column() { return m_card->column(); }
    Card *card() { return m_card; }
    /// Takes the sheet away and gives the focus back to where it was.
    void dismiss();

Q_SIGNALS:
    /// Once, however it went.
    void dismissed();

protected:
    void paintEvent(QPaintEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;
    bool focusNextPrevChild(bool next) override;
    void showEvent(QShowEvent *event) override;
    bool event(QEvent *event) override;

private:
    void cover();
    void takeFocus();
    QList<QWidget *> stops() const;

    QPointer<QWidget> m_focusBefore;
    Card *m_card;
    bool m_isDismissed = false;
};
