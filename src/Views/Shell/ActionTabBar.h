// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "Models/ActionKind.h"
#include "Views/View.h"

#include <QAbstractButton>

#include <vector>

/// One action in the tab bar: its symbol over its short name. The tab of the action in force is
/// checked.
class TabButton : public QAbstractButton
{
    Q_OBJECT

public:
    explicit TabButton(ActionKind kind, QWidget *parent = nullptr);

    ActionKind kind() const { return m_kind; }
    void setWords(const QString &name, const QString &title);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    const ActionKind m_kind;
};

/// All eleven actions, always. The arrow keys move from one to the next.
class ActionTabBar : public View
{
    Q_OBJECT

public:
    explicit ActionTabBar(const ViewContext &context, QWidget *parent = nullptr);

protected:
    void refresh() override;

private:
    TabButton *tabButton(ActionKind kind);

    std::vector<TabButton *> m_tabs;
};
