// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Views/Controls/RowList.h"

#include "Views/Look/Metrics.h"

#include <QEvent>
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
    const QList<qsizetype> shown = m_rows.keys();
    for (const qsizetype index : shown) {
        if (index < first || index >= end) {
            release(index);
        }
    }
    for (qsizetype index = first; index < end; ++index) {
        QWidget *row = m_rows.value(index);
        if (!row) {
            row = takeSpare();
            m_rows.insert(index, row);
            m_fill(row, index);
        }
        row->setGeometry(0, static_cast<int>(index) * m_rowHeight - offset, viewport()->width(),
                         m_rowHeight);
        row->show();
    }
}

QWidget *RowList::takeSpare()
{
    if (!m_spare.isEmpty()) {
        return m_spare.takeLast();
    }
    QWidget *row = m_make(viewport());
    row->installEventFilter(this);
    return row;
}

void RowList::release(qsizetype index)
{
    QWidget *row = m_rows.take(index);
    row->hide();
    m_spare.append(row);
}

/// Tab comes to a row that is partly out of sight: it is brought in whole.
bool RowList::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::FocusIn) {
        const qsizetype index = m_rows.key(static_cast<QWidget *>(watched), -1);
        if (index >= 0) {
            reveal(index);
        }
    }
    return QAbstractScrollArea::eventFilter(watched, event);
}
