// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Views/Shell/FileSidebar.h"

#include "Views/Controls/Button.h"
#include "Views/Controls/HairLine.h"
#include "Views/Controls/RowList.h"
#include "Views/Look/Metrics.h"
#include "Views/Shell/FileRow.h"
#include "Views/Shell/FileTexts.h"
#include "Views/Shell/FilmDialog.h"
#include "Views/Shell/LatestJobs.h"

#include <QContextMenuEvent>
#include <QFocusEvent>
#include <QKeyEvent>
#include <QVBoxLayout>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

constexpr int sidebarWidth = 240;

} // namespace

FileSidebar::FileSidebar(const ViewContext &context, QWidget *parent)
    : View(context, parent)
    , m_latestJobs(new LatestJobs(context.model, this))
{
    setFixedWidth(sidebarWidth);
    buildList();
    buildBrowse();
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(0, Look::Space::small, 0, 0);
    column->setSpacing(0);
    column->addWidget(m_list, 1);
    column->addWidget(new HairLine(Qt::Horizontal));
    auto *foot = new QHBoxLayout;
    foot->setContentsMargins(Look::Space::small, Look::Space::small, Look::Space::small,
                             Look::Space::small);
    foot->addWidget(m_browse);
    foot->addStretch();
    column->addLayout(foot);
    follow(&AppModel::filesChanged);
    follow(&AppModel::selectedFileIDChanged);
    follow(&AppModel::fileEstimatesChanged);
    connect(m_latestJobs, &LatestJobs::changed, this, &FileSidebar::refreshSoon);
}

void FileSidebar::buildList()
{
    m_list = new RowList(
        FileRow::rowHeight,
        [this](QWidget *parent) { return new FileRow(context(), *m_latestJobs, parent); },
        [this](QWidget *row, qsizetype index) { fill(static_cast<FileRow &>(*row), index); });
}

void FileSidebar::buildBrowse()
{
    m_browse = new Button(Button::Kind::quiet);
    m_browse->setSymbol(u"plus"_s);
    connect(m_browse, &QAbstractButton::clicked, this,
            [this] { FilmDialog::open(context(), this); });
}

void FileSidebar::fill(FileRow &row, qsizetype index)
{
    // Files may have gone since the list was last told how many there are.
    if (index >= model().files().size()) {
        return;
    }
    const VideoFile &file = model().files().at(index);
    const bool isSelected = file.id == model().selectedFileID();
    row.setFile(file, isSelected);
    row.setRinged(isSelected && m_isRinged);
}

void FileSidebar::refresh()
{
    const QList<VideoFile> &files = model().files();
    m_browse->setWords(t(u"common.browse"));
    setFocusPolicy(files.isEmpty() ? Qt::NoFocus : Qt::StrongFocus);
    m_list->setCount(files.size());
    m_list->refresh();
    const qsizetype selected = selectedIndex();
    setAccessibleName(selected < 0 ? QString() : FileTexts::name(files.at(selected)));
}

qsizetype FileSidebar::selectedIndex() const
{
    const QList<VideoFile> &files = model().files();
    const auto found = std::ranges::find(files, model().selectedFileID(), &VideoFile::id);
    return found == files.end() ? -1 : found - files.begin();
}

void FileSidebar::select(qsizetype index)
{
    const qsizetype last = model().files().size() - 1;
    if (last < 0) {
        return;
    }
    const qsizetype held = std::clamp<qsizetype>(index, 0, last);
    model().setSelectedFileID(model().files().at(held).id);
    m_list->reveal(held);
}

bool FileSidebar::handleKey(int key)
{
    const qsizetype here = selectedIndex();
    const qsizetype page = std::max(1, m_list->viewport()->height() / FileRow::rowHeight - 1);
    switch (key) {
    case Qt::Key_Up:
        select(here - 1);
        return true;
    case Qt::Key_Down:
        select(here + 1);
        return true;
    case Qt::Key_PageUp:
        select(here - page);
        return true;
    case Qt::Key_PageDown:
        select(here + page);
        return true;
    case Qt::Key_Home:
        select(0);
        return true;
    case Qt::Key_End:
        select(model().files().size() - 1);
        return true;
    case Qt::Key_Delete:
        removeSelected();
        return true;
    default:
        return false;
    }
}

/// The next file takes its place: left to itself, the model would go back to the first one.
void FileSidebar::removeSelected()
{
    const qsizetype here = selectedIndex();
    if (here < 0) {
        return;
    }
    const QUuid id = model().files().at(here).id;
    const bool isLast = here == model().files().size() - 1;
    select(isLast ? here - 1 : here + 1);
    model().removeFile(id);
}

void FileSidebar::showMenuOfSelected()
{
    const qsizetype here = selectedIndex();
    if (here < 0) {
        return;
    }
    m_list->reveal(here);
    if (auto *row = static_cast<FileRow *>(m_list->rowAt(here))) {
        row->showMenu(row->mapToGlobal(row->rect().center()));
    }
}

void FileSidebar::setRinged(bool ringed)
{
    if (ringed != m_isRinged) {
        m_isRinged = ringed;
        refreshSoon();
    }
}

void FileSidebar::handleFocus(const QFocusEvent &event)
{
    const bool isAway =
        event.reason() == Qt::PopupFocusReason || event.reason() == Qt::ActiveWindowFocusReason;
    if (isAway) {
        return;
    }
    // A click leaves the list where it is; Tab must bring the ring into sight.
    setRinged(event.gotFocus() && event.reason() != Qt::MouseFocusReason);
    if (m_isRinged && selectedIndex() >= 0) {
        m_list->reveal(selectedIndex());
    }
}

void FileSidebar::focusInEvent(QFocusEvent *event)
{
    handleFocus(*event);
}

void FileSidebar::focusOutEvent(QFocusEvent *event)
{
    handleFocus(*event);
}

void FileSidebar::keyPressEvent(QKeyEvent *event)
{
    if (handleKey(event->key())) {
        setRinged(true);
    } else {
        View::keyPressEvent(event);
    }
}

/// By the key; with the pointer a row hears it first.
void FileSidebar::contextMenuEvent(QContextMenuEvent *event)
{
    if (event->reason() == QContextMenuEvent::Keyboard) {
        showMenuOfSelected();
    }
}
