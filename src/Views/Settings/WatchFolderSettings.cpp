// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Views/Settings/WatchFolderSettings.h"

#include "Views/Controls/Button.h"
#include "Views/Controls/TextLabel.h"
#include "Views/FileDialogs.h"
#include "Views/Look/Metrics.h"
#include "Views/Settings/SettingsRow.h"
#include "Views/Settings/WatchFolderRow.h"

#include <QHBoxLayout>
#include <QPointer>

using namespace Qt::StringLiterals;

using Look::ColorRole;
using Look::TextSize;

WatchFolderSettings::WatchFolderSettings(const ViewContext &context, QWidget *parent)
    : SettingsSection(context, u"watch.title", parent)
    , m_description(new TextLabel(TextSize::caption, ColorRole::secondaryText))
    , m_empty(new TextLabel(TextSize::body, ColorRole::secondaryText))
    , m_add(new Button)
{
    addIntroduction(m_description->wrapping());
    group()->addRow(buildAdding());
    connect(m_add, &QAbstractButton::clicked, this, &WatchFolderSettings::addFolder);
}

QWidget *WatchFolderSettings::buildAdding()
{
    auto *row = new QWidget;
    auto *places = new QHBoxLayout(row);
    SettingsRow::dress(row, places);
    m_add->setSymbol(u"plus.circle"_s);
    places->addWidget(m_empty);
    places->addStretch();
    places->addWidget(m_add);
    return row;
}

WatchFolderRow *WatchFolderSettings::makeRow()
{
    auto *row = new WatchFolderRow(context());
    connect(row, &WatchFolderRow::edited, this, &WatchFolderSettings::refreshSoon);
    return row;
}

void WatchFolderSettings::addFolder()
{
    context().dialogs.openFolder(
        this, [&model = model(), self = QPointer(this)](const QList<QUrl> &urls) {
            model.watchEngine()->add(urls.first(), std::nullopt);
            if (self) {
                self->refreshSoon();
            }
        });
}

void WatchFolderSettings::refresh()
{
    SettingsSection::refresh();
    m_description->setText(t(u"watch.desc"));
    m_empty->setText(t(u"watch.empty"));
    m_add->setWords(t(u"watch.add"));
    const WatchFolderEngine *engine = model().watchEngine();
    const auto configs = engine ? engine->configs() : QList<WatchFolderConfig>();
    m_add->setEnabled(engine != nullptr);
    m_empty->setVisible(configs.isEmpty());
    showRows(m_rows, configs, [this] { return makeRow(); });
}
