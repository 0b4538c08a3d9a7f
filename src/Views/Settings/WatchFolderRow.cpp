// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Views/Settings/WatchFolderRow.h"

#include "Views/Controls/ElidedLabel.h"
#include "Views/Controls/MenuPicker.h"
#include "Views/Controls/Switch.h"
#include "Views/Controls/SymbolButton.h"
#include "Views/Controls/TextLabel.h"
#include "Views/Look/Metrics.h"
#include "Views/Settings/SettingsRow.h"

#include <QHBoxLayout>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

constexpr int presetWidth = 152;

} // namespace

WatchFolderRow::WatchFolderRow(const ViewContext &context, QWidget *parent)
    : View(context, parent)
    , m_enabled(new Switch)
    , m_path(new ElidedLabel(Qt::ElideMiddle))
    , m_presetWords(new TextLabel(Look::TextSize::body, Look::ColorRole::secondaryText))
    , m_preset(new MenuPicker)
    , m_remove(new SymbolButton(u"minus.circle"_s))
{
    buildRow();
    connectControls();
    follow(&AppModel::presetsChanged);
}

void WatchFolderRow::buildRow()
{
    auto *row = new QHBoxLayout(this);
    SettingsRow::dressList(this, row);
    QMargins margins = row->contentsMargins();
    margins.setLeft(margins.left() - Switch::overhang);
    row->setContentsMargins(margins);
    m_remove->setSymbol(u"minus.circle"_s, Look::ColorRole::red);
    m_preset->setFixedWidth(presetWidth);
    row->addWidget(m_enabled);
    row->addWidget(m_path, 1);
    row->addSpacing(Look::Space::tiny);
    row->addWidget(m_presetWords);
    row->addWidget(m_preset);
    row->addWidget(m_remove);
}

void WatchFolderRow::connectControls()
{
    connect(m_enabled, &QAbstractButton::clicked, this, [this](bool on) {
        model().watchEngine()->setEnabled(on, m_config.id);
        Q_EMIT edited();
    });
    connect(m_preset, &QComboBox::activated, this, &WatchFolderRow::pickPreset);
    connect(m_remove, &QAbstractButton::clicked, this, [this] {
        model().watchEngine()->remove(m_config.id);
        Q_EMIT edited();
    });
}

void WatchFolderRow::setItem(const WatchFolderConfig &config)
{
    if (config != m_config) {
        m_config = config;
        refreshSoon();
    }
}

// By what the menu showed, whatever has become of the presets since. The first choice is none.
void WatchFolderRow::pickPreset(int index)
{
    const auto id = index > 0 ? std::optional(m_choices.at(index - 1)) : std::nullopt;
    model().watchEngine()->setPreset(id, m_config.id);
    Q_EMIT edited();
}

void WatchFolderRow::refresh()
{
    m_enabled->setChecked(m_config.enabled);
    m_enabled->setAccessibleName(m_config.path);
    m_path->setText(m_config.path);
    m_presetWords->setText(t(u"watch.preset"));
    m_preset->setAccessibleName(t(u"watch.preset"));
    m_remove->setWords(t(u"common.remove"));
    showPresets();
}

void WatchFolderRow::showPresets()
{
    QStringList names{u"—"_s};
    qsizetype shown = 0;
    m_choices.clear();
    const auto presets = model().presets() ? model().presets()->presets() : QList<UserPreset>();
    for (const UserPreset &preset : presets) {
        // A preset that is gone acts like none, and is shown so.
        shown = preset.id == m_config.presetID ? names.size() : shown;
        names += preset.name;
        m_choices += preset.id;
    }
    m_preset->setWords(names);
    m_preset->setShown(static_cast<int>(shown));
}
