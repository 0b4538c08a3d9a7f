// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Views/Settings/PresetSettings.h"

#include "Views/Controls/TextLabel.h"
#include "Views/Settings/PresetRow.h"
#include "Views/Settings/SettingsRow.h"

#include <QHBoxLayout>

PresetSettings::PresetSettings(const ViewContext &context, QWidget *parent)
    : SettingsSection(context, u"preset.manage", parent)
    , m_emptyWords(new TextLabel(Look::TextSize::body, Look::ColorRole::secondaryText))
    , m_empty(buildEmpty())
{
    group()->addRow(m_empty);
    follow(&AppModel::presetsChanged);
}

QWidget *PresetSettings::buildEmpty()
{
    auto *row = new QWidget;
    auto *places = new QHBoxLayout(row);
    SettingsRow::dress(row, places);
    places->addWidget(m_emptyWords);
    return row;
}

PresetRow *PresetSettings::makeRow()
{
    auto *row = new PresetRow;
    connect(row, &PresetRow::thrownAway, this,
            [this](const QUuid &id) { model().deletePreset(id); });
    return row;
}

void PresetSettings::refresh()
{
    SettingsSection::refresh();
    const auto presets = model().presets() ? model().presets()->presets() : QList<UserPreset>();
    m_emptyWords->setText(t(u"preset.none"));
    m_empty->setVisible(presets.isEmpty());
    showRows(m_rows, presets, [this] { return makeRow(); });
    for (PresetRow *row : std::as_const(m_rows)) {
        row->setWords(t(u"common.remove"));
    }
}
