// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "Views/View.h"

class ElidedLabel;
class LatestJobs;
class StatusDot;
class SymbolButton;

/// One file in the list. It is handed from file to file as the list scrolls.
class FileRow : public View
{
    Q_OBJECT

public:
    /// In device-independent pixels.
    static constexpr int rowHeight = 66;

    FileRow(const ViewContext &context, LatestJobs &latestJobs, QWidget *parent = nullptr);

    const VideoFile &file() const { return m_file; }
    bool isSelected() const { return m_isSelected; }
    /// Shows that file from now on.
    void setFile(const VideoFile &file, bool selected);
    /// Draws the ring of the focus, which the list holds for its rows.
    void setRinged(bool ringed);
    bool isRinged() const { return m_isRinged; }
    /// The menu of what can be done with the file; it goes when it is closed.
    void showMenu(QPoint globalPosition);

protected:
    void refresh() override;
    void resizeEvent(QResizeEvent *event) override;
    void enterEvent(QEnterEvent *event) override;
    void leaveEvent(QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void contextMenuEvent(QContextMenuEvent *event) override;

private:
    void build();
    void refreshEstimate();
    void refreshRemove();

    LatestJobs &m_latestJobs;
    VideoFile m_file;
    bool m_isSelected = false;
    bool m_isRinged = false;
    ElidedLabel *m_name;
    ElidedLabel *m_details;
    ElidedLabel *m_estimate;
    SymbolButton *m_remove;
    StatusDot *m_statusDot;
};
