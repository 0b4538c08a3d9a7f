// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QMainWindow>

/// The one window of the program, with a size for its content. It shows itself bare first and is
/// furnished behind that: what content costs, the reading of fonts above all, then isn't waited for
/// in front of an empty screen.
class MainWindow : public QMainWindow
{
    Q_OBJECT

public:
    MainWindow();

    /// Takes the menu and the content over.
    void furnish(QMenuBar *menu, QWidget *content);
    /// Fills the screen, or goes back to the size before.
    void performZoom();
    /// Brings it up from wherever it is, on the right that `activationToken` gives: the desktop
    /// hands one to whoever the user has just asked something of. Empty for none.
    void bringToFront(const QString &activationToken = {});

Q_SIGNALS:
    void closed();
    /// It has been painted for the first time, bare.
    void appeared();
    /// It has been painted with its content for the first time.
    void furnished();

protected:
    void closeEvent(QCloseEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    enum class Stage { hidden, bare, awaitingContent, complete };

    Stage m_stage = Stage::hidden;
};
