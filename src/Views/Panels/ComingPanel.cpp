// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Views/Panels/ComingPanel.h"

#include "Views/Controls/SymbolView.h"
#include "Views/Controls/TextLabel.h"
#include "Views/Look/Metrics.h"

#include <QVBoxLayout>

using Look::ColorRole;
using Look::TextSize;

namespace {

constexpr int symbolSide = 34;
constexpr int roomAbove = 60;

} // namespace

ComingPanel::ComingPanel(ActionKind action, const ViewContext &context, QWidget *parent)
    : View(context, parent)
    , m_action(action)
    , m_title(new TextLabel(TextSize::title, ColorRole::text, QFont::DemiBold))
    , m_subtitle(new TextLabel(TextSize::body, ColorRole::secondaryText))
{
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(0, roomAbove, 0, 0);
    column->setSpacing(Look::Space::small);
    column->addWidget(new SymbolView(symbolName(action), symbolSide, ColorRole::accent), 0,
                      Qt::AlignHCenter);
    column->addWidget(m_title, 0, Qt::AlignHCenter);
    column->addWidget(m_subtitle, 0, Qt::AlignHCenter);
    column->addStretch();
}

void ComingPanel::refresh()
{
    m_title->setText(t(titleKey(m_action)));
    m_subtitle->setText(t(subtitleKey(m_action)));
}
