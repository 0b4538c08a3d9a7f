// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QAbstractScrollArea>
#include <QHash>
#include <QList>

#include <functional>

/// A scrolling list of rows of one height. Widgets exist for the rows in sight only and are handed
/// from row to row, so that 5,000 rows cost as much as the 20 that are seen. Tab goes through the
/// rows and what is in them from top to bottom, and brings in those that are out of sight; the row
/// that has the focus keeps its widget.
class RowList : public QAbstractScrollArea
{
    Q_OBJECT

public:
    /// Makes an empty row.
    using Make = std::function<QWidget *(QWidget *parent)>;
    /// Shows the thing of that number in a row.
    using Fill = std::function<void(QWidget *row, qsizetype index)>;

    RowList(int rowHeight, Make make, Fill fill, QWidget *parent = nullptr);

    qsizetype count() const { return m_count; }
    void setCount(qsizetype count);
    /// Fills all rows in sight again.
    void refresh();
    /// Fills that row again if it is in sight.
    void refresh(qsizetype index);
    /// Scrolls as little as it takes.
    void reveal(qsizetype index);
    /// The widget that shows that row; null when it is out of sight.
    QWidget *rowAt(qsizetype index) const { return m_rows.value(index); }
    /// How many widgets have been made.
    qsizetype rowsMade() const { return m_rows.size() + m_spare.size(); }

    QSize sizeHint() const override;

protected:
    void resizeEvent(QResizeEvent *event) override;
    void scrollContentsBy(int dx, int dy) override;
    bool focusNextPrevChild(bool next) override;

private:
    void updateRange();
    void place();
    bool makeRows(qsizetype first, qsizetype end);
    void orderStops();
    qsizetype indexOf(const QWidget *part) const;
    void revealFocus();
    QWidget *takeSpare();
    void release(qsizetype index);

    int m_rowHeight;
    Make m_make;
    Fill m_fill;
    qsizetype m_count = 0;
    QHash<qsizetype, QWidget *> m_rows;
    QList<QWidget *> m_spare;
};
