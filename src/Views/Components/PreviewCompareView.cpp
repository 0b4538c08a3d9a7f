// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Views/Components/PreviewCompareView.h"

#include "Views/Components/CompareArea.h"
#include "Views/Controls/TextLabel.h"
#include "Views/Look/Metrics.h"

#include <QGridLayout>

using Look::ColorRole;
using Look::TextSize;

PreviewCompareView::PreviewCompareView(const ViewContext &context, QWidget *parent)
    : View(context, parent)
    , m_before(new TextLabel(TextSize::caption, ColorRole::secondaryText))
    , m_after(new TextLabel(TextSize::caption, ColorRole::secondaryText))
    , m_area(new CompareArea)
{
    auto *grid = new QGridLayout(this);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->setHorizontalSpacing(Look::Space::medium);
    grid->setVerticalSpacing(Look::Space::tiny);
    grid->addWidget(m_before, 0, 0, Qt::AlignLeft);
    grid->addWidget(m_after, 0, 1, Qt::AlignRight);
    grid->addWidget(m_area, 1, 0, 1, 2);
    grid->setColumnStretch(2, 1);
}

void PreviewCompareView::setImages(const QByteArray &beforeData, const QByteArray &afterData)
{
    if (beforeData == m_beforeData && afterData == m_afterData) {
        return;
    }
    m_beforeData = beforeData;
    m_afterData = afterData;
    m_area->setPictures(QImage::fromData(beforeData), QImage::fromData(afterData));
}

void PreviewCompareView::refresh()
{
    m_before->setText(t(u"preview.before"));
    m_after->setText(t(u"preview.after"));
    m_area->setAccessibleName(t(u"preview.generate"));
}
