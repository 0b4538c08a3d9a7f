// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Views/Controls/RowList.h"

#include "Views/Look/Metrics.h"

#include <QApplication>
#include <QScrollBar>

#include <algorithm>

RowList::RowList(int rowHeight, Make make, Fill fill, QWidget *parent)
    : QAbstractScrollArea(parent)
    , m_rowHeight(rowHeight)
    , m_make(std::move(make))
    , m_fill(std::move(fill))
{
    setFrameShape(QFrame::NoFrame);
    setFocusPolicy(Qt::NoFocus);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    viewport()->setAutoFillBackground(false);
    verticalScrollBar()->setSingleStep(m_rowHeight);
    // Queued: the focus also moves while rows are being placed.
    connect(qApp, &QApplication::focusChanged, this, &RowList::revealFocus, Qt::QueuedConnection);
}

void RowList::setCount(qsizetype count)
{
    if (count == m_count) {
        return;
    }
    m_count = count;
    updateRange();
    place();
}

void RowList::refresh()
{
    for (auto row = m_rows.cbegin(); row != m_rows.cend(); ++row) {
        m_fill(row.value(), row.key());
    }
}

void RowList::refresh(qsizetype index)
{
    if (QWidget *row = rowAt(index)) {
        m_fill(row, index);
    }
}

void RowList::reveal(qsizetype index)
{
    const int top = static_cast<int>(index) * m_rowHeight;
    QScrollBar *bar = verticalScrollBar();
    if (top < bar->value()) {
        bar->setValue(top);
    } else if (top + m_rowHeight > bar->value() + viewport()->height()) {
        bar->setValue(top + m_rowHeight - viewport()->height());
    }
}

QSize RowList::sizeHint() const
{
    return {240, 4 * m_rowHeight};
}

void RowList::resizeEvent(QResizeEvent *)
{
    updateRange();
    place();
}

void RowList::scrollContentsBy(int, int)
{
    place();
}

void RowList::updateRange()
{
    const int whole = static_cast<int>(m_count) * m_rowHeight;
    verticalScrollBar()->setRange(0, std::max(0, whole - viewport()->height()));
    verticalScrollBar()->setPageStep(viewport()->height());
}

/// Gives each row in sight its widget and its place.
void RowList::place()
{
    const int offset = verticalScrollBar()->value();
    const qsizetype first = std::clamp<qsizetype>(offset / m_rowHeight, 0, m_count);
    const qsizetype end =
        std::min<qsizetype>(m_count, (offset + viewport()->height()) / m_rowHeight + 1);
    const qsizetype focused = indexOf(QApplication::focusWidget());
    const QList<qsizetype> shown = m_rows.keys();
    for (const qsizetype index : shown) {
        const bool isInSight = index >= first && index < end;
        if (!isInSight && (index != focused || index >= m_count)) {
            release(index);
        }
    }
    const bool hasNewRows = makeRows(first, end);
    for (auto row = m_rows.cbegin(); row != m_rows.cend(); ++row) {
        row.value()->setGeometry(0, static_cast<int>(row.key()) * m_rowHeight - offset,
                                 viewport()->width(), m_rowHeight);
        row.value()->show();
    }
    if (hasNewRows) {
        orderStops();
    }
}

/// Whether there were rows without a widget.
bool RowList::makeRows(qsizetype first, qsizetype end)
{
    bool hasNewRows = false;
    for (qsizetype index = first; index < end; ++index) {
        if (!m_rows.contains(index)) {
            QWidget *row = takeSpare();
            m_rows.insert(index, row);
            m_fill(row, index);
            hasNewRows = true;
        }
    }
    return hasNewRows;
}

/// Widgets go from row to row, and new ones stand at the end of the window's order of Tab.
void RowList::orderStops()
{
    // Only what can have the focus can be put in order; the list is the place where its rows begin.
    setFocusPolicy(Qt::TabFocus);
    QWidget *last = this;
    QList<qsizetype> indexes = m_rows.keys();
    std::ranges::sort(indexes);
    for (const qsizetype index : indexes) {
        QWidget *row = m_rows.value(index);
        for (QWidget *part : QList<QWidget *>{row} + row->findChildren<QWidget *>()) {
            if (part->focusPolicy() & Qt::TabFocus) {
                setTabOrder(last, part);
                last = part;
            }
        }
    }
    setFocusPolicy(Qt::NoFocus);
}

/// The row that the widget belongs to, or -1.
qsizetype RowList::indexOf(const QWidget *part) const
{
    while (part && part->parentWidget() != viewport()) {
        part = part->parentWidget();
    }
    return part ? m_rows.key(const_cast<QWidget *>(part), -1) : -1;
}

QWidget *RowList::takeSpare()
{
    return m_spare.isEmpty() ? m_make(viewport()) : m_spare.takeLast();
}

void RowList::release(qsizetype index)
{
    QWidget *row = m_rows.take(index);
    row->hide();
    m_spare.append(row);
}

/// A row that is only partly in sight is brought in whole when the focus comes to it.
void RowList::revealFocus()
{
    const qsizetype index = indexOf(QApplication::focusWidget());
    if (index >= 0) {
        reveal(index);
    }
}

/// The neighbour that Tab may go to needs a widget first.
bool RowList::focusNextPrevChild(bool next)
{
    const qsizetype index = indexOf(QApplication::focusWidget());
    const qsizetype neighbour = index + (next ? 1 : -1);
    if (index >= 0 && neighbour >= 0 && neighbour < m_count) {
        reveal(neighbour);
    }
    return QAbstractScrollArea::focusNextPrevChild(next);
}
