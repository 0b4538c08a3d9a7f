// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Views/DropZonePanelWindow.h"

#include "App/AppModel.h"
#include "Views/FloatingDropZoneView.h"

#include <QCloseEvent>
#include <QMouseEvent>
#include <QScreen>
#include <QVBoxLayout>
#include <QWindow>

using namespace Qt::StringLiterals;

namespace {

// Device-independent pixels, without the frame.
constexpr QSize firstSize{372, 132};

} // namespace

DropZonePanelWindow::DropZonePanelWindow(AppModel &appModel)
    : QWidget(nullptr, Qt::Tool | Qt::WindowStaysOnTopHint)
    , m_appModel(appModel)
{
    setWindowTitle(u"Morvix"_s);
    setAttribute(Qt::WA_ShowWithoutActivating);
    setAttribute(Qt::WA_QuitOnClose, false);
    // Some desktops hide the tool windows of a program that isn't the active one, and this one is
    // for dragging files out of another program; the windows that they take for dialogs stay.
    setAttribute(Qt::WA_X11NetWmWindowTypeDialog);
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->addWidget(new FloatingDropZoneView(appModel, this));
    resize(firstSize);
    move(screen()->availableGeometry().topLeft());
}

void DropZonePanelWindow::orderFront()
{
    // Said each time, or window managers would look for a new place.
    move(pos());
    show();
    raise();
}

void DropZonePanelWindow::orderOut()
{
    hide();
}

void DropZonePanelWindow::mousePressEvent(QMouseEvent *event)
{
    if (event->button() == Qt::LeftButton) {
        windowHandle()->startSystemMove();
    }
}

void DropZonePanelWindow::closeEvent(QCloseEvent *event)
{
    m_appModel.setShowDropZonePanel(false);
    event->accept();
}
