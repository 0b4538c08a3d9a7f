// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "Views/View.h"

class Button;
class FileRow;
class LatestJobs;
class RowList;

/// The list of the files that are loaded. One stop of Tab: there the arrow keys, Home, End and the
/// page keys move the selection, Delete removes the selected file and the menu key opens its menu.
class FileSidebar : public View
{
    Q_OBJECT

public:
    explicit FileSidebar(const ViewContext &context, QWidget *parent = nullptr);

protected:
    void refresh() override;
    void focusInEvent(QFocusEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void contextMenuEvent(QContextMenuEvent *event) override;

private:
    void buildList();
    void buildBrowse();
    void fill(FileRow &row, qsizetype index);
    /// -1 when nothing is selected.
    qsizetype selectedIndex() const;
    void select(qsizetype index);
    /// Whether the key is one of the list's.
    bool handleKey(int key);
    void removeSelected();
    void showMenuOfSelected();
    void handleFocus(const QFocusEvent &event);
    void setRinged(bool ringed);

    LatestJobs *m_latestJobs;
    RowList *m_list;
    Button *m_browse;
    bool m_isRinged = false;
};
