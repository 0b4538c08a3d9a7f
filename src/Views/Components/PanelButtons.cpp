// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Views/Components/PanelButtons.h"

#include "Views/Controls/Button.h"
#include "Views/Look/Metrics.h"

#include <QHBoxLayout>

using namespace Qt::StringLiterals;

PanelButtons::PanelButtons(const ViewContext &context, AddAll addAll, QWidget *parent)
    : View(context, parent)
    , m_offer(addAll)
    , m_add(new Button(Button::Kind::prominent))
    , m_addAll(new Button)
{
    auto *row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(Look::Space::small);
    m_add->setSymbol(u"plus.circle.fill"_s);
    row->addWidget(m_add);
    row->addWidget(m_addAll);
    row->addStretch();
    connect(m_add, &QAbstractButton::clicked, this, &PanelButtons::add);
    connect(m_addAll, &QAbstractButton::clicked, this, &PanelButtons::addAll);
    follow(&AppModel::filesChanged);
}

void PanelButtons::setEnabledToAdd(bool enabled)
{
    if (enabled != m_isEnabledToAdd) {
        m_isEnabledToAdd = enabled;
        refreshSoon();
    }
}

void PanelButtons::refresh()
{
    const qsizetype count = model().files().size();
    m_add->setWords(t(u"common.add"));
    m_add->setEnabled(m_isEnabledToAdd);
    m_addAll->setWords(u"%1 (%2)"_s.arg(t(u"common.addall"), QString::number(count)));
    m_addAll->setEnabled(m_isEnabledToAdd);
    m_addAll->setVisible(m_offer == AddAll::offered && count >= 2);
}
