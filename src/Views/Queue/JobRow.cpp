// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Views/Queue/JobRow.h"

#include "Platform/DesktopServices.h"
#include "Views/Controls/Button.h"
#include "Views/Controls/ElidedLabel.h"
#include "Views/Controls/MessageSheet.h"
#include "Views/Controls/SymbolButton.h"
#include "Views/Controls/SymbolView.h"
#include "Views/Controls/TextLabel.h"
#include "Views/Look/Metrics.h"
#include "Views/Look/Symbols.h"
#include "Views/Look/Theme.h"
#include "Views/Queue/JobFacts.h"
#include "Views/Queue/JobStatusLine.h"

#include <QApplication>
#include <QDrag>
#include <QHBoxLayout>
#include <QMenu>
#include <QMouseEvent>
#include <QPainter>

#include <algorithm>

using namespace Qt::StringLiterals;
using Look::ColorRole;

namespace {

constexpr int symbolBox = 20;

/// The words on a button are the same in each row; spoken, they tell which file they are about.
void setWords(Button *button, const QString &words, const QString &fileName)
{
    button->setWords(words);
    const QString spoken = words + u' ' + fileName;
    if (button->accessibleName() != spoken) {
        button->setAccessibleName(spoken);
    }
}

/// As the desktop portal names windows; only X11 has handles that another program can use as they
/// are.
QString portalName(const QWidget *window)
{
    return QGuiApplication::platformName() == "xcb"_L1
               ? u"x11:"_s + QString::number(window->winId(), 16)
               : QString();
}

MessageSheet::Words trashQuestion(const AppModel &model)
{
    return {.title = model.t(u"queue.trashoriginal.confirm"_s),
            .message = {},
            .dismissal = model.t(u"common.cancel"_s),
            .action = model.t(u"queue.trashoriginal"_s)};
}

} // namespace

JobRow::JobRow(const ViewContext &context, QWidget *parent)
    : View(context, parent)
    , m_symbol(new SymbolView({}, Look::SymbolSize::normal, ColorRole::secondaryText, symbolBox))
{
    auto *row = new QHBoxLayout(this);
    row->setContentsMargins(Look::Space::large, 0, Look::Space::large, 0);
    row->setSpacing(Look::Space::medium);
    row->addWidget(m_symbol);
    row->addLayout(buildColumn(), 1);
    buildActions(row);
}

QBoxLayout *JobRow::buildColumn()
{
    m_name = new ElidedLabel(Qt::ElideMiddle, Look::TextSize::body, ColorRole::text, QFont::Medium);
    m_mode = new TextLabel(Look::TextSize::caption, ColorRole::secondaryText);
    m_status = new JobStatusLine;
    auto *title = new QHBoxLayout;
    title->setSpacing(Look::Space::small);
    title->addWidget(m_name);
    title->addWidget(m_mode, 0, Qt::AlignBottom);
    title->addStretch();
    auto *column = new QVBoxLayout;
    column->setSpacing(Look::Space::tiny);
    column->addStretch();
    column->addLayout(title);
    column->addWidget(m_status);
    column->addStretch();
    return column;
}

// In the order of Tab; no two states show the same ones.
void JobRow::buildActions(QBoxLayout *row)
{
    m_cancel = new Button(Button::Kind::small);
    m_retry = new Button(Button::Kind::small);
    m_reveal = new Button(Button::Kind::small);
    m_more = new SymbolButton(u"ellipsis.circle"_s);
    buildMenu();
    connect(m_cancel, &QAbstractButton::clicked, this, [this] { model().cancelJob(m_job->id); });
    connect(m_retry, &QAbstractButton::clicked, this, [this] { model().retryJob(m_job->id); });
    connect(m_reveal, &QAbstractButton::clicked, this,
            [this] { context().desktop.reveal(outputURLs()); });
    auto *actions = new QHBoxLayout;
    actions->setSpacing(Look::Space::tiny);
    for (QWidget *action : {static_cast<QWidget *>(m_cancel), static_cast<QWidget *>(m_retry),
                            static_cast<QWidget *>(m_reveal), static_cast<QWidget *>(m_more)}) {
        action->hide();
        actions->addWidget(action);
    }
    row->addLayout(actions);
}

void JobRow::buildMenu()
{
    auto *menu = new QMenu(m_more);
    m_open = menu->addAction(QString(), this, &JobRow::openOutput);
    m_copy =
        menu->addAction(QString(), this, [this] { context().desktop.copyFiles(outputURLs()); });
    m_share = menu->addAction(QString(), this, &JobRow::share);
    m_share->setIcon(Look::menuSymbol(u"square.and.arrow.up"_s));
    m_trash = menu->addAction(QString(), this, &JobRow::confirmTrashOriginal);
    m_trash->setIcon(Look::menuSymbol(u"trash"_s));
    m_more->setMenu(menu);
}

void JobRow::setJob(const std::shared_ptr<Job> &job)
{
    if (job == m_job) {
        return;
    }
    if (m_job) {
        disconnect(m_job.get(), nullptr, this, nullptr);
    }
    m_job = job;
    m_pressed.reset();
    // What is open was opened for the job before.
    m_more->menu()->close();
    connect(m_job.get(), &Job::stateChanged, this, &JobRow::refreshSoon);
    refreshSoon();
}

void JobRow::refresh()
{
    if (!m_job) {
        return;
    }
    m_symbol->setSymbol(symbolName(m_job->mode));
    m_symbol->setColorRole(JobFacts::color(m_job->outcome()));
    m_name->setText(m_job->input.url.fileName());
    m_mode->setText(t(l10nKey(m_job->mode)));
    m_status->setState(m_job->state(), model());
    refreshActions();
}

void JobRow::refreshActions()
{
    const QString name = m_job->input.url.fileName();
    setWords(m_cancel, t(u"queue.cancel"), name);
    setWords(m_retry, t(u"queue.retry"), name);
    setWords(m_reveal, t(u"queue.reveal"), name);
    refreshMenu();
    const Job::Outcome outcome = m_job->outcome();
    const bool isFinished = outcome == Job::Outcome::finished;
    const bool canRetry = outcome == Job::Outcome::failed || outcome == Job::Outcome::cancelled;
    QList<QPair<QWidget *, bool>> actions{{m_cancel, !isFinished && !canRetry},
                                          {m_retry, canRetry},
                                          {m_reveal, isFinished},
                                          {m_more, isFinished}};
    // What comes goes first, so that the focus of what goes stays in this row.
    std::ranges::stable_partition(actions, [](const auto &action) { return action.second; });
    for (const auto &[action, isShown] : std::as_const(actions)) {
        action->setVisible(isShown);
    }
}

void JobRow::refreshMenu()
{
    m_open->setText(t(u"queue.open"));
    m_copy->setText(t(u"queue.copy"));
    m_share->setText(t(u"queue.share"));
    m_trash->setText(t(u"queue.trashoriginal"));
    const QString spoken = m_open->text() + u"… "_s + m_name->text();
    if (m_more->accessibleName() != spoken) {
        m_more->setAccessibleName(spoken);
    }
}

QList<QUrl> JobRow::outputURLs() const
{
    const auto *result = m_job ? std::get_if<Job::Finished>(&m_job->state()) : nullptr;
    return result ? result->outputURLs : QList<QUrl>();
}

void JobRow::openOutput()
{
    for (const QUrl &url : outputURLs()) {
        context().desktop.open(url);
    }
}

void JobRow::share()
{
    context().desktop.share(outputURLs(), portalName(window()));
}

void JobRow::confirmTrashOriginal()
{
    auto *question = new MessageSheet(this, trashQuestion(model()));
    connect(&model(), &AppModel::languageChanged, question,
            [question, &model = model()] { question->setWords(trashQuestion(model)); });
    // The file that was asked about, whatever job the row shows by then.
    connect(question, &MessageSheet::accepted, question,
            [&desktop = context().desktop, original = m_job->input.url] {
                desktop.moveToTrash(original);
            });
}

std::unique_ptr<QMimeData> JobRow::outputData() const
{
    const QList<QUrl> urls = outputURLs();
    if (urls.isEmpty()) {
        return nullptr;
    }
    auto files = std::make_unique<QMimeData>();
    files->setUrls(urls);
    return files;
}

void JobRow::mousePressEvent(QMouseEvent *event)
{
    if (event->button() == Qt::LeftButton) {
        m_pressed = event->position().toPoint();
    }
}

void JobRow::mouseMoveEvent(QMouseEvent *event)
{
    const QPoint position = event->position().toPoint();
    if (!(event->buttons() & Qt::LeftButton) || !m_pressed ||
        (position - *m_pressed).manhattanLength() < QApplication::startDragDistance()) {
        return;
    }
    m_pressed.reset();
    if (std::unique_ptr<QMimeData> files = outputData()) {
        auto *drag = new QDrag(this);
        drag->setMimeData(files.release());
        drag->exec(Qt::CopyAction);
    }
}

/// The line to the next row begins where the names begin.
void JobRow::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.fillRect(m_name->x(), height() - Look::hairlineWidth, width() - m_name->x(),
                     Look::hairlineWidth, Look::color(ColorRole::hairline));
}
