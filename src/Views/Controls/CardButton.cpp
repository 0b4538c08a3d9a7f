// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Views/Controls/CardButton.h"

#include "Views/Look/Metrics.h"
#include "Views/Look/Painting.h"
#include "Views/Look/Theme.h"

#include <QChildEvent>
#include <QKeyEvent>
#include <QLayout>
#include <QPainter>

using Look::ColorRole;

CardButton::CardButton(QWidget *parent) : QAbstractButton(parent)
{
    setFocusPolicy(Qt::TabFocus);
    setAttribute(Qt::WA_Hover);
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Preferred);
}

void CardButton::setSelected(bool selected)
{
    if (selected != m_selected) {
        m_selected = selected;
        update();
    }
}

QSize CardButton::sizeHint() const
{
    return layout() ? layout()->sizeHint() : minimumSizeHint();
}

void CardButton::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    const bool lit = isEnabled() && (underMouse() || isDown());
    const ColorRole face = m_selected ? ColorRole::accentTint
                           : lit      ? ColorRole::controlHover
                                      : ColorRole::card;
    const ColorRole line = m_selected ? ColorRole::accent
                           : lit      ? ColorRole::outline
                                      : ColorRole::hairline;
    Look::paintBox(painter, rect(),
                   {.fill = Look::color(face),
                    .line = Look::color(line),
                    .lineWidth = m_selected ? 1.5 : Look::hairlineWidth,
                    .radius = Look::Radius::card});
    if (hasFocus()) {
        Look::paintFocusRing(painter, rect(), Look::Radius::card);
    }
}

void CardButton::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
        click();
        return;
    }
    QAbstractButton::keyPressEvent(event);
}

bool CardButton::event(QEvent *event)
{
    // Plain contents must not swallow the pointer; what can be worked by itself keeps it.
    if (event->type() == QEvent::ChildPolished) {
        auto *child = qobject_cast<QWidget *>(static_cast<QChildEvent *>(event)->child());
        if (child && child->focusPolicy() == Qt::NoFocus) {
            child->setAttribute(Qt::WA_TransparentForMouseEvents);
        }
    }
    return QAbstractButton::event(event);
}
