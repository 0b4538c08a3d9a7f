// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "Shell/ShellFixture.h"

#include <QAbstractButton>

/// The whole window over real films and the real tools, worked as a person works it: all that
/// happens comes from the pointer, the keyboard, drops and answered dialogs.
class WindowFixture : public ShellFixture
{
protected:
    WindowFixture();

    /// A film of some 250 kB a second in the folder of films.
    QUrl makeClip(const QString &name, double seconds = 2) const;
    /// From now on the real probe waits for the Gate of its film where there is one.
    void holdRealProbes();

    /// Drops files on that part of the window, by way of the window, as the desktop does. Whether
    /// they were taken.
    bool dropOn(QWidget *part, const QList<QUrl> &urls);
    /// Drops where the page in sight takes files, and waits until they are read.
    void dropAndRead(const QList<QUrl> &urls);
    void waitUntilRead();

    /// Scrolls to the widget where it lies in a scrolling part and clicks it.
    void reach(QWidget *widget);
    void reachButton(const QString &name) { reach(find<QAbstractButton>(name)); }
    /// Types a size into the card for it.
    void typeTarget(const QString &megabytes);

    /// Goes on with Tab until the widget of that name has the focus; false when it never comes.
    bool tabTo(const QString &name);
    static QString focusedName();
    /// Opens the menu that has the focus with Space and takes the entry of that number, from 1.
    void chooseByKeys(int entry);

    std::shared_ptr<Job> lastJob() const { return m_model->jobs().last(); }
    /// Until ffmpeg has reported of the job, which goes on.
    void waitUntilUnderWay(const std::shared_ptr<Job> &job);
    /// The first of the texts in sight that has these words in it; empty when there is none.
    QString textWith(const QString &words) const;

private:
    const TempFolder m_holders;
    std::optional<ScopedEnvironment> m_holdersPath;
};
