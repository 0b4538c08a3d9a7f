// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Views/Controls/Sheet.h"

#include "Views/Look/Metrics.h"
#include "Views/Look/Theme.h"

#include <QApplication>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QScrollArea>

namespace {

/// A scrolling part cares for the steps inside it only, not for those that enter it.
void scrollIntoSight(QWidget *place)
{
    for (QWidget *around = place->parentWidget(); around; around = around->parentWidget()) {
        if (auto *scroll = qobject_cast<QScrollArea *>(around)) {
            scroll->ensureWidgetVisible(place);
        }
    }
}

QEvent::Type filledEvent()
{
    static const auto type = static_cast<QEvent::Type>(QEvent::registerEventType());
    return type;
}

} // namespace

Sheet::Sheet(QWidget *over, int width)
    : QWidget(over->window())
    , m_focusBefore(QApplication::focusWidget())
    , m_card(new Card(this))
{
    m_card->setFixedWidth(width);
    column()->setContentsMargins(Look::Space::huge, Look::Space::huge, Look::Space::huge,
                                 Look::Space::huge);
    auto *rows = new QVBoxLayout(this);
    rows->setContentsMargins(Look::Space::huge, Look::Space::huge, Look::Space::huge,
                             Look::Space::huge);
    rows->addWidget(m_card, 0, Qt::AlignCenter);
    setFocusPolicy(Qt::NoFocus);
    parentWidget()->installEventFilter(this);
    cover();
    raise();
    show();
}

void Sheet::dismiss()
{
    if (m_isDismissed) {
        return;
    }
    m_isDismissed = true;
    hide();
    if (m_focusBefore) {
        m_focusBefore->setFocus();
    }
    deleteLater();
    Q_EMIT dismissed();
}

void Sheet::cover()
{
    setGeometry(parentWidget()->rect());
}

void Sheet::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.fillRect(rect(), Look::color(Look::ColorRole::scrim));
}

void Sheet::showEvent(QShowEvent *)
{
    // It is shown as it is made; what is then put into it is shown by posted events, after which
    // there is something to give the focus to.
    QCoreApplication::postEvent(this, new QEvent(filledEvent()), Qt::LowEventPriority);
}

bool Sheet::event(QEvent *event)
{
    if (event->type() == filledEvent()) {
        takeFocus();
    }
    return QWidget::event(event);
}

void Sheet::takeFocus()
{
    const QList<QWidget *> places = stops();
    if (!places.isEmpty() && !isAncestorOf(QApplication::focusWidget())) {
        places.first()->setFocus(Qt::OtherFocusReason);
    }
}

void Sheet::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Escape) {
        dismiss();
    }
    // Nothing typed here is for the window behind.
    event->accept();
}

void Sheet::mousePressEvent(QMouseEvent *event)
{
    event->accept();
}

bool Sheet::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == parentWidget() && event->type() == QEvent::Resize) {
        cover();
    }
    return QWidget::eventFilter(watched, event);
}

/// Where Tab can go inside, in its order.
QList<QWidget *> Sheet::stops() const
{
    QList<QWidget *> stops;
    const auto *self = static_cast<const QWidget *>(this);
    for (QWidget *widget = self->nextInFocusChain(); widget && widget != self;
         widget = widget->nextInFocusChain()) {
        if (isAncestorOf(widget) && widget->isVisibleTo(this) && widget->isEnabled() &&
            (widget->focusPolicy() & Qt::TabFocus)) {
            stops.append(widget);
        }
    }
    return stops;
}

bool Sheet::focusNextPrevChild(bool next)
{
    const QList<QWidget *> places = stops();
    if (places.isEmpty()) {
        return true;
    }
    const qsizetype here = places.indexOf(QApplication::focusWidget());
    const qsizetype step = next ? here + 1 : here - 1;
    const qsizetype count = places.size();
    QWidget *place = places.at((step + count) % count);
    place->setFocus(next ? Qt::TabFocusReason : Qt::BacktabFocusReason);
    scrollIntoSight(place);
    return true;
}
