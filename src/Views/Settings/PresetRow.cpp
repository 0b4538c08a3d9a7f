// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Views/Settings/PresetRow.h"

#include "Views/Controls/ElidedLabel.h"
#include "Views/Controls/SymbolButton.h"
#include "Views/Controls/SymbolView.h"
#include "Views/Look/Metrics.h"
#include "Views/Settings/SettingsRow.h"

#include <QHBoxLayout>

using namespace Qt::StringLiterals;

PresetRow::PresetRow(QWidget *parent)
    : QWidget(parent)
    , m_name(new ElidedLabel(Qt::ElideRight))
    , m_trash(new SymbolButton(u"trash"_s))
{
    auto *row = new QHBoxLayout(this);
    SettingsRow::dressList(this, row);
    m_trash->setSymbol(u"trash"_s, Look::ColorRole::red);
    row->addWidget(
        new SymbolView(u"bookmark"_s, Look::SymbolSize::normal, Look::ColorRole::secondaryText));
    row->addWidget(m_name, 1);
    row->addWidget(m_trash);
    connect(m_trash, &QAbstractButton::clicked, this, [this] { Q_EMIT thrownAway(m_id); });
}

void PresetRow::setItem(const UserPreset &preset)
{
    m_id = preset.id;
    m_name->setText(preset.name);
}

void PresetRow::setWords(const QString &words)
{
    m_trash->setWords(words);
}
