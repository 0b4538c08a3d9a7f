// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "Views/Shell/TopBar.h"
#include "Views/View.h"

#include <QPointer>

class MessageSheet;
class QStackedLayout;
class SettingsSheet;

/// The whole of the window: the landing page or the workspace, and what is laid over either. Errors
/// of the application object surface here and nowhere else.
class RootView : public View
{
    Q_OBJECT

public:
    RootView(const ViewContext &context, TopBar::ShowDropZone showDropZone,
             QWidget *parent = nullptr);

protected:
    void refresh() override;
    void showEvent(QShowEvent *event) override;

private:
    void refreshPage();
    void refreshAlert();
    void refreshSettings();
    void presentAlert(const QString &message);
    void presentSettings();
    QWidget *page(QPointer<QWidget> &page, QWidget *(RootView::*make)());
    QWidget *makeLanding();
    QWidget *makeWorkspace();

    const TopBar::ShowDropZone m_showDropZone;
    QStackedLayout *m_pages;
    QPointer<QWidget> m_landing;
    QPointer<QWidget> m_workspace;
    QPointer<MessageSheet> m_alert;
    QString m_alertMessage;
    QPointer<SettingsSheet> m_settings;
};
