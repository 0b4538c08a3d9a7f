// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QList>
#include <QString>
#include <QUrl>
#include <QWidget>

/// A field with a symbol over a title that takes dropped files.
class DropTarget : public QWidget
{
    Q_OBJECT

public:
    explicit DropTarget(QString symbolName, QWidget *parent = nullptr);

    const QString &title() const { return m_title; }
    void setTitle(const QString &title);
    /// Whether it shows that a drop would land here.
    bool isHighlighted() const { return m_isHighlighted; }
    void setHighlighted(bool highlighted);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

Q_SIGNALS:
    /// Files came over the field, and left it again or were dropped.
    void hoverBegan();
    void hoverEnded();
    /// The files among what was dropped; none when it was something else.
    void filesDropped(const QList<QUrl> &urls);

protected:
    void dragEnterEvent(QDragEnterEvent *event) override;
    void dragMoveEvent(QDragMoveEvent *event) override;
    void dragLeaveEvent(QDragLeaveEvent *event) override;
    void dropEvent(QDropEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    const QString m_symbolName;
    QString m_title;
    bool m_isHighlighted = false;
};
