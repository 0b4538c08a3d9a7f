// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Queue/QueueFixture.h"

#include "Views/Controls/ElidedLabel.h"
#include "Views/Controls/TextLabel.h"
#include "Views/Queue/QueueView.h"

#include <QAbstractButton>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

QString labelText(const QWidget *widget)
{
    if (const auto *label = qobject_cast<const ElidedLabel *>(widget)) {
        return label->text();
    }
    const auto *label = qobject_cast<const TextLabel *>(widget);
    return label ? label->text() : QString();
}

} // namespace

QueueFixture::QueueFixture()
{
    start();
    m_model->setQueuePaused(true);
}

void QueueFixture::showQueue(QSize size)
{
    show(new QueueView(context()), size);
}

std::shared_ptr<Job> QueueFixture::add(const QString &name, const Job::State &state)
{
    const std::shared_ptr<Job> job = enqueue(film(name));
    job->setState(state);
    if (m_window) {
        settle();
    }
    return job;
}

Job::Finished QueueFixture::result(qint64 originalBytes, qint64 outputBytes,
                                   const std::optional<QString> &note) const
{
    return {{m_films.url(u"result.mp4"_s)}, originalBytes, outputBytes, note};
}

QList<JobRow *> QueueFixture::rows() const
{
    QList<JobRow *> rows = m_window->findChildren<JobRow *>();
    rows.removeIf([](const JobRow *row) { return !row->isVisible(); });
    std::ranges::sort(rows, {}, [](const JobRow *row) { return row->y(); });
    return rows;
}

QStringList QueueFixture::textsOf(const JobRow *row)
{
    QStringList texts;
    for (const QWidget *widget : row->findChildren<QWidget *>()) {
        const QString text = labelText(widget);
        if (widget->isVisible() && !text.isEmpty()) {
            texts += text;
        }
    }
    return texts;
}

QStringList QueueFixture::actionsOf(const JobRow *row)
{
    QStringList names;
    for (const QAbstractButton *button : row->findChildren<QAbstractButton *>()) {
        if (button->isVisible()) {
            names += button->accessibleName();
        }
    }
    return names;
}
