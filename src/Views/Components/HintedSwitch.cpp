// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Views/Components/HintedSwitch.h"

#include "Views/Controls/Switch.h"
#include "Views/Controls/TextLabel.h"

#include <QVBoxLayout>

HintedSwitch::HintedSwitch(QWidget *parent)
    : QWidget(parent)
    , m_switch(new Switch)
    , m_hint(new TextLabel(Look::TextSize::caption, Look::ColorRole::secondaryText))
{
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    m_hint->wrapping();
    column->addWidget(m_switch);
    column->addWidget(m_hint);
    connect(m_switch, &QAbstractButton::clicked, this, &HintedSwitch::turned);
}

void HintedSwitch::setWords(const QString &words, const QString &hint)
{
    m_switch->setWords(words);
    // Under the words, which stand where they do only once there are some.
    m_hint->setContentsMargins(m_switch->wordsLeft(), 0, 0, 0);
    m_switch->setAccessibleDescription(hint);
    m_hint->setText(hint);
}

void HintedSwitch::setOn(bool on)
{
    m_switch->setChecked(on);
}
