// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QList>
#include <QObject>
#include <QUrl>

class QDragMoveEvent;
class QDropEvent;
class QWidget;

/// Has a widget take files that are dropped on it, and goes with the widget. The files stay where
/// they are, whatever the other side would rather do with them.
class FileDrop : public QObject
{
    Q_OBJECT

public:
    explicit FileDrop(QWidget *widget);

    /// Whether a drag that brings URLs is over the widget.
    bool isOver() const { return m_isOver; }

Q_SIGNALS:
    void overChanged(bool over);
    /// The files of this machine among what was dropped; none when it was something else.
    void dropped(const QList<QUrl> &urls);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void enter(QDragMoveEvent &event);
    void take(QDropEvent &event);
    void setOver(bool over);

    bool m_isOver = false;
};
