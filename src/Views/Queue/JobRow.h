// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "Models/Job.h"
#include "Views/View.h"

#include <QMimeData>
#include <QPoint>

#include <memory>
#include <optional>

class Button;
class ElidedLabel;
class JobStatusLine;
class QAction;
class QBoxLayout;
class QMenu;
class SymbolButton;
class SymbolView;
class TextLabel;

/// One job: what it is, how it stands, and what can be done about it. Is handed from job to job.
/// The files of a finished job can be dragged out of it.
class JobRow : public View
{
    Q_OBJECT

public:
    /// Of every row.
    static constexpr int rowHeight = 56;

    explicit JobRow(const ViewContext &context, QWidget *parent = nullptr);

    /// Follows that job from now on, and no other.
    void setJob(const std::shared_ptr<Job> &job);
    /// The output as it goes to other programs; null while there is none.
    std::unique_ptr<QMimeData> outputData() const;

protected:
    void refresh() override;
    void paintEvent(QPaintEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;

private:
    QBoxLayout *buildColumn();
    void buildActions(QBoxLayout *row);
    void buildMenu();
    void refreshActions();
    void refreshMenu();
    /// Empty unless the job is finished.
    QList<QUrl> outputURLs() const;
    void openOutput();
    void share();
    void confirmTrashOriginal();

    std::shared_ptr<Job> m_job;
    SymbolView *m_symbol;
    ElidedLabel *m_name;
    TextLabel *m_mode;
    JobStatusLine *m_status;
    Button *m_cancel;
    Button *m_retry;
    Button *m_reveal;
    SymbolButton *m_more;
    QAction *m_open;
    QAction *m_copy;
    QAction *m_share;
    QAction *m_trash;
    /// Where the left button went down, until it has become a drag.
    std::optional<QPoint> m_pressed;
};
