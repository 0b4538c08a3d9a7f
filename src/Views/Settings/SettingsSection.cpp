// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Views/Settings/SettingsSection.h"

#include "Views/Controls/Switch.h"
#include "Views/Controls/TextLabel.h"
#include "Views/Look/Metrics.h"
#include "Views/Settings/SettingsRow.h"

#include <QApplication>

SettingsSection::SettingsSection(const ViewContext &context, const char16_t *heading,
                                 QWidget *parent)
    : View(context, parent)
    , m_headingKey(heading)
    , m_heading(new TextLabel(Look::TextSize::body, Look::ColorRole::text, QFont::DemiBold))
    , m_column(new QVBoxLayout(this))
    , m_group(new SettingsGroup)
{
    m_column->setContentsMargins(0, 0, 0, 0);
    m_column->setSpacing(Look::Space::small);
    m_column->addWidget(m_heading);
    m_column->addWidget(m_group);
    m_heading->setVisible(m_headingKey != nullptr);
}

void SettingsSection::addIntroduction(QWidget *introduction)
{
    m_column->insertWidget(m_column->indexOf(m_group), introduction);
}

SettingsRow *SettingsSection::addToggle(const SettingsToggle &toggle)
{
    auto *control = new Switch;
    auto *row = new SettingsRow(control);
    m_group->addRow(row);
    m_toggles.append({toggle, row, control});
    connect(control, &QAbstractButton::clicked, this,
            [this, turn = toggle.turn](bool on) { (model().*turn)(on); });
    follow(toggle.changed);
    return row;
}

void SettingsSection::refresh()
{
    if (m_headingKey) {
        m_heading->setText(t(m_headingKey));
    }
    for (const ShownToggle &shown : std::as_const(m_toggles)) {
        shown.row->setWords(t(shown.toggle.words));
        shown.control->setChecked((model().*shown.toggle.isOn)());
    }
}

// The focus goes on to what comes next, and isn't lost with the row.
void SettingsSection::discard(QWidget *row)
{
    if (row->isAncestorOf(QApplication::focusWidget())) {
        focusNextChild();
    }
    m_group->column()->removeWidget(row);
    row->hide();
    row->deleteLater();
}
