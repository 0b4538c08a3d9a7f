// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QMainWindow>

/// The one window of the program, with a size for its content.
class MainWindow : public QMainWindow
{
    Q_OBJECT

public:
    /// Takes the menu and the content over. Device-independent pixels.
    MainWindow(QMenuBar *menu, QWidget *content);

    /// Fills the screen, or goes back to the size before.
    void performZoom();
    /// Brings it up from wherever it is, on the right that `activationToken` gives: the desktop
    /// hands one to whoever the user has just asked something of. Empty for none.
    void bringToFront(const QString &activationToken = {});

Q_SIGNALS:
    void closed();
    /// It has been painted for the first time.
    void appeared();

protected:
    void closeEvent(QCloseEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    bool m_hasAppeared = false;
};
