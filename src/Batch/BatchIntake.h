// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "App/AppModel.h"
#include "Batch/BatchOptions.h"
#include "Batch/Report.h"
#include "Engine/QueueFile.h"

#include <QObject>

#include <optional>

/// One file to work on, as the command line or a queue file names it.
struct BatchItem {
    Subject subject;
    JobMode mode;
    /// Absent until its probe has ended well.
    std::optional<VideoFile> file;
};

/// Takes the files of one call in through the application object. Main thread only.
class BatchIntake : public QObject
{
    Q_OBJECT

public:
    /// Both must outlive it.
    BatchIntake(const BatchOptions &options, AppModel &model);

    /// Looks at what is named and has the rest probed.
    void start();

    /// In the order of the command line or of the queue file.
    const QList<BatchItem> &items() const { return m_items; }
    /// Those whose probe ended well, in that order; tells of the others and keeps none.
    QList<BatchItem> takeProbedItems();

Q_SIGNALS:
    /// Something can't be taken in; the code is that of ExitCode.
    void failed(const Subject &subject, const QString &message, int code);
    /// All probes have ended. Not sent where there is none.
    void ready();

private:
    bool isUsable(const Subject &subject);
    void takeFiles();
    void takeProbed(qsizetype firstPlace, const VideoFile &file);
    void tellLeftOut(const QList<QUrl> &urls);
    void takeQueue();
    void takeEntry(qint64 number, const ExportedJob &entry);

    const BatchOptions &m_options;
    AppModel &m_model;
    QList<BatchItem> m_items;
};
