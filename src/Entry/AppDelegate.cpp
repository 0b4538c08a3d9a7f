// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Entry/AppDelegate.h"

#include "App/AppModel.h"
#include "App/DropZonePanelController.h"
#include "App/FileURL.h"
#include "App/ServicesHandler.h"
#include "Entry/MainMenu.h"
#include "Entry/MainWindow.h"
#include "Platform/DesktopServices.h"
#include "Views/DropZonePanelWindow.h"
#include "Views/Shell/DesktopFileDialogs.h"
#include "Views/Shell/RootView.h"

#include <QAbstractSpinBox>
#include <QApplication>
#include <QComboBox>
#include <QLineEdit>
#include <QMenuBar>
#include <QMessageBox>

using namespace Qt::StringLiterals;

// A static library's resources are registered by whoever wants them; the macro allows no namespace.
static void initResources()
{
    Q_INIT_RESOURCE(morvix);
}

namespace {

// Device-independent pixels.
constexpr int aboutIconSide = 64;

QIcon applicationIcon()
{
    initResources();
    return QIcon(u":/app.morvix.Morvix.svg"_s);
}

/// The widget that edits: a field inside another control leaves the focus to that one.
QWidget *focusedEditor()
{
    QWidget *focused = QApplication::focusWidget();
    const bool holdsField = qobject_cast<QAbstractSpinBox *>(focused) != nullptr ||
                            qobject_cast<QComboBox *>(focused) != nullptr;
    return holdsField ? focused->findChild<QLineEdit *>() : focused;
}

/// Editors have slots of these names and no class in common.
void sendToFocusedEditor(const char *slot)
{
    QWidget *editor = focusedEditor();
    const QByteArray signature = QByteArray(slot) + "()";
    if (editor != nullptr && editor->metaObject()->indexOfSlot(signature.constData()) >= 0) {
        QMetaObject::invokeMethod(editor, slot);
    }
}

} // namespace

AppDelegate::AppDelegate(std::unique_ptr<AppModel> appModel,
                         std::shared_ptr<DesktopServices> desktop)
    : m_appModel(std::move(appModel))
    , m_desktop(std::move(desktop))
    , m_dialogs(std::make_unique<DesktopFileDialogs>(*m_appModel))
{
    DropZonePanelController::shared().setPanelFactory(
        [](AppModel &model) { return std::make_unique<DropZonePanelWindow>(model); });
}

AppDelegate::~AppDelegate()
{
    DropZonePanelController::shared().setPanelFactory({});
    m_window.reset();
}

void AppDelegate::applicationDidFinishLaunching()
{
    buildMenu();
    registerServices();
    makeMainWindow();
    m_window->bringToFront();
}

void AppDelegate::buildMenu()
{
    m_menu = std::make_unique<QMenuBar>();
    MainMenu::build(*m_menu, *this);
}

void AppDelegate::registerServices()
{
    m_servicesHandler = std::make_unique<ServicesHandler>(*m_appModel);
}

void AppDelegate::makeMainWindow()
{
    m_window = std::make_unique<MainWindow>();
    // Also with jobs running, and with the drop zone still floating.
    connect(m_window.get(), &MainWindow::closed, this, &AppDelegate::terminate);
    connect(m_window.get(), &MainWindow::appeared, this, &AppDelegate::furnishMainWindow);
    connect(m_window.get(), &MainWindow::furnished, this, &AppDelegate::finishBehindWindow);
}

void AppDelegate::furnishMainWindow()
{
    const auto showDropZone = [model = m_appModel.get()](bool visible) {
        DropZonePanelController::shared().setVisible(visible, *model);
    };
    m_window->furnish(m_menu.release(),
                      new RootView(ViewContext{*m_appModel, *m_desktop, *m_dialogs}, showDropZone));
}

void AppDelegate::finishBehindWindow()
{
    QApplication::setWindowIcon(applicationIcon());
    m_appModel->checkHardwareEncoders();
}

// The window first, here and below: the token goes through the environment, which the children that
// the files call for copy as they start.
void AppDelegate::applicationOpen(const QList<QUrl> &urls, const QString &activationToken)
{
    m_window->bringToFront(activationToken);
    m_appModel->addURLs(FileURL::filesAmong(urls));
}

void AppDelegate::applicationActivate(const QString &activationToken)
{
    m_window->bringToFront(activationToken);
}

void AppDelegate::performService(QuickAction action, const QList<QUrl> &urls,
                                 const QString &activationToken)
{
    m_window->bringToFront(activationToken);
    m_servicesHandler->handle(urls, action);
}

void AppDelegate::orderFrontStandardAboutPanel()
{
    auto *panel = new QMessageBox(QMessageBox::NoIcon, u"About Morvix"_s,
                                  u"<h3>Morvix</h3><p>Version " MORVIX_VERSION "</p>"_s,
                                  QMessageBox::Ok, m_window.get());
    panel->setIconPixmap(applicationIcon().pixmap(aboutIconSide));
    panel->setAttribute(Qt::WA_DeleteOnClose);
    panel->open();
}

void AppDelegate::openSettings()
{
    m_appModel->setShowSettings(true);
}

void AppDelegate::hide()
{
    m_window->showMinimized();
}

// The windows aren't asked: none of them has anything to say against it.
void AppDelegate::terminate()
{
    QCoreApplication::exit(0);
}

void AppDelegate::cut()
{
    sendToFocusedEditor("cut");
}

void AppDelegate::copy()
{
    sendToFocusedEditor("copy");
}

void AppDelegate::paste()
{
    sendToFocusedEditor("paste");
}

void AppDelegate::selectAll()
{
    sendToFocusedEditor("selectAll");
}

void AppDelegate::performMiniaturize()
{
    m_window->showMinimized();
}

void AppDelegate::performZoom()
{
    m_window->performZoom();
}
