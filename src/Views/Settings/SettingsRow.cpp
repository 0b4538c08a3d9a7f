// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Views/Settings/SettingsRow.h"

#include "Views/Controls/Switch.h"
#include "Views/Controls/TextLabel.h"
#include "Views/Look/Metrics.h"

#include <QHBoxLayout>
#include <QMouseEvent>

namespace {

constexpr int detailGap = 2;

} // namespace

SettingsRow::SettingsRow(QWidget *control, QWidget *parent)
    : QWidget(parent)
    , m_control(control)
    , m_switch(qobject_cast<Switch *>(control))
    , m_words(new TextLabel)
    , m_left(new QVBoxLayout)
{
    auto *row = new QHBoxLayout(this);
    dress(this, row);
    if (m_switch) {
        QMargins margins = row->contentsMargins();
        margins.setRight(margins.right() - Switch::overhang);
        row->setContentsMargins(margins);
    }
    m_left->setSpacing(detailGap);
    m_left->addWidget(m_words->wrapping());
    row->addLayout(m_left, 1);
    row->addWidget(control, 0, Qt::AlignVCenter);
}

void SettingsRow::dress(QWidget *row, QLayout *layout)
{
    layout->setContentsMargins(Look::Space::large, Look::Space::small, Look::Space::large,
                               Look::Space::small);
    layout->setSpacing(Look::Space::large);
    row->setMinimumHeight(Look::Height::control + 2 * Look::Space::small);
}

void SettingsRow::dressList(QWidget *row, QLayout *layout)
{
    dress(row, layout);
    QMargins margins = layout->contentsMargins();
    // The symbol, not the room around it, is in line with the controls above.
    margins.setRight(Look::Space::small + 2);
    layout->setContentsMargins(margins);
    layout->setSpacing(Look::Space::small);
}

void SettingsRow::setWords(const QString &words)
{
    m_words->setText(words);
    // A text at the right has its own words for a name.
    if (m_control->focusPolicy() != Qt::NoFocus) {
        m_control->setAccessibleName(words);
    }
}

void SettingsRow::setDetail(QWidget *detail)
{
    m_left->addWidget(detail);
}

void SettingsRow::mousePressEvent(QMouseEvent *event)
{
    event->setAccepted(m_switch != nullptr);
}

void SettingsRow::mouseReleaseEvent(QMouseEvent *event)
{
    const bool isClick = event->button() == Qt::LeftButton && rect().contains(event->pos());
    if (m_switch && isClick) {
        m_switch->click();
    }
}
