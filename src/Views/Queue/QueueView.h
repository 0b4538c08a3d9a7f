// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "Views/View.h"

class Button;
class QBoxLayout;
class RowList;
class SymbolButton;
class TextLabel;

/// The strip below the workspace that shows every job.
class QueueView : public View
{
    Q_OBJECT

public:
    explicit QueueView(const ViewContext &context, QWidget *parent = nullptr);

protected:
    void refresh() override;

private:
    QBoxLayout *buildHeader();
    RowList *buildList();
    void refreshHeader();
    void refreshList();
    void importQueue();
    void exportQueue();

    /// As shown; the jobs in it are followed.
    AppModel::JobList m_jobs;
    TextLabel *m_title;
    Button *m_pause;
    Button *m_import;
    Button *m_export;
    Button *m_clear;
    SymbolButton *m_fold;
    TextLabel *m_empty;
    RowList *m_list;
};
