// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "Views/ViewContext.h"

#include <QWidget>

/// A part of the window that shows properties of the application object. Its maker's parts are made
/// once; refresh() then writes into them what has changed, in one go for any number of changes.
class View : public QWidget
{
    Q_OBJECT

public:
    explicit View(const ViewContext &context, QWidget *parent = nullptr);

    /// Brings the view up to date at once if something is waiting to be shown.
    void refreshNow();

protected:
    /// Writes what the model holds into the parts, only where it differs.
    virtual void refresh() = 0;

    AppModel &model() const { return m_context.model; }
    const ViewContext &context() const { return m_context; }
    /// Texts in the language in force.
    QString t(const char16_t *key) const;
    QString t(const QString &key) const { return model().t(key); }
    QString tf(const QString &key, const QStringList &arguments) const
    {
        return model().tf(key, arguments);
    }

    /// Refreshes when the model sends that signal. The language is heard by all views.
    template <typename... Arguments> void follow(void (AppModel::*signal)(Arguments...))
    {
        connect(&model(), signal, this, &View::refreshSoon);
    }
    /// Refreshes before the window is painted next; any number of calls make one refresh.
    void refreshSoon();

    bool event(QEvent *event) override;

private:
    const ViewContext m_context;
    bool m_isDue = false;
};
