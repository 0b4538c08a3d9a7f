// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "ViewFixture.h"
#include "Views/Queue/JobRow.h"
#include "support/Printing.h"

#include <QList>
#include <QMenu>

#include <gmock/gmock.h>

/// A window with the queue alone. The queue is paused, so that a job is in the state that it is
/// put in.
class QueueFixture : public ViewFixture
{
protected:
    QueueFixture();

    void showQueue(QSize size = {920, 320});
    /// A job over a film of that name, in that state.
    std::shared_ptr<Job> add(const QString &name, const Job::State &state = Job::Queued());
    /// Ended with one result beside the film.
    Job::Finished result(qint64 originalBytes, qint64 outputBytes,
                         const std::optional<QString> &note = {}) const;

    /// The rows in sight, from the top.
    QList<JobRow *> rows() const;
    /// What can be read in the row, in its order.
    static QStringList textsOf(const JobRow *row);
    /// The spoken names of its buttons that can be seen.
    static QStringList actionsOf(const JobRow *row);
};
