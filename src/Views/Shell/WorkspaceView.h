// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "Views/Shell/TopBar.h"
#include "Views/View.h"

class QSplitter;
class QueueView;

/// The page with files: the list of them, the panel of the action in force, and the queue below.
/// Takes files that are dropped anywhere on it.
class WorkspaceView : public View
{
    Q_OBJECT

public:
    WorkspaceView(const ViewContext &context, TopBar::ShowDropZone showDropZone,
                  QWidget *parent = nullptr);

protected:
    void refresh() override;

private:
    QWidget *buildFileArea();
    void buildSplitter();
    void showQueue(bool show);

    QSplitter *m_splitter;
    QueueView *m_queue;
    bool m_queueHasSize = false;
};
