// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Batch/BatchIntake.h"

#include "Batch/BatchTexts.h"
#include "Batch/ExitCode.h"
#include "Batch/InputCheck.h"
#include "Batch/ParamsCheck.h"
#include "Engine/FolderExpander.h"

#include <QFileInfo>

#include <algorithm>

using namespace Qt::StringLiterals;
using BatchTexts::Sentence;

BatchIntake::BatchIntake(const BatchOptions &options, AppModel &model)
    : m_options(options)
    , m_model(model)
{
    // Waiting for all: a pool of workers that has run dry between two files takes no further one.
    connect(&m_model, &AppModel::probingCountChanged, this, [this] {
        if (m_model.probingCount() == 0) {
            QMetaObject::invokeMethod( // NOLINT(clang-analyzer-cplusplus.NewDeleteLeaks)
                this, &BatchIntake::ready, Qt::QueuedConnection);
        }
    });
}

void BatchIntake::start()
{
    if (m_options.queueFile) {
        takeQueue();
    } else {
        takeFiles();
    }
}

bool BatchIntake::isUsable(const Subject &subject)
{
    const auto problem = InputCheck::problem(subject.input, m_model.language());
    if (problem) {
        Q_EMIT failed(subject, problem->sentence,
                      problem->isMissing ? ExitCode::noInput : ExitCode::badInput);
    }
    return !problem;
}

void BatchIntake::takeFiles()
{
    QList<QUrl> usable;
    for (const QUrl &url : m_options.files) {
        if (isUsable({url, {}})) {
            usable.append(url);
        }
    }
    for (const QUrl &url : FolderExpander::expand(usable)) {
        m_items.append({{url, {}}, m_options.mode, {}});
    }
    tellLeftOut(usable);
    m_model.addURLs(usable, [this](const VideoFile &file) { takeProbed(0, file); });
}

void BatchIntake::takeProbed(qsizetype firstPlace, const VideoFile &file)
{
    const auto item =
        std::find_if(m_items.begin() + firstPlace, m_items.end(),
                     [&](const BatchItem &known) { return known.subject.input == file.url; });
    // One that has just been put into its folder wasn't there a moment ago.
    if (item != m_items.end()) {
        item->file = file;
    }
}

// More than are taken at a time: what is left out is told.
void BatchIntake::tellLeftOut(const QList<QUrl> &urls)
{
    if (m_items.size() < FolderExpander::mostFiles) {
        return;
    }
    QSet<QUrl> taken;
    for (const BatchItem &item : std::as_const(m_items)) {
        taken.insert(item.subject.input);
    }
    const QString sentence = BatchTexts::text(Sentence::tooMany, m_model.language(),
                                              {QString::number(FolderExpander::mostFiles)});
    for (const QUrl &url : urls) {
        if (!taken.contains(FolderExpander::expand({url}).value(0))) {
            Q_EMIT failed({url, {}}, sentence, ExitCode::badInput);
        }
    }
}

void BatchIntake::takeQueue()
{
    QList<ExportedJob> entries;
    try {
        entries = QueueFile::read(*m_options.queueFile);
    } catch (const std::exception &) {
        const bool isMissing = !QFileInfo::exists(m_options.queueFile->toLocalFile());
        Q_EMIT failed({*m_options.queueFile, {}}, m_model.t(u"error.probe"_s),
                      isMissing ? ExitCode::noInput : ExitCode::badInput);
        return;
    }
    if (m_options.entry && *m_options.entry >= entries.size()) {
        Q_EMIT failed(
            {*m_options.queueFile, {}},
            BatchTexts::text(Sentence::noSuchEntry, m_model.language(),
                             {QString::number(*m_options.entry), QString::number(entries.size())}),
            ExitCode::usage);
        return;
    }
    for (qint64 number = 0; number < entries.size(); ++number) {
        if (number == m_options.entry.value_or(number)) {
            takeEntry(number, entries.at(number));
        }
    }
}

void BatchIntake::takeEntry(qint64 number, const ExportedJob &entry)
{
    const Subject subject{QUrl::fromLocalFile(entry.path), number};
    if (!isUsable(subject)) {
        return;
    }
    const JobMode mode = AppModel::modeFrom(entry.spec);
    if (const auto problem = ParamsCheck::problem(mode, m_model.language())) {
        Q_EMIT failed(subject, *problem, ExitCode::badInput);
        return;
    }
    // A folder stands for all films in it.
    const qsizetype firstPlace = m_items.size();
    for (const QUrl &url : FolderExpander::expand({subject.input})) {
        m_items.append({{url, number}, mode, {}});
    }
    m_model.addURLs({subject.input},
                    [this, firstPlace](const VideoFile &file) { takeProbed(firstPlace, file); });
}

// In the order of the command line or of the queue file; what couldn't be probed is told.
QList<BatchItem> BatchIntake::takeProbedItems()
{
    QList<BatchItem> items;
    for (const BatchItem &item : std::as_const(m_items)) {
        if (item.file) {
            items.append(item);
        } else {
            Q_EMIT failed(item.subject, m_model.t(u"error.probe"_s), ExitCode::badInput);
        }
    }
    m_items.clear();
    return items;
}
