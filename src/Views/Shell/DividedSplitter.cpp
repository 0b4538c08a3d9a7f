// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Views/Shell/DividedSplitter.h"

#include "Views/Look/Metrics.h"
#include "Views/Look/Theme.h"

#include <QPainter>

namespace {

// Wide enough to be caught; of it only the hairline is seen.
constexpr int grabWidth = 5;

class DividerHandle : public QSplitterHandle
{
public:
    using QSplitterHandle::QSplitterHandle;

protected:
    void paintEvent(QPaintEvent *) override
    {
        QPainter(this).fillRect(0, 0, width(), Look::hairlineWidth,
                                Look::color(Look::ColorRole::hairline));
    }
};

} // namespace

DividedSplitter::DividedSplitter(QWidget *parent) : QSplitter(Qt::Vertical, parent)
{
    setChildrenCollapsible(false);
    setHandleWidth(grabWidth);
}

QSplitterHandle *DividedSplitter::createHandle()
{
    return new DividerHandle(orientation(), this);
}
