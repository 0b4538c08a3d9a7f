// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Entry/MainMenu.h"

#include "Entry/AppDelegate.h"

#include <QMenu>
#include <QMenuBar>

#include <array>

namespace {

/// An item, or a line between items where the title is null.
struct MenuItem {
    const char *menu;
    const char *title;
    const char *shortcut;
    void (AppDelegate::*perform)();
};

constexpr const char *none = "";
constexpr const char *line = nullptr;

constexpr auto items = std::to_array<MenuItem>({
    {"Morvix", "About Morvix", none, &AppDelegate::orderFrontStandardAboutPanel},
    {"Morvix", line, none, nullptr},
    {"Morvix", "Settings…", "Ctrl+,", &AppDelegate::openSettings},
    {"Morvix", line, none, nullptr},
    {"Morvix", "Hide Morvix", "Ctrl+H", &AppDelegate::hide},
    {"Morvix", line, none, nullptr},
    {"Morvix", "Quit Morvix", "Ctrl+Q", &AppDelegate::terminate},
    {"Edit", "Cut", "Ctrl+X", &AppDelegate::cut},
    {"Edit", "Copy", "Ctrl+C", &AppDelegate::copy},
    {"Edit", "Paste", "Ctrl+V", &AppDelegate::paste},
    {"Edit", "Select All", "Ctrl+A", &AppDelegate::selectAll},
    {"Window", "Minimize", "Ctrl+M", &AppDelegate::performMiniaturize},
    {"Window", "Zoom", none, &AppDelegate::performZoom},
});

QMenu *menuTitled(QMenuBar &bar, const QString &title)
{
    const QList<QAction *> menus = bar.actions();
    const bool isLast = !menus.isEmpty() && menus.last()->text() == title;
    return isLast ? menus.last()->menu() : bar.addMenu(title);
}

void addItem(QMenu &menu, const MenuItem &item, AppDelegate &delegate)
{
    if (item.title == line) {
        menu.addSeparator();
        return;
    }
    QAction *action = menu.addAction(QString::fromUtf8(item.title));
    action->setShortcut(QKeySequence(QString::fromLatin1(item.shortcut)));
    QObject::connect(action, &QAction::triggered, &delegate, item.perform);
}

} // namespace

void MainMenu::build(QMenuBar &bar, AppDelegate &delegate)
{
    for (const MenuItem &item : items) {
        addItem(*menuTitled(bar, QString::fromLatin1(item.menu)), item, delegate);
    }
}
