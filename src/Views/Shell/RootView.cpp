// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Views/Shell/RootView.h"

#include "Views/Controls/MessageSheet.h"
#include "Views/Settings/SettingsSheet.h"
#include "Views/Shell/LandingView.h"
#include "Views/Shell/WorkspaceView.h"

#include <QStackedLayout>

using namespace Qt::StringLiterals;

namespace {

// Of the window's content, in device-independent pixels.
constexpr QSize leastSize{920, 640};

} // namespace

RootView::RootView(const ViewContext &context, TopBar::ShowDropZone showDropZone, QWidget *parent)
    : View(context, parent)
    , m_showDropZone(std::move(showDropZone))
    , m_pages(new QStackedLayout(this))
{
    setMinimumSize(leastSize);
    follow(&AppModel::filesChanged);
    follow(&AppModel::probingCountChanged);
    follow(&AppModel::lastErrorChanged);
    follow(&AppModel::showSettingsChanged);
}

void RootView::refresh()
{
    refreshPage();
    refreshAlert();
    refreshSettings();
}

/// Or the window would open with a ring around its first control. Tab still begins there.
void RootView::showEvent(QShowEvent *event)
{
    if (!window()->focusWidget()) {
        setFocus();
    }
    View::showEvent(event);
}

void RootView::refreshPage()
{
    const bool isEmpty = model().files().isEmpty() && model().probingCount() == 0;
    m_pages->setCurrentWidget(isEmpty ? page(m_landing, &RootView::makeLanding)
                                      : page(m_workspace, &RootView::makeWorkspace));
}

/// Each page is made when it is first wanted, and kept.
QWidget *RootView::page(QPointer<QWidget> &page, QWidget *(RootView::*make)())
{
    if (!page) {
        page = (this->*make)();
        m_pages->addWidget(page);
    }
    return page;
}

QWidget *RootView::makeLanding()
{
    return new LandingView(context(), m_showDropZone);
}

QWidget *RootView::makeWorkspace()
{
    return new WorkspaceView(context(), m_showDropZone);
}

void RootView::refreshAlert()
{
    const QString message = model().lastError().value_or(QString());
    const bool isPresent = model().lastError().has_value();
    if (m_alert && (!isPresent || message != m_alertMessage)) {
        m_alert->disconnect(this);
        m_alert->dismiss();
        m_alert.clear();
    }
    if (!m_alert && isPresent) {
        presentAlert(message);
    }
}

void RootView::presentAlert(const QString &message)
{
    m_alertMessage = message;
    m_alert = new MessageSheet(
        this,
        {.title = u"Morvix"_s, .message = message, .dismissal = t(u"common.close"), .action = {}});
    connect(m_alert, &Sheet::dismissed, this, [this] {
        m_alert.clear();
        model().setLastError(std::nullopt);
        // The settings may have had to wait.
        refreshSoon();
    });
}

/// An alert comes first: two sheets at once would fight for the focus.
void RootView::refreshSettings()
{
    if (!model().showSettings() && m_settings) {
        m_settings->dismiss();
    } else if (model().showSettings() && !m_settings && !m_alert) {
        presentSettings();
    }
}

void RootView::presentSettings()
{
    m_settings = new SettingsSheet(context(), this);
    connect(m_settings, &Sheet::dismissed, this, [this] {
        m_settings.clear();
        model().setShowSettings(false);
    });
}
