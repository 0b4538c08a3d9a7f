// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "SettingsFixture.h"

#include "Views/Controls/MenuPicker.h"

#include <QApplication>
#include <QFile>
#include <QJsonDocument>
#include <QScrollArea>
#include <QTest>

using namespace Qt::StringLiterals;

SettingsFixture::SettingsFixture()
    : m_presets(std::make_shared<PresetStore>(m_data.url({})))
    , m_engine(std::make_shared<WatchFolderEngine>(m_data.url({})))
{
}

void SettingsFixture::showSheet(AppLanguage language)
{
    start({.language = language, .collections = {m_presets, m_engine}});
    m_model->setShowSettings(true);
    show(new QWidget, {920, 640});
    m_sheet = new SettingsSheet(context(), m_window.get());
    settle();
}

void SettingsFixture::scrollTo(QWidget *widget)
{
    m_sheet->findChild<QScrollArea *>()->ensureWidgetVisible(widget);
    settle();
}

void SettingsFixture::reach(QWidget *widget)
{
    ASSERT_NE(widget, nullptr);
    scrollTo(widget);
    click(widget);
}

void SettingsFixture::pick(QWidget *picker, const QString &choice)
{
    auto *menu = qobject_cast<MenuPicker *>(picker);
    ASSERT_NE(menu, nullptr);
    const int wanted = menu->findText(choice);
    ASSERT_GE(wanted, 0) << choice.toStdString();
    menu->setFocus(Qt::TabFocusReason);
    const Qt::Key key = wanted < menu->currentIndex() ? Qt::Key_Up : Qt::Key_Down;
    while (menu->currentIndex() != wanted) {
        const int before = menu->currentIndex();
        QTest::keyClick(menu, key);
        ASSERT_NE(menu->currentIndex(), before);
    }
    settle();
}

QUuid SettingsFixture::savePreset(const QString &name)
{
    m_presets->upsert(name, oneMegabyte(), std::nullopt);
    return m_presets->presets().first().id;
}

QJsonArray SettingsFixture::storedFolders() const
{
    QFile file(m_data.path(u"watchfolders.json"_s));
    EXPECT_TRUE(file.open(QIODevice::ReadOnly));
    return QJsonDocument::fromJson(file.readAll()).array();
}
