// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Entry/MainWindow.h"

#include "Engine/ChildSpawner.h"
#include "Views/Look/Metrics.h"

#include <QCloseEvent>
#include <QMenuBar>
#include <QScreen>

#include <mutex>

using namespace Qt::StringLiterals;

namespace {

// Of the content, which the menu stands above.
constexpr QSize firstSize{1040, 700};

} // namespace

MainWindow::MainWindow()
{
    setWindowTitle(u"Morvix"_s);
    resize(firstSize.width(), firstSize.height() + Look::Height::menuBar);
    const QRect free = screen()->availableGeometry();
    move(free.center() - QRect(QPoint(), size()).center());
}

// The menu's height is fixed so that the window's is known before there are fonts to ask.
void MainWindow::furnish(QMenuBar *menu, QWidget *content)
{
    menu->setFixedHeight(Look::Height::menuBar);
    setMenuBar(menu);
    setCentralWidget(content);
    m_stage = Stage::awaitingContent;
    update();
}

void MainWindow::performZoom()
{
    setWindowState(windowState() ^ Qt::WindowMaximized);
}

void MainWindow::bringToFront(const QString &activationToken)
{
    const std::scoped_lock guard(ChildSpawner::environmentLock());
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
    if (m_stage == Stage::hidden) {
        m_stage = Stage::bare;
        QMetaObject::invokeMethod(this, &MainWindow::appeared, Qt::QueuedConnection);
    } else if (m_stage == Stage::awaitingContent) {
        m_stage = Stage::complete;
        QMetaObject::invokeMethod(this, &MainWindow::furnished, Qt::QueuedConnection);
    }
}
