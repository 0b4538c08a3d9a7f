// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Entry/MainWindow.h"

#include <QCloseEvent>
#include <QMenuBar>
#include <QScreen>

using namespace Qt::StringLiterals;

namespace {

// Of the content, which the menu stands above.
constexpr QSize firstSize{1040, 700};

} // namespace

MainWindow::MainWindow(QMenuBar *menu, QWidget *content)
{
    setWindowTitle(u"Morvix"_s);
    setMenuBar(menu);
    setCentralWidget(content);
    resize(firstSize.width(), firstSize.height() + menu->sizeHint().height());
    const QRect free = screen()->availableGeometry();
    move(free.center() - QRect(QPoint(), size()).center());
}

void MainWindow::performZoom()
{
    setWindowState(windowState() ^ Qt::WindowMaximized);
}

void MainWindow::bringToFront(const QString &activationToken)
{
    // Where Qt looks for it as it asks for the activation, and takes it away again.
    if (!activationToken.isEmpty()) {
        qputenv("XDG_ACTIVATION_TOKEN", activationToken.toUtf8());
    }
    setWindowState(windowState() & ~Qt::WindowMinimized);
    show();
    raise();
    activateWindow();
    qunsetenv("XDG_ACTIVATION_TOKEN");
}

void MainWindow::closeEvent(QCloseEvent *event)
{
    event->accept();
    Q_EMIT closed();
}

// Told when the whole window is on the screen: its own turn to paint comes before its parts'.
void MainWindow::paintEvent(QPaintEvent *event)
{
    QMainWindow::paintEvent(event);
    if (!m_hasAppeared) {
        m_hasAppeared = true;
        QMetaObject::invokeMethod(this, &MainWindow::appeared, Qt::QueuedConnection);
    }
}
