// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Views/Shell/LandingView.h"

#include "Views/Controls/AdaptiveGrid.h"
#include "Views/Controls/HairLine.h"
#include "Views/Controls/PanelScroll.h"
#include "Views/Controls/TextLabel.h"
#include "Views/Look/Metrics.h"
#include "Views/Shell/ActionCard.h"
#include "Views/Shell/DropZone.h"

#include <QVBoxLayout>

using Look::ColorRole;
using Look::Space::huge;
using Look::Space::large;
using Look::Space::medium;

namespace {

// Wider lines of cards fall apart on a large screen.
constexpr int mostColumnWidth = 960;
constexpr AdaptiveGrid::Shape gridShape{.leastColumnWidth = 200, .mostColumns = 3, .spacing = 10};

} // namespace

LandingView::LandingView(const ViewContext &context, TopBar::ShowDropZone showDropZone,
                         QWidget *parent)
    : View(context, parent)
    , m_privacy(new TextLabel(Look::TextSize::body, ColorRole::secondaryText))
    , m_heroCopy(new TextLabel(Look::TextSize::body, ColorRole::secondaryText))
{
    auto *rows = new QVBoxLayout(this);
    rows->setContentsMargins(0, 0, 0, 0);
    rows->setSpacing(0);
    rows->addWidget(new TopBar(context, std::move(showDropZone)));
    rows->addWidget(new HairLine(Qt::Horizontal));
    auto *scroll = new PanelScroll;
    scroll->setAlignment(Qt::AlignHCenter | Qt::AlignTop);
    auto *column = new QWidget;
    // Before it is filled: each thing that a scroll area is told has it lay out the whole of it.
    scroll->setWidget(column);
    rows->addWidget(scroll, 1);
    buildColumn(column);
}

void LandingView::buildColumn(QWidget *column)
{
    column->setMaximumWidth(mostColumnWidth);
    auto *rows = new QVBoxLayout(column);
    rows->setContentsMargins(huge, large, huge, large);
    rows->setSpacing(medium);
    rows->addWidget(new DropZone(context()));
    rows->addWidget(m_privacy, 0, Qt::AlignHCenter);
    rows->addSpacing(Look::Space::tiny);
    rows->addWidget(new ActionCard(context(), ActionKind::targetSize, ActionCard::Size::hero));
    rows->addWidget(m_heroCopy, 0, Qt::AlignHCenter);
    rows->addSpacing(Look::Space::tiny);
    rows->addWidget(othersGrid());
    rows->addStretch();
}

QWidget *LandingView::othersGrid()
{
    auto *cells = new QWidget;
    auto *grid = new AdaptiveGrid(gridShape, cells);
    for (const ActionKind kind : allCases<ActionKind>()) {
        if (kind != ActionKind::targetSize) {
            grid->addWidget(new ActionCard(context(), kind, ActionCard::Size::plain));
        }
    }
    return cells;
}

void LandingView::refresh()
{
    m_privacy->setText(t(u"landing.privacy"));
    m_heroCopy->setText(t(u"landing.hero.copy"));
}
