// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Views/Shell/ActionArea.h"

#include "Views/Controls/HairLine.h"
#include "Views/Controls/PanelScroll.h"
#include "Views/Controls/TextLabel.h"
#include "Views/Panels/PanelFactory.h"
#include "Views/Shell/ActionTabBar.h"
#include "Views/Shell/FileDetailHeader.h"

#include <QVBoxLayout>

namespace {

constexpr int panelPadding = 18;
constexpr int readingTop = 60;

} // namespace

ActionArea::ActionArea(const ViewContext &context, QWidget *parent)
    : View(context, parent)
    , m_header(new FileDetailHeader(context))
    , m_region(new PanelScroll)
    , m_reading(new TextLabel(Look::TextSize::body, Look::ColorRole::secondaryText))
{
    m_reading->setAlignment(Qt::AlignHCenter);
    m_reading->setContentsMargins(0, readingTop, 0, 0);
    m_header->hide();
    auto *rows = new QVBoxLayout(this);
    rows->setContentsMargins(0, 0, 0, 0);
    rows->setSpacing(0);
    rows->addWidget(new ActionTabBar(context));
    rows->addWidget(m_header);
    rows->addWidget(new HairLine(Qt::Horizontal));
    rows->addWidget(m_reading, 1);
    rows->addWidget(m_region, 1);
    follow(&AppModel::filesChanged);
    follow(&AppModel::selectedFileIDChanged);
    follow(&AppModel::actionChanged);
}

void ActionArea::refresh()
{
    const bool hasFile = model().selectedFile().has_value();
    m_reading->setText(t(u"common.probing"));
    m_header->setVisible(hasFile);
    m_reading->setVisible(!hasFile);
    m_region->setVisible(hasFile);
    const auto action = hasFile ? std::optional(model().action()) : std::nullopt;
    if (action != m_shownAction) {
        m_shownAction = action;
        exchange(action ? panel(*action) : nullptr);
    }
}

/// A panel that doesn't grow stands at the top.
QWidget *ActionArea::panel(ActionKind action)
{
    QWidget *panel = makePanel(action, context());
    auto *content = new QWidget;
    auto *rows = new QVBoxLayout(content);
    rows->setContentsMargins(panelPadding, panelPadding, panelPadding, panelPadding);
    rows->addWidget(panel);
    if (!(panel->sizePolicy().expandingDirections() & Qt::Vertical)) {
        rows->addStretch();
    }
    return content;
}

/// The panel before goes when nothing runs in it any more: a menu of its may still be open.
void ActionArea::exchange(QWidget *content)
{
    if (QWidget *before = m_region->takeWidget()) {
        before->hide();
        before->deleteLater();
    }
    if (content) {
        m_region->setWidget(content);
        content->show();
    }
}
