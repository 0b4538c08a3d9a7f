// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Views/Shell/WorkspaceView.h"

#include "Views/Controls/HairLine.h"
#include "Views/FileDrop.h"
#include "Views/Queue/QueueView.h"
#include "Views/Shell/ActionArea.h"
#include "Views/Shell/DividedSplitter.h"
#include "Views/Shell/FileSidebar.h"

#include <QHBoxLayout>

namespace {

// Leaves the panel more than half of the least window.
constexpr int firstQueueHeight = 184;
// Its header and one job.
constexpr int leastQueueHeight = 128;
constexpr int leastAreaHeight = 280;

} // namespace

WorkspaceView::WorkspaceView(const ViewContext &context, TopBar::ShowDropZone showDropZone,
                             QWidget *parent)
    : View(context, parent)
{
    buildSplitter();
    auto *rows = new QVBoxLayout(this);
    rows->setContentsMargins(0, 0, 0, 0);
    rows->setSpacing(0);
    rows->addWidget(new TopBar(context, std::move(showDropZone)));
    rows->addWidget(new HairLine(Qt::Horizontal));
    rows->addWidget(m_splitter, 1);
    connect(new FileDrop(this), &FileDrop::dropped, this,
            [this](const QList<QUrl> &urls) { model().addURLs(urls); });
    follow(&AppModel::jobsChanged);
    follow(&AppModel::showQueueChanged);
}

void WorkspaceView::buildSplitter()
{
    m_splitter = new DividedSplitter;
    m_splitter->addWidget(buildFileArea());
    m_queue = new QueueView(context());
    m_queue->setMinimumHeight(leastQueueHeight);
    m_queue->hide();
    m_splitter->addWidget(m_queue);
    m_splitter->setStretchFactor(0, 1);
    m_splitter->setStretchFactor(1, 0);
}

QWidget *WorkspaceView::buildFileArea()
{
    auto *area = new QWidget;
    area->setMinimumHeight(leastAreaHeight);
    auto *row = new QHBoxLayout(area);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(0);
    row->addWidget(new FileSidebar(context()));
    row->addWidget(new HairLine(Qt::Vertical));
    row->addWidget(new ActionArea(context()), 1);
    return area;
}

/// Jobs bring the queue up whatever the button says.
void WorkspaceView::refresh()
{
    showQueue(model().showQueue() || !model().jobs().isEmpty());
}

void WorkspaceView::showQueue(bool show)
{
    if (show == m_queue->isVisibleTo(m_splitter)) {
        return;
    }
    m_queue->setVisible(show);
    if (show && !m_queueHasSize) {
        // From now on the person's own share counts.
        m_queueHasSize = true;
        m_splitter->setSizes({m_splitter->height() - firstQueueHeight, firstQueueHeight});
    }
}
