// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QString>
#include <QWidget>

/// A field with a symbol over a title, on which something can be dropped.
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

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    const QString m_symbolName;
    QString m_title;
    bool m_isHighlighted = false;
};
