// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Views/Queue/QueueView.h"

#include "Views/Controls/Button.h"
#include "Views/Controls/HairLine.h"
#include "Views/Controls/RowList.h"
#include "Views/Controls/SymbolButton.h"
#include "Views/Controls/SymbolView.h"
#include "Views/Controls/TextLabel.h"
#include "Views/FileDialogs.h"
#include "Views/Look/Metrics.h"
#include "Views/Queue/JobRow.h"

#include <QHBoxLayout>

#include <algorithm>

using namespace Qt::StringLiterals;
using Look::ColorRole;

namespace {

constexpr int leastListHeight = 80;

bool isPending(const std::shared_ptr<Job> &job)
{
    const Job::Outcome outcome = job->outcome();
    return outcome == Job::Outcome::queued || outcome == Job::Outcome::analyzing ||
           outcome == Job::Outcome::running;
}

bool isQueued(const std::shared_ptr<Job> &job)
{
    return job->outcome() == Job::Outcome::queued;
}

} // namespace

QueueView::QueueView(const ViewContext &context, QWidget *parent)
    : View(context, parent)
    , m_empty(new TextLabel(Look::TextSize::body, ColorRole::secondaryText))
    , m_list(buildList())
{
    m_empty->setAlignment(Qt::AlignCenter);
    m_empty->setMinimumHeight(leastListHeight);
    auto *rows = new QVBoxLayout(this);
    rows->setContentsMargins(0, 0, 0, 0);
    rows->setSpacing(0);
    rows->addLayout(buildHeader());
    rows->addWidget(new HairLine(Qt::Horizontal));
    rows->addWidget(m_empty, 1);
    rows->addWidget(m_list, 1);
    follow(&AppModel::jobsChanged);
    follow(&AppModel::queuePausedChanged);
}

QBoxLayout *QueueView::buildHeader()
{
    m_title = new TextLabel(Look::TextSize::body, ColorRole::text, QFont::DemiBold);
    m_pause = new Button(Button::Kind::quiet);
    m_import = new Button(Button::Kind::quiet);
    m_export = new Button(Button::Kind::quiet);
    m_clear = new Button(Button::Kind::quiet);
    m_fold = new SymbolButton(u"chevron.down"_s);
    connect(m_pause, &QAbstractButton::clicked, this,
            [this] { model().setQueuePaused(!model().queuePaused()); });
    connect(m_import, &QAbstractButton::clicked, this, &QueueView::importQueue);
    connect(m_export, &QAbstractButton::clicked, this, &QueueView::exportQueue);
    connect(m_clear, &QAbstractButton::clicked, &model(), &AppModel::clearFinished);
    connect(m_fold, &QAbstractButton::clicked, this, [this] { model().setShowQueue(false); });
    auto *header = new QHBoxLayout;
    header->setContentsMargins(Look::Space::large, Look::Space::tiny, Look::Space::small,
                               Look::Space::tiny);
    header->setSpacing(Look::Space::tiny);
    header->addWidget(new SymbolView(u"list.bullet.rectangle"_s, Look::SymbolSize::normal,
                                     ColorRole::secondaryText, Look::SymbolSize::large));
    header->addSpacing(Look::Space::tiny);
    header->addWidget(m_title);
    header->addStretch();
    for (Button *button : {m_pause, m_import, m_export, m_clear}) {
        header->addWidget(button);
    }
    header->addWidget(m_fold);
    return header;
}

RowList *QueueView::buildList()
{
    const auto make = [this](QWidget *parent) { return new JobRow(context(), parent); };
    const auto fill = [this](QWidget *row, qsizetype index) {
        static_cast<JobRow *>(row)->setJob(m_jobs.at(index));
    };
    auto *list = new RowList(JobRow::rowHeight, make, fill);
    list->setMinimumHeight(leastListHeight);
    return list;
}

void QueueView::refresh()
{
    if (m_jobs != model().jobs()) {
        refreshList();
    }
    refreshHeader();
}

void QueueView::refreshHeader()
{
    m_title->setText(t(u"queue.title"));
    m_pause->setWords(model().queuePaused() ? t(u"queue.resume") : t(u"queue.pause"));
    m_pause->setSymbol(model().queuePaused() ? u"play.fill"_s : u"pause.fill"_s);
    m_pause->setVisible(std::ranges::any_of(m_jobs, isPending));
    m_import->setWords(t(u"batch.import"));
    m_export->setWords(t(u"batch.export"));
    m_export->setEnabled(std::ranges::any_of(m_jobs, isQueued));
    m_clear->setWords(t(u"queue.clear"));
    m_fold->setWords(t(u"common.close") + u' ' + t(u"queue.title"));
    m_empty->setText(t(u"queue.empty"));
    m_empty->setVisible(m_jobs.isEmpty());
    m_list->setVisible(!m_jobs.isEmpty());
}

void QueueView::refreshList()
{
    m_jobs = model().jobs();
    for (const std::shared_ptr<Job> &job : std::as_const(m_jobs)) {
        connect(job.get(), &Job::stateChanged, this, &QueueView::refreshSoon, Qt::UniqueConnection);
    }
    m_list->setCount(m_jobs.size());
    m_list->refresh();
}

void QueueView::importQueue()
{
    context().dialogs.openFiles(
        this, FileDialogs::Kind::json, FileDialogs::Count::one,
        [&model = model()](const QList<QUrl> &urls) { model.importQueue(urls.first()); });
}

/// Among the files that there are; no new name can be given.
void QueueView::exportQueue()
{
    context().dialogs.openFiles(
        this, FileDialogs::Kind::json, FileDialogs::Count::one,
        [&model = model()](const QList<QUrl> &urls) { model.exportQueue(urls.first()); });
}
